// What can be watched: the relations to its observers and the notification that runs over them.
#pragma once

#include <AttributeContainer/Action.h>
#include <AttributeContainer/ObserverInfo.h>
#include <AttributeContainer/ObserverList.h>
#include <AttributeContainer/ObservingObject.h>

#include <QOR/ErrorCode.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <typeinfo>
#include <vector>

namespace QOR::AttributeContainer {

class Observer;
class ObserverRelationTableObserver;

/// What can be watched. Pre-observers are asked before a change, post-observers told after it.
///
/// Relations refer to their observers and own nothing; each active one has an entry on the
/// observer's side, and both sides tell each other when they go. One thread at a time uses an
/// observable and what hangs together with it.
class QOR_API Observable : public ObservingObject {
public:
    enum AddResult : std::uint32_t {
        ObserverInformed = 0,  ///< in the list, active, and the observer has been told
        ObserverPending = 1,   ///< in the list, not yet active
        AddFailed = 2,         ///< no add operation gives this; readers take it for a failure
        AlreadyThere = 3,      ///< an equal relation was in the list, the new one is dropped
    };
    /// What one action answered in a notification.
    struct NotificationResult {
        std::weak_ptr<ObservingObject> observer;
        Action::ExecReturn result = Action::ExecDone;
    };

    ~Observable() override;

    using ObservingObject::inqObserver;
    /// Resolves a path name by name; a text of a single name leads nowhere.
    std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const override;
    /// The observer that stands for this observable: for an attribute, its container.
    virtual std::optional<std::reference_wrapper<const Observer>> lookupObject() const = 0;
    /// The name in its container.
    virtual std::string getName() const = 0;
    /// The object path; empty for what has none.
    virtual std::optional<std::string> inqObjPath() const;
    /// Takes copies of the other's relations, those of priority 1 or more that are not temporary,
    /// have an action and a path. They are not active until the targets have been sorted out.
    virtual int copyFrom(const Observable& source);
    /// Reads relations. \return ParseFailed at a word that is no relation, ObserverEntryDropped
    /// (a warning) for a relation whose action is not known here.
    [[nodiscard]] virtual ErrorPtr readFrom(std::istream& stream,
                                            std::shared_ptr<const ReadContextBase> context);
    [[nodiscard]] virtual ErrorPtr writeTo(std::ostream& stream,
                                           std::shared_ptr<const WriteContextBase> context) const;
    /// Asks the pre-observers. `results`, if given, gets a record for every action that ran.
    virtual void preTouch(const std::shared_ptr<ObservingObject>& initiator,
                          std::vector<NotificationResult>* results);
    /// Tells the post-observers.
    virtual void touch(const std::shared_ptr<ObservingObject>& initiator,
                       std::vector<NotificationResult>* results);

    /// Adds a post-observer.
    /// \param priority greater ones run earlier; of equal ones, the one that was added last.
    /// \param action a token of the action container: 0 "Notify", 1 "PreNotify", 2 "Propagate".
    /// \param temporary the relation is never stored and never copied.
    /// \return AlreadyThere for a relation of that observer and action, which keeps its priority.
    AddResult addObserver(Observer& observer, short priority, std::uint64_t action, bool temporary);
    /// Adds a post-observer by path; a path that leads nowhere yet stays as text until it does, and
    /// `updateObserverLists` tries again. It is seen from this observable: of an attribute, "~" is
    /// the container. It leads to objects and fields, not to attributes.
    AddResult addObserver(const std::string& path, short priority, std::uint64_t action,
                          bool temporary);
    /// Adds a ready relation, in order or at the end, and becomes its owner.
    AddResult addObserver(std::unique_ptr<ObserverPath> path, bool sorted);
    /// The same ahead of a change, for which the action is 1, "PreNotify".
    AddResult addPreObserver(Observer& observer, short priority, std::uint64_t action,
                             bool temporary);
    AddResult addPreObserver(const std::string& path, short priority, std::uint64_t action,
                             bool temporary);
    AddResult addPreObserver(std::unique_ptr<ObserverPath> path, bool sorted);
    /// Ends all relations to `observer`, on both sides.
    void rmObserver(Observer& observer);

    /// Ends one relation. The index runs over the pre-observers, then over the post-observers.
    /// \throws std::out_of_range past the end.
    void removePath(std::uint64_t index);
    /// Ends every relation that equals `path`; not for use while this observable notifies.
    /// \return false when there is none.
    bool removePath(ObserverPath& path);
    ObserverPath& getPath(std::uint64_t index);
    const ObserverPath& getPath(std::uint64_t index) const;
    /// The index of an equal relation; all ones when there is none.
    std::uint64_t lookupPath(ObserverPath& path) const;

    /// Resolves and activates what is not yet active; relations whose observer has gone are passed.
    /// \return false while some path still leads nowhere.
    bool updateObserverLists(bool forceSort);
    void resortPostObservers() { parEx()->postObservers.sort(); }
    void resortPreObservers() { parEx()->preObservers.sort(); }

    /// The list side of the handshake; the observer is not told.
    /// \return an empty pointer when an equal relation is there already.
    ObserverPath* informAddPostObservedBy(std::unique_ptr<ObserverPath> path, bool sorted);
    ObserverPath* informAddPreObservedBy(std::unique_ptr<ObserverPath> path, bool sorted);
    void informRmObservedBy(Observer& observer);
    void informRmObservedBy(Observer& observer, ObserverList& list);
    void informRmObservedBy(const ObserverPath& path);

    std::uint64_t getNumPreObservers() const { return params.preObservers.size(); }
    std::uint64_t getNumPostObservers() const { return params.postObservers.size(); }
    /// Whether a notification runs at all for this observable; on at first.
    bool isNotifyEnabled() const { return (params.flags & ParamsEx::notifyEnabled) != 0; }
    void setNotifyEnabled(bool value) { params.setFlag(ParamsEx::notifyEnabled, value); }

    /// Hangs side information here, for this thread; one of its type that is there is replaced.
    /// \return false for an empty pointer.
    bool addNotifyInfo(std::shared_ptr<ObserverInfo> info);
    std::shared_ptr<ObserverInfo> lookupNotifyInfo(const std::type_index& type);
    std::shared_ptr<const ObserverInfo> lookupNotifyInfo(const std::type_index& type) const;
    /// Whether an info of that type hangs here; cheaper than taking a share of it.
    bool hasNotifyInfo(const std::type_index& type) const;
    /// Takes the info of that type out and returns it; empty when there is none. The second
    /// argument has no effect: an observable without infos has no place among them.
    std::shared_ptr<ObserverInfo> removeNotifyInfo(const std::type_index& type, bool dropEmpty);
    /// \return true if exactly this object hung here and is now gone.
    bool removeNotifyInfo(const std::shared_ptr<const ObserverInfo>& info, bool dropEmpty);
    /// Drops all infos, or those that expire. \return how many.
    int removeNotifyInfos(bool all);
    /// Drops those of the given infos that hang here.
    void removeNotifyInfos(std::shared_ptr<const ObserverInfoMap>& infos);
    /// The infos of this thread, to be set on another; empty pointer when there are none.
    std::shared_ptr<ObserverInfoMap> copyNotifyInfos() const;
    void setNotifyInfos(std::shared_ptr<ObserverInfoMap>& infos);

protected:
    /// The post-observers, as a record with room for more.
    struct QOR_API Params {
        virtual ~Params();
        virtual bool empty() const;
        virtual std::uint64_t lookupContent(ObserverPath& path) const;

        ObserverList postObservers;
    };
    /// All that an observable keeps.
    struct QOR_API ParamsEx : Params {
        static constexpr std::uint16_t notifyEnabled = 1;
        static constexpr std::uint16_t lookupPending = 2;
        static constexpr std::uint16_t postCleanupPending = 4;
        static constexpr std::uint16_t preCleanupPending = 8;

        ~ParamsEx() override;
        bool empty() const override;
        /// The combined index of a post-observer, or else what the pre-observers answer.
        std::uint64_t lookupContent(ObserverPath& path) const override;
        void setFlag(std::uint16_t bit, bool value) {
            flags = static_cast<std::uint16_t>(value ? flags | bit : flags & ~bit);
        }

        ObserverList preObservers;
        std::atomic<std::uint64_t> notifyDepth{0};  // walks that run on this observable
        std::uint16_t flags = notifyEnabled;        // last, for what lies behind to share its word
    };
    using Initiator = std::shared_ptr<ObservingObject>;

    Observable() = default;
    /// The base of a copy takes the source's relations with it.
    explicit Observable(const std::optional<std::reference_wrapper<const Observable>>& source);

    Params* par() { return &params; }
    ParamsEx* parEx() { return &params; }
    const ParamsEx* parEx() const { return &params; }
    Params* checkPar() { return &params; }

    /// Whether a post notification would do nothing at all: nobody to tell, nothing to tidy up.
    bool isQuiet() const {
        return params.postObservers.empty() &&
               (params.flags & (ParamsEx::lookupPending | ParamsEx::postCleanupPending)) == 0;
    }
    /// Asks the pre-observers about what is about to come, an info of the type `announced`.
    /// \return false when one of them refused, or ended this object.
    bool askFirst(const std::type_info& announced, std::shared_ptr<ObserverInfo>&& info,
                  const Initiator& initiator, std::vector<NotificationResult>* results);
    /// Runs the actions of one list from its back; every walk of a change goes through here.
    void notifySequence(const Initiator& initiator, ObserverList* list,
                        std::vector<NotificationResult>* results);
    /// Says farewell to all observers while this object is still owned.
    /// \throws std::bad_weak_ptr when no shared pointer owns it.
    void rmAllObservers(bool);

private:
    friend class ExchangePtr;  // swaps the targets of copied relations
    friend class Observer;     // leaves, also where a relation could not go at once

    ObserverList& listOf(std::uint64_t& index);
    AddResult finishAdding(ObserverPath* path);
    ObserverPath* insert(ObserverList& list, std::unique_ptr<ObserverPath> path, bool sorted);
    void finishWalk(const ObserverList* list);
    /// Runs one action of a walk and makes the record of its answer.
    Action::ExecReturn executeForRecord(const ObserverPath& path, Observer& observer,
                                        ObservingObject* initiator,
                                        std::vector<NotificationResult>& results);
    /// No relation may lead to `observer` any more, also none that had to stay in its list.
    void forgetObserver(const Observer& observer);
    void forgetObserver(const Observer& observer, ObserverList& list, std::uint16_t cleanupBit);
    std::uint64_t exchangePtr(ObserverRelationTableObserver& table);

    [[no_unique_address]] ParamsEx params;
};

}  // namespace QOR::AttributeContainer
