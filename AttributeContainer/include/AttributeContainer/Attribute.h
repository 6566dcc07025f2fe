// The base of all typed values.
#pragma once

#include <AttributeContainer/Observable.h>
#include <AttributeContainer/ThreadWord.h>

#include <QOR/KeyTable.h>

#include <cstdint>
#include <functional>
#include <future>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

class AttrContainer;
class AttributePropagationObserver;
struct AttrDefinition;

namespace detail {
/// The switches of a thread, in the open for those who look at them with every change and every
/// look at a value.
QOR_THREAD_WORD extern QOR_API int tempFlags;
}  // namespace detail

/// How a copy is made.
enum CreateType : std::uint32_t {
    CreateDeep = 0,             ///< fields of the source are duplicated
    CreateShareFields = 1,      ///< the copy refers to the very fields of the source
    CreateShareFieldsAlso = 2,  ///< the same
    CreateEmpty = 3,            ///< `duplicate` makes a new default object of the class
};

/// Who wants to know what the observers of one half of a change answered. The change fulfils and
/// deletes the promise; a promise broken means that this half never ran.
using ResultPromise = std::unique_ptr<std::promise<std::vector<Observable::NotificationResult>>>;

/// The abstract base of all attributes: watched values with a name and a place in a container.
class QOR_API Attribute : public Observable {
public:
    /// The marks of one attribute, comparable with the sum of the bit values.
    struct Flags {
        static constexpr std::uint16_t writeFlag = 1;       ///< its stream carried "Write"
        static constexpr std::uint16_t definitionFlag = 2;  ///< its definition has category bit 2
        static constexpr std::uint16_t marked = 4;          ///< selected by a comparer or visitor

        std::uint16_t bits = 0;

        constexpr operator std::uint16_t() const { return bits; }
        constexpr bool has(std::uint16_t bit) const { return (bits & bit) != 0; }
        constexpr void set(std::uint16_t bit, bool value) {
            bits = static_cast<std::uint16_t>(value ? bits | bit : bits & ~bit);
        }
    };
    /// All marks clear.
    static const Flags nullFlags;
    /// The keywords of an attribute block in a stream.
    static const DataStructures::KeyTable keyTable;

    using Location = std::optional<std::reference_wrapper<const AttrContainer>>;

    ~Attribute() override;

    virtual const std::string& getClassName() const;
    static const std::string& getStaticClassName();
    /// A new attribute of the same type: in `location`, or free where none is given. It takes this
    /// one's value and relations, but for `CreateEmpty`.
    virtual std::shared_ptr<Attribute> duplicate(CreateType type, Location location) const = 0;
    /// Takes the other's value, as a change with no initiator; through the text of the value where
    /// the types differ.
    virtual Attribute& operator=(const Attribute& other) = 0;
    /// Same type and same value. A not-a-number is the same as anything.
    virtual bool operator==(const Attribute& other) const = 0;
    virtual bool operator!=(const Attribute& other) const;
    using Observable::touch;
    void touch(const std::shared_ptr<ObservingObject>& initiator,
               std::vector<NotificationResult>* results) override;
    /// Takes the value that `text` stands for. Unlike a typed change it does not look at a refusal.
    /// It is lenient: what begins as no number gives 0, what follows a number is passed over, and
    /// integers are clamped to their range.
    /// \throws std::invalid_argument for a malformed floating-point number.
    virtual void assignFrom(const std::string& text,
                            const std::shared_ptr<ObservingObject>& initiator,
                            ResultPromise& preResults, ResultPromise& postResults);
    /// The same with no initiator and nobody who waits for results.
    void assignFrom(const std::string& text);
    /// The value as text, as `assignFrom` takes it.
    virtual std::string getValueString() const;
    /// Reads the value alone and sets it. \throws std::invalid_argument at a malformed number.
    virtual void readValueFrom(std::istream& stream,
                               std::shared_ptr<const ReadContextBase> context);
    /// The container that holds this attribute; empty for a free one.
    virtual Location getLocation() const = 0;
    /// The row from which this attribute was made; null for a custom attribute.
    virtual const AttrDefinition* getDefinition() const = 0;
    /// The token in its container; all ones when it has none.
    virtual std::uint64_t getToken() const = 0;

    /// The companion through which this attribute takes part as an observer, made at first use. It
    /// has no path, so relations to it are neither stored nor copied.
    /// \throws std::bad_weak_ptr when no shared pointer owns the attribute.
    std::weak_ptr<Observer> getObserver();

    /// The path of its container and its name; the name alone where the container has no path, as
    /// fields have none.
    std::optional<std::string> inqObjPath() const override;
    std::optional<std::reference_wrapper<const Observer>> lookupObject() const override;
    using Observable::inqObserver;
    std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const override;
    [[nodiscard]] ErrorPtr readFrom(std::istream& stream,
                                    std::shared_ptr<const ReadContextBase> context) override;
    [[nodiscard]] ErrorPtr writeTo(std::ostream& stream,
                                   std::shared_ptr<const WriteContextBase> context) const override;

    Flags getFlags() const { return flags; }
    bool isMarked() const { return flags.has(Flags::marked); }
    void setMarked(bool value) { flags.set(Flags::marked, value); }
    bool hasWriteFlag() const { return flags.has(Flags::writeFlag); }
    void setWriteFlag(bool value) { flags.set(Flags::writeFlag, value); }
    bool hasDefinitionFlag() const { return flags.has(Flags::definitionFlag); }

    /// Whether changes on this thread are stored with nobody asked and nobody told.
    static bool isObservingBlocked();
    static void setObservingBlocked(bool value);
    /// Whether readers on this thread look for a cached value that is about to come.
    static bool isCachedAttributePending();
    static void setIsCachedAttributePending(bool value);

protected:
    static constexpr int cachedAttributePending = 1;
    static constexpr int observingBlocked = 2;

    explicit Attribute(const std::optional<std::reference_wrapper<const Attribute>>& source);

    static int getAttributeTempFlags();
    /// The same, read in place where a library can share a thread's state with its host.
    static int tempFlags() {
#if defined(__ELF__)
        return detail::tempFlags;
#else
        return getAttributeTempFlags();
#endif
    }
    static void setAttributeTempFlags(int flags);
    static bool isAnyTempFlagSet();

    /// The half of a change ahead of the store: asks the pre-observers about a value that is about to
    /// come, `newValue` being empty where there are none, and fulfils the promise.
    /// \return false when one of them refused.
    bool runPreHalf(const std::type_info& announced, std::shared_ptr<ObserverInfo> newValue,
                    const std::shared_ptr<ObservingObject>& initiator, ResultPromise& preResults);
    /// The same for the text path: no value is announced, and a refusal is not looked at.
    void askOnly(const std::shared_ptr<ObservingObject>& initiator, ResultPromise& preResults);
    /// The half behind the store: tells the post-observers, and fulfils the promise.
    void runPostHalf(const std::shared_ptr<ObservingObject>& initiator,
                     ResultPromise& postResults);
    /// The block of an attribute, but for what a block with no value means.
    /// \param wasValueSeen tells whether the block had a value.
    [[nodiscard]] ErrorPtr readBlock(std::istream& stream,
                                     const std::shared_ptr<const ReadContextBase>& context,
                                     bool& wasValueSeen);
    /// The cached attribute of a pending change; empty where none is announced.
    std::shared_ptr<Attribute> lookupCachedAttribute() const;
    /// Ends the announcement of a cached value. \return its attribute, empty where none is.
    std::shared_ptr<Attribute> takeCachedAttribute();

private:
    friend struct AttrDefinition;  // hands the definition's mark to a new attribute

    Flags flags;
    // Made with its first use, since few attributes are watched as observers: a word until then.
    std::unique_ptr<const std::shared_ptr<AttributePropagationObserver>> observer;
};

/// Blocks observing on this thread for a scope. Scopes nest; the outermost one lifts the block.
class QOR_API BlockObserver {
public:
    BlockObserver();
    BlockObserver(const BlockObserver&) = delete;
    BlockObserver& operator=(const BlockObserver&) = delete;
    ~BlockObserver();

private:
    bool didBlock;
};

}  // namespace QOR::AttributeContainer
