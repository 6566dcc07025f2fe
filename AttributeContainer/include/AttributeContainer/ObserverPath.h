// One relation from an observable to an observer.
#pragma once

#include <AttributeContainer/Action.h>

#include <QOR/ErrorCode.h>

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

class Observable;
class Observer;
class ObservingObject;
class ReadContextBase;
class WriteContextBase;

/// A relation with its priority, its action and its target: an observer, or the text of a path
/// that is resolved once the target exists.
///
/// It passes through three states: text; resolved (the target is known); resolved and active (the
/// observer has been told and will be looked after from both sides). Owns nothing, and never leads
/// to an observer that has ended: then it counts as neither resolved nor active.
class QOR_API ObserverPath {
public:
    using OptionalObserver = std::optional<std::reference_wrapper<Observer>>;
    using Owner = std::optional<std::reference_wrapper<ObservingObject>>;

    ObserverPath();
    /// Copies owner, priority, action, target and the temporary bit; a copy is never active.
    ObserverPath(const ObserverPath& other);
    ObserverPath& operator=(const ObserverPath& other);
    ObserverPath(const Owner& owner, const ObserverPath& other);
    /// A relation to a known observer, active from birth. Whoever adds it tells the observer.
    ObserverPath(const Owner& owner, const OptionalObserver& observer, short priority,
                 std::uint64_t action);
    /// A relation by path, which is resolved at once where that is possible.
    ObserverPath(const Owner& owner, const std::optional<const std::string>& path, short priority,
                 std::uint64_t action);
    ~ObserverPath();

    /// Resolves the target and tells it of the relation.
    /// \return false when it is active already, or the target or an observable owner is missing.
    bool activate();
    /// Tells the observer to forget the relation; the target stays known.
    bool deactivate();
    /// The target, resolved now if it is still text; empty where the path leads nowhere yet.
    OptionalObserver lookupObserver();
    /// Points the relation at another observer and tells it; an empty value changes nothing.
    /// \param informOld whether the former observer is told to forget.
    void setObserver(const OptionalObserver& observer, bool informOld);
    /// Turns a known target back into text: `path`, or else the observer's own path.
    /// \return false when there is no known target or no text for it.
    bool setObserverAsPath(const std::optional<const std::string>& path);

    /// Sets the action of that name; an unknown name leaves the relation with none.
    void setAction(const std::string& name);
    void setAction(std::uint64_t token);
    const std::optional<std::reference_wrapper<Action>>& getAction() const { return action; }
    /// \return always a value, empty without an action.
    std::optional<const std::string> getActionName() const;
    /// \return all ones without an action.
    std::uint64_t getActionToken() const;

    /// The path of the target: asked of the observer when it is known, else the stored text.
    /// \return empty when there is no text either, or when the target has gone.
    std::optional<std::string> getPath() const;
    /// The known target; empty while the relation is text, or when the target has gone.
    OptionalObserver getObserver() const;
    /// Whether the target was known and has ended since. The next clean-up drops such a relation.
    bool isGone() const { return hasFlag(resolvedBit) && (!observer || hasEnded(guard)); }

    short getPriority() const { return priority; }
    bool isActive() const { return hasFlag(activeBit) && !isGone(); }
    bool isResolved() const { return hasFlag(resolvedBit) && !isGone(); }
    /// Temporary relations are never written and never copied.
    bool isTemporary() const { return hasFlag(temporaryBit); }
    void setTemporary(bool value) { setFlag(temporaryBit, value); }

    /// -1, 0 or 1: live relations come behind all others, then the priority decides.
    static int comp(const ObserverPath& a, const ObserverPath& b);
    static int negComp(const ObserverPath& a, const ObserverPath& b);
    /// Same action and same target; priority and state do not count.
    bool operator==(const ObserverPath& other) const;

    /// Reads and writes the relation as a block of a model stream.
    [[nodiscard]] ErrorPtr readFrom(std::istream& stream,
                                    std::shared_ptr<const ReadContextBase> context);
    [[nodiscard]] ErrorPtr writeTo(std::ostream& stream,
                                   std::shared_ptr<const WriteContextBase> context) const;

private:
    friend class Observable;    // ends and revives relations in the handshake
    friend class ObserverList;  // passes over relations whose observer has gone

    static constexpr unsigned char activeBit = 1;
    static constexpr unsigned char resolvedBit = 2;
    static constexpr unsigned char temporaryBit = 4;
    static constexpr unsigned char dismissedBit = 8;  // the observer was told to forget already
    // What the action is where it is one of the two that ask and tell: a walk then calls the
    // observer itself.
    static constexpr unsigned char tellsBit = 16;
    static constexpr unsigned char asksBit = 32;

    void init(const Owner& newOwner, short newPriority, std::uint64_t actionToken);
    void bindAction(const std::optional<std::reference_wrapper<Action>>& newAction);
    void copyFrom(const ObserverPath& other);
    bool hasFlag(unsigned char bit) const { return (flags & bit) != 0; }
    void setFlag(unsigned char bit, bool value) {
        flags = static_cast<unsigned char>(value ? flags | bit : flags & ~bit);
    }
    void setOwner(ObservingObject* newOwner);
    ObservingObject* livingOwner() const { return hasEnded(ownerGuard) ? nullptr : owner; }
    Observable* owningObservable() const;
    void setTarget(Observer& newObserver, bool active);
    void setText(const std::string& path);
    /// The target of an active relation, as the walk of a notification wants it.
    Observer* liveObserver() const {
        return hasFlag(activeBit) && !hasEnded(guard) ? observer : nullptr;
    }
    /// Whether this relation has or had that target, also while the observer is being destroyed.
    bool leadsTo(const Observer& other) const { return hasFlag(resolvedBit) && observer == &other; }
    /// Tells an active target to forget the relation, once.
    void dismiss(Observable& observable);
    /// The observer goes away while this relation cannot leave its list: nothing may reach it.
    void abandon();
    /// What the action does for `observer`, the target; nothing where there is none.
    Action::ExecReturn execute(Observable& observable, Observer& target,
                               ObservingObject* initiator) const;
    /// Whether the object of a guard has ended. One that no shared pointer owned when the guard was
    /// set tells nothing, and is looked after by the handshake alone.
    static bool hasEnded(const std::weak_ptr<ObservingObject>& guard) {
        const std::weak_ptr<ObservingObject> untied;
        return guard.expired() && (guard.owner_before(untied) || untied.owner_before(guard));
    }

    short priority = 0;
    unsigned char flags = temporaryBit;
    std::optional<std::reference_wrapper<Action>> action;
    Observer* observer = nullptr;          // the target, when resolved
    std::weak_ptr<ObservingObject> guard;  // of the target
    std::unique_ptr<std::string> text;     // the target, when not resolved
    ObservingObject* owner = nullptr;
    std::weak_ptr<ObservingObject> ownerGuard;
};

}  // namespace QOR::AttributeContainer
