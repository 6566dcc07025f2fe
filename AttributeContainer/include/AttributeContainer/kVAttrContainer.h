// The base of all attributed objects.
#pragma once

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/AttrDefinition.h>
#include <AttributeContainer/AttrList.h>
#include <AttributeContainer/AttrTable.h>
#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/CustAttrList.h>
#include <AttributeContainer/FieldList.h>
#include <AttributeContainer/Observer.h>
#include <AttributeContainer/ObserverRelation.h>
#include <AttributeContainer/Visitor.h>

#include <QOR/ErrorCode.h>
#include <QOR/KeyTable.h>
#include <QOR/Vec.h>

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

/// What `addField` and `addChild` do about the name of what they add; the values are or-ed. With 0
/// they refuse what has a name that is taken.
struct AddFlags {
    static constexpr int SkipNameTest = 4;     ///< take it whatever its name
    static constexpr int MakeNameUnique = 16;  ///< rename it where its name is taken
};

/// A container of attributes and fields.
///
/// Its attributes are those that its classes declare, whose tokens begin at 0 with the name, and
/// behind them those that were added at run time. Its fields are child containers with a
/// numbering of their own. It owns its attributes, and its fields through shared pointers. Objects
/// come into being through `create` alone. One thread at a time uses a tree.
class QOR_API AttrContainer : public Observer {
protected:
    /// Only containers can name it, so nobody else constructs one outside a shared pointer.
    struct ConstructorProtector {
        explicit ConstructorProtector() = default;
    };

public:
    using Source = std::optional<std::reference_wrapper<const AttrContainer>>;
    using CreateType = AttributeContainer::CreateType;
    static constexpr std::uint64_t noToken = ~std::uint64_t{0};

    /// Chooses, by token, the attributes that `isEqualTo` looks at.
    class QOR_API CompareSelectTokens {
    public:
        virtual bool includesAll() const = 0;
        /// Asked where not all are included.
        virtual bool includes(std::uint64_t token) const = 0;
        /// Asked for what is included, and has the last word.
        virtual bool excludes(std::uint64_t token) const = 0;
        virtual ~CompareSelectTokens();
    };

    /// The marks of a container.
    struct Flags {
        static constexpr std::uint16_t isSerialized = 1;
        std::uint16_t bits = 0;
        constexpr operator std::uint16_t() const { return bits; }
    };
    static const Flags nullFlags;
    /// The words of attribute types and of container blocks in a stream: their rows in the order of
    /// the stream's definition, and the table made from them.
    static const std::vector<DataStructures::KeyTableEntry> readWriteKeyTable;
    static const DataStructures::KeyTable keyTable;

    AttrContainer(const ConstructorProtector& key, CreateType type, const Source& source);
    ~AttrContainer() override;

    /// A new container, with the values and fields of `source` if one is given.
    static std::shared_ptr<AttrContainer> create(CreateType type = CreateDeep,
                                                 Source source = std::nullopt);
    static const std::string& getStaticClassName();
    const std::string& getClassName() const override;

    // What the classes declare. ------------------------------------------------------------------
    virtual std::uint64_t getMaxAttrToken() const;
    /// All ones in a class with no fields of its own.
    virtual std::uint64_t getMaxFieldToken() const;
    /// A copy of this container with its attributes, fields and their relations, of the same class,
    /// to which a cast leads; children of objects are not copied. For `CreateEmpty` a new default
    /// object of its class.
    virtual std::shared_ptr<AttrContainer> duplicate(CreateType type) const;
    virtual std::shared_ptr<AttrContainer> duplicateAll(CreateType type) const;
    /// Hooks that may make a field ahead of, or behind, the factory; empty here.
    virtual std::shared_ptr<AttrContainer> checkCreateChildField(const std::string& typeName,
                                                                 const std::string& name,
                                                                 std::uint64_t* token);
    virtual std::shared_ptr<AttrContainer> checkCreateDefaultChildField(
        const std::string& typeName, const std::string& name, std::uint64_t* token);

    /// Whether the attributes of this container equal those of `other` at the same tokens, with no
    /// tolerance. Fields and children play no part; neither does what only `other` has, unless
    /// both pointers are null: then unlike numbers of attributes are a difference.
    /// \param differing receives the tokens at which the two differ; null for who wants the first
    /// difference alone.
    /// \param select chooses the attributes; null for all.
    virtual bool isEqualTo(const AttrContainer& other, std::vector<std::uint64_t>* differing,
                           const CompareSelectTokens* select) const;

    // Walks. ---------------------------------------------------------------------------------------
    /// Walks over this container and its fields. The two low bits of `mode` tell where the
    /// visits fall: 0 behind the fields, 1 ahead of them, 2 and 3 both, behind as `visitDone`.
    virtual VisitorCore::VisitResult fieldVisitor(GeneralVisitor<AttrContainer&>& visitor,
                                                  int mode);
    /// The same, for objects through their children as well.
    virtual VisitorCore::VisitResult fieldAndStructureVisitor(
        GeneralVisitor<AttrContainer&>& visitor, int mode);
    virtual VisitorCore::VisitResult observerVisitor(ObserverVisitor& visitor, bool recurse);
    /// Walks over the attributes of this container and, with `recurse`, of its fields; never over
    /// those of children, to which only a walk over objects leads.
    virtual VisitorCore::VisitResult attributeVisitor(AttributeVisitor& visitor, bool recurse);

    // Streams. -------------------------------------------------------------------------------------
    /// Reads the content of this container into what is there: attributes take the values of the
    /// stream, those that are not there become custom ones. What was read ahead of a failure stays.
    /// \return ContextMissing for a null context; a warning for what was kept or passed over
    /// without being understood; else the error that ended the read. The end of the input, and a
    /// "}" too many, are a quiet end.
    /// \throws std::invalid_argument for a malformed floating-point number.
    [[nodiscard]] virtual ErrorPtr readFrom(std::istream& stream,
                                            std::shared_ptr<const ReadContextBase> context);
    /// A hook ahead of a read, handed on to the fields.
    virtual void initRead();
    /// Writes the content of this container, but not its class.
    /// \return ContextMissing for a null context, StreamFailed where the stream is not good.
    [[nodiscard]] virtual ErrorPtr writeTo(std::ostream& stream,
                                           std::shared_ptr<const WriteContextBase> context);

    // Handles, for classes that address their fields by a pair of numbers. -------------------------
    virtual SVec2d<int> lookupToken(AttrContainer* field) const;
    virtual std::weak_ptr<AttrContainer> lookupField(const SVec2d<int>& handle) const;
    /// Maps the field token of an old stream to today's; all ones for none.
    virtual std::uint64_t convertToNewFieldToken(std::uint64_t old) const;

    // Names. ---------------------------------------------------------------------------------------
    std::string getName() const override;
    virtual std::string getDisplayName() const;
    [[nodiscard]] virtual ErrorPtr setDisplayName(const std::string& name);
    /// Whether nothing in this container (attribute, field or child) answers to that name.
    virtual bool isNameUnique(const std::string& name) const;
    /// \return InvalidName, with the info "CheckedName", for a text that is no valid name.
    [[nodiscard]] virtual ErrorPtr checkName(const std::string& name) const;
    /// A name that is not taken here, made from `name`, or from the class name if that is invalid.
    virtual std::string generateUniqueName(const std::string& name) const;
    /// Renames this container; its siblings are not asked whether the name is taken.
    /// \return InvalidName, and the old name stays. A name that an observer refused is no error:
    /// the old name stays, and only `name` tells.
    [[nodiscard]] virtual ErrorPtr setName(const std::string& name);
    const std::string& name() const;
    /// Sets the name as any attribute is set: an invalid one is refused by the container itself.
    void name(const std::string& newName);
    Attr<std::string>& Attr_Name() { return typedAttribute<std::string>(0); }
    const Attr<std::string>& Attr_Name() const { return typedAttribute<std::string>(0); }
    const std::string& Name() const { return name(); }
    void Name(const std::string& newName) { name(newName); }
    /// A name is a text of letters, digits, '_', '-' and '.', and not empty.
    static bool isNameValid(const std::string& name);
    /// Puts '_' in the place of what a name cannot hold. \return false for an empty text.
    static bool makeNameValid(std::string& name);
    /// A text that passes `checkName`, made from a name that comes from outside.
    std::string toTarvoName(const std::string& name) const;

    // Relations. -----------------------------------------------------------------------------------
    /// Points copied relations of this container's attributes at the copies of their observers.
    virtual void updateObservers(ObserverRelationTableObserver& table);
    /// Refuses an invalid name that someone writes into the name attribute. Who overrides it hands
    /// on to this, and is called from within `create` as well, where the attributes of derived
    /// classes are not there yet.
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator) override;
    using Observer::inqObserver;
    std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const override;

    // Elements by token and name. ------------------------------------------------------------------
    virtual std::uint64_t getAttrToken(const std::string& key) const;
    virtual std::optional<std::string> getAttrName(std::uint64_t token) const;
    virtual const AttrDefinition* getAttrDefinition(std::uint64_t token) const;
    virtual std::uint64_t getFieldToken(const std::string& name) const;
    virtual std::optional<std::string> getFieldName(std::uint64_t token) const;
    /// The name under which a key store holds a field.
    virtual std::optional<std::string> getFieldRegistryPrefix(const AttrContainer& field) const;
    std::uint64_t getAttrToken(const Attribute& attribute) const;
    const AttrDefinition* getAttrDefinition(const Attribute& attribute) const;
    /// The category of an element's row; 64 for what has no row.
    int getAttrCategory(const Attribute& attribute) const;
    int getAttrCategory(std::uint64_t token) const;
    std::uint64_t getFieldToken(const AttrContainer& field) const;
    /// An attribute by token or name; empty for what is not there. Names are matched with their
    /// case. A cast to `Attr<T>` gives the typed value.
    std::weak_ptr<Attribute> getAttribute(std::uint64_t token);
    std::weak_ptr<const Attribute> getAttribute(std::uint64_t token) const;
    std::weak_ptr<Attribute> getAttribute(const std::string& name);
    std::weak_ptr<const Attribute> getAttribute(const std::string& name) const;
    std::weak_ptr<AttrContainer> getField(std::uint64_t token);
    std::weak_ptr<const AttrContainer> getField(std::uint64_t token) const;
    std::weak_ptr<AttrContainer> getField(const std::string& name);
    std::weak_ptr<const AttrContainer> getField(const std::string& name) const;
    std::uint64_t getNumAttributes() const;
    std::uint64_t getNumHardCodedAttributes() const;
    /// How many slots for fields there are, empty ones included.
    std::uint64_t getNumFields() const;
    /// A number that tells this object from all others of the process.
    std::uint64_t getInstanceIdentifier() const;

    // Adding and removing. -------------------------------------------------------------------------
    /// Adds a custom attribute, a `CustAttr<T>` that is in no other container.
    /// \return an empty pointer for a name that is invalid or taken, and for an attribute that is
    /// not a custom one.
    std::weak_ptr<Attribute> addAttribute(std::shared_ptr<Attribute> attribute,
                                          const std::string& name);
    /// Removes a custom attribute; the last one takes over its token.
    /// \return false for a name that is not there or belongs to the class.
    bool rmAttribute(const std::string& name);
    bool rmAllCustomAttributes();
    /// Adds a field under `name`, or under its own name if that is empty.
    /// \param flags bits of `AddFlags`.
    bool addField(std::shared_ptr<AttrContainer> field, const std::string& name, int flags);
    /// Puts a field, or none, into an existing slot.
    bool setField(std::uint64_t token, std::shared_ptr<AttrContainer> field);
    bool replaceField(std::shared_ptr<AttrContainer> old, std::shared_ptr<AttrContainer> replacement);
    bool rmField(std::uint64_t token);
    bool rmField(const std::string& name);
    bool rmField(std::shared_ptr<AttrContainer> field);
    bool rmAllCustomFields();
    /// Hooks by which a field hears of its owner.
    virtual void attachToParent(std::shared_ptr<AttrContainer> parent);
    virtual bool detachFromParent(std::shared_ptr<AttrContainer> parent);

    // Side containers and marks. -------------------------------------------------------------------
    /// Hangs a side container on this one, held weakly. An entry ends when it is removed, not with
    /// the container.
    void addAttrContInfo(std::shared_ptr<AttrContainer> info);
    std::weak_ptr<AttrContainer> lookupAttrContInfo() const;
    void rmAttrContInfo();
    /// Whether a write with shared instances has been here; the host clears it.
    bool isSerialized() const { return (flags.bits & Flags::isSerialized) != 0; }
    void setIsSerialized(bool value);

    /// The type of a word of `keyTable`, its other words included; 54 for an unknown word.
    static AttrType getTypeFromString(const std::string& key);
    static constexpr std::uint64_t lastAttrToken() { return 0; }
    static constexpr std::uint64_t lastFieldToken() { return noToken; }

protected:
    void init(CreateType type, const Source& source);
    bool createAttributes(const std::vector<AttrDefinition>& rows, CreateType type,
                          const Source& source);
    bool createFields(const std::vector<FieldDefinition>& rows, CreateType type,
                      const Source& source);
    /// `createAttributes` for the class block: without values to take over, the attributes are made
    /// with their defaults when the first of them is asked for.
    void declareAttributes(const AttrTable& table, const Source& source);
    /// The table of the nearest class that has one; null here, at the base of all.
    static const AttrTable* attrTable() { return nullptr; }
    static DataStructures::KeyTable createKeyTableFromAttrDefinitions(
        const std::vector<AttrDefinition>& rows);
    static DataStructures::KeyTable createKeyTableFromFieldDefinitions(
        const std::vector<FieldDefinition>& rows);
    /// The pointers lead into `rows`, which must stay as they are.
    static AttrDefMap createAttrDefMapFromAttrDefinitions(const std::vector<AttrDefinition>& rows);

    [[nodiscard]] virtual ErrorPtr readField(std::istream& stream,
                                             std::shared_ptr<const ReadContextBase> context);
    [[nodiscard]] virtual ErrorPtr writeField(std::ostream& stream, std::uint64_t token,
                                              std::shared_ptr<const WriteContextBase> context);

    /// The attribute that a class declares at a token.
    /// \throws std::out_of_range where the list is too short.
    template <class T>
    Attr<T>& typedAttribute(std::uint64_t token) {
        return static_cast<Attr<T>&>(hardCodedAttribute(token));
    }
    template <class T>
    const Attr<T>& typedAttribute(std::uint64_t token) const {
        return static_cast<const Attr<T>&>(hardCodedAttribute(token));
    }
    /// The attribute of that token to look at. One that is still to be made stays so: another that
    /// is like it, of no container, stands for it.
    const std::shared_ptr<Attribute>& lookAtAttribute(std::uint64_t token) const;
    /// The table whose attributes, that of the token among them, are still to be made with their
    /// defaults, since nobody has asked for one; null if they are there.
    const AttrTable* untouchedTable(std::uint64_t token) const {
        return attrList ? attrList->untouchedTable(token) : nullptr;
    }
    std::shared_ptr<AttrContainer> self();

private:
    class ObserverObservable;
    friend class AttrContComparer;  // looks at attributes without a share of them
    friend class ContainerReader;  // reads the parts of a container one by one
    friend class FieldReader;
    friend class ContainerWriter;
    template <AttrValue T>
    friend class HardCodedAttr;  // tells of a stored name

    /// The name was stored: by whatever road, and whether or not anybody was told.
    virtual void nameStored() const {}
    void textStored(const Attribute& attribute) const {
        if (attrList && attrList->get(0).get() == &attribute) nameStored();
    }

    Attribute& hardCodedAttribute(std::uint64_t token) const;
    /// The attribute of any token; an empty pointer when there is none.
    const std::shared_ptr<Attribute>& attributeAt(std::uint64_t token) const;
    /// Stands for this container where an observable is wanted; made when needed.
    Observable& ownObservable();
    FieldList& fields();
    static const std::vector<AttrDefinition>& ownDefinitions();
    void copyCustomAttributes(const CustAttrList& source, CreateType type);

    std::shared_ptr<ObserverObservable> observerObservable;
    std::unique_ptr<AttrList> attrList;
    std::unique_ptr<CustAttrList> custAttrList;
    std::unique_ptr<FieldList> fieldList;
    Flags flags;
};

}  // namespace QOR::AttributeContainer
