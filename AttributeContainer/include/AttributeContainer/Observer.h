// What watches: the reverse view of the relations that lead to it.
#pragma once

#include <AttributeContainer/Action.h>
#include <AttributeContainer/ObservingObject.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

class Observable;

/// What watches. It is asked before and told after a change of what it watches, as the action of
/// the relation says, and it leaves every list that it stands in when it is destroyed.
class QOR_API Observer : public ObservingObject {
public:
    /// What `checkLocking` is asked about; hosts give it values.
    enum class ActionForCheckLocking : std::uint32_t {};
    using Initiator = std::optional<std::reference_wrapper<ObservingObject>>;

    explicit Observer(const std::optional<std::reference_wrapper<const Observer>>& source);
    ~Observer() override;

    using ObservingObject::inqObserver;
    /// Resolves a path; "/" and "#" in front lead to the path root of the thread, if it has one.
    std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const override;
    virtual const std::string& getClassName() const;
    static const std::string& getStaticClassName();
    /// Notes this observer as the copy of `source`, so that copied relations find it.
    virtual int copyFrom(const Observer& source);
    /// A watched observable has changed. `initiator` is who changed it, if anybody gave a name to
    /// that; an initiator is not told of its own change.
    virtual Action::ExecReturn changedNotify(Observable& observable, Initiator& initiator);
    /// A watched observable is about to change. Who refuses hangs an `InfoFailed` on it: the
    /// returned value refuses nothing. `NewValueInfo<T>` tells the value to come, but not in a
    /// change through text.
    virtual Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator);
    virtual std::string getName() const = 0;
    /// A path for showing to people; empty for what has none.
    virtual std::optional<std::string> inqDisplayPath() const;
    virtual std::optional<std::string> inqObjPath() const;
    virtual bool checkLocking(const ActionForCheckLocking& action) const;
    /// A watched observable dismisses its observers. One that is simply destroyed says nothing. Who
    /// overrides this calls it, since it takes the observable out of this observer's list.
    virtual void informDelete(const Observable& observable);
    virtual std::optional<std::reference_wrapper<const Observer>> lookupObject() const;

    /// The path of this element as seen from `reference`, which must not be null. Empty text for
    /// an element seen from itself.
    std::optional<std::string> inqObjPath(const Observer* reference) const;

    /// The observer's side of the handshake: one entry for each active relation.
    bool informAddObserve(Observable& observable);
    void informRmObserve(const std::optional<std::reference_wrapper<const Observable>>& observable);
    void informRmObserveAll(
        const std::optional<std::reference_wrapper<const Observable>>& observable);
    /// The index of the last entry of that observable; all ones when there is none.
    /// \throws std::bad_weak_ptr when no shared pointer owns the observable.
    std::uint64_t lookupObservedByMe(const Observable& observable) const;
    /// How many active relations lead to this observer, those of observables that were destroyed
    /// meanwhile included.
    std::uint64_t getNumObservedByMe() const { return params.observedByMe.size(); }

    /// Gives this observer a copy of each relation that `other` is in, but for those to other's
    /// own parts. \return how many.
    std::uint64_t copyObservationsFrom(Observer& other);
    /// Moves each relation of `other` to this observer, but for those to other's own parts.
    std::uint64_t takeOverObservationsFrom(Observer& other);

protected:
    struct QOR_API Params {
        virtual ~Params();
        virtual bool empty() const;

        std::vector<std::weak_ptr<Observable>> observedByMe;
    };

    /// Leaves all observables.
    void rmAllObservers(bool);
    /// The object against which this thread resolves absolute paths; empty when it has none.
    static std::optional<std::reference_wrapper<Observer>> currentPathRoot();
    /// Sets it, keeping it alive; an empty pointer clears it.
    static void currentPathRoot(std::shared_ptr<Observer> root);

private:
    friend class Observable;    // notes where a relation lingers
    friend class ObserverPath;  // resolves against the path root

    /// A relation to this observer had to stay in the list of `observable`.
    void noteLingering(Observable& observable);
    /// Ends those relations: this observer goes.
    void leaveLingering();

    Params params;
    // Where relations to this observer stay behind without an entry above; made when needed.
    std::shared_ptr<std::vector<std::weak_ptr<Observable>>> lingering;
};

}  // namespace QOR::AttributeContainer
