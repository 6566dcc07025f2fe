#include <AttributeContainer/ObserverPath.h>

#include <AttributeContainer/ActionContainer.h>
#include <AttributeContainer/Observable.h>
#include <AttributeContainer/Observer.h>

#include <typeinfo>
#include <utility>

namespace QOR::AttributeContainer {

ObserverPath::ObserverPath() = default;

ObserverPath::ObserverPath(const ObserverPath& other) { copyFrom(other); }

ObserverPath& ObserverPath::operator=(const ObserverPath& other) {
    if (this != &other) copyFrom(other);
    return *this;
}

ObserverPath::ObserverPath(const Owner& newOwner, const ObserverPath& other) {
    copyFrom(other);
    setOwner(newOwner ? &newOwner->get() : nullptr);
}

ObserverPath::ObserverPath(const Owner& owner, const OptionalObserver& observer, short priority,
                           std::uint64_t action) {
    init(owner, priority, action);
    if (observer) setTarget(observer->get(), true);
}

ObserverPath::ObserverPath(const Owner& owner, const std::optional<const std::string>& path,
                           short priority, std::uint64_t action) {
    init(owner, priority, action);
    if (!path) return;
    setText(*path);
    if (lookupObserver()) setFlag(activeBit, true);
}

ObserverPath::~ObserverPath() = default;

void ObserverPath::init(const Owner& newOwner, short newPriority, std::uint64_t actionToken) {
    text.reset();
    flags = 0;
    priority = newPriority;
    setOwner(newOwner ? &newOwner->get() : nullptr);
    setAction(actionToken);
}

void ObserverPath::copyFrom(const ObserverPath& other) {
    setOwner(other.livingOwner());
    priority = other.priority;
    action = other.action;
    flags =
        static_cast<unsigned char>(other.flags & (temporaryBit | resolvedBit | tellsBit | asksBit));
    observer = other.observer;
    // Taken anew: the observer may have had no owner yet when the other relation was made.
    guard = other.isResolved() ? observer->weak_from_this() : other.guard;
    text = other.text ? std::make_unique<std::string>(*other.text) : nullptr;
}

void ObserverPath::setOwner(ObservingObject* newOwner) {
    owner = newOwner;
    ownerGuard = newOwner ? newOwner->weak_from_this() : std::weak_ptr<ObservingObject>{};
}

Observable* ObserverPath::owningObservable() const {
    return dynamic_cast<Observable*>(livingOwner());
}

void ObserverPath::setTarget(Observer& newObserver, bool active) {
    text.reset();
    observer = &newObserver;
    guard = newObserver.weak_from_this();
    setFlag(resolvedBit, true);
    setFlag(activeBit, active);
    setFlag(dismissedBit, false);
}

void ObserverPath::setText(const std::string& path) {
    observer = nullptr;
    guard.reset();
    text = std::make_unique<std::string>(path);
    setFlag(activeBit, false);
    setFlag(resolvedBit, false);
}

void ObserverPath::dismiss(Observable& observable) {
    if (!isActive() || hasFlag(dismissedBit)) return;
    observer->informRmObserve(observable);
    setFlag(dismissedBit, true);
}

void ObserverPath::abandon() {
    observer = nullptr;
    guard.reset();
    bindAction(std::nullopt);
    setFlag(activeBit, false);
}

ObserverPath::OptionalObserver ObserverPath::getObserver() const {
    if (!isResolved()) return std::nullopt;
    return *observer;
}

ObserverPath::OptionalObserver ObserverPath::lookupObserver() {
    if (hasFlag(resolvedBit)) return getObserver();
    const std::string path = text ? *text : std::string{};
    std::weak_ptr<ObservingObject> found;
    if (const auto root = Observer::currentPathRoot()) {
        const auto kept = root->get().weak_from_this().lock();  // it may change the root itself
        found = root->get().inqObserver(path);
    } else if (ObservingObject* const start = livingOwner()) {
        found = start->inqObserver(path);
    }
    const auto resolved = std::dynamic_pointer_cast<Observer>(found.lock());
    if (!resolved) return std::nullopt;
    setTarget(*resolved, false);
    return *resolved;
}

bool ObserverPath::activate() {
    if (isActive()) return false;
    const auto found = lookupObserver();
    Observable* const observable = owningObservable();
    if (!found || !observable) return false;
    found->get().informAddObserve(*observable);
    setTarget(found->get(), true);
    return true;
}

bool ObserverPath::deactivate() {
    Observable* const observable = owningObservable();
    if (!isActive() || !observable) return false;
    dismiss(*observable);
    setTarget(*observer, false);
    return true;
}

void ObserverPath::setObserver(const OptionalObserver& newObserver, bool informOld) {
    if (!newObserver) return;
    Observable* const observable = owningObservable();
    if (informOld && observable) dismiss(*observable);
    const unsigned char before = flags;
    setTarget(newObserver->get(), true);
    if (observable) {
        newObserver->get().informAddObserve(*observable);
    } else {
        flags = before;
    }
}

bool ObserverPath::setObserverAsPath(const std::optional<const std::string>& path) {
    const auto known = getObserver();
    if (!known) return false;
    std::optional<std::string> newText;
    if (path) newText = *path;
    if (!newText) newText = known->get().inqObjPath();
    if (!newText) return false;
    if (Observable* const observable = owningObservable()) dismiss(*observable);
    setText(*newText);
    return true;
}

void ObserverPath::setAction(const std::string& name) {
    setAction(ActionContainer::the()->getToken(name));
}

void ObserverPath::setAction(std::uint64_t token) {
    bindAction(ActionContainer::the()->getAction(token));
}

void ObserverPath::bindAction(const std::optional<std::reference_wrapper<Action>>& newAction) {
    action = newAction;
    // Exactly these classes: one derived from them may do anything.
    const Action* const bound = action ? &action->get() : nullptr;
    setFlag(tellsBit, bound && typeid(*bound) == typeid(ActionNotify));
    setFlag(asksBit, bound && typeid(*bound) == typeid(ActionPreNotify));
}

std::optional<const std::string> ObserverPath::getActionName() const {
    return action ? action->get().getName() : std::string{};
}

std::uint64_t ObserverPath::getActionToken() const {
    return action ? action->get().getToken() : ~std::uint64_t{0};
}

std::optional<std::string> ObserverPath::getPath() const {
    if (const auto known = getObserver()) return known->get().inqObjPath();
    if (!text) return std::nullopt;
    return *text;
}

int ObserverPath::comp(const ObserverPath& a, const ObserverPath& b) {
    const bool aLive = a.isActive();
    const bool bLive = b.isActive();
    if (aLive != bLive) return aLive ? 1 : -1;
    if (a.priority == b.priority) return 0;
    return a.priority < b.priority ? -1 : 1;
}

int ObserverPath::negComp(const ObserverPath& a, const ObserverPath& b) { return -comp(a, b); }

bool ObserverPath::operator==(const ObserverPath& other) const {
    if (action.has_value() != other.action.has_value()) return false;
    if (action && &action->get() != &other.action->get()) return false;
    if (isResolved() && other.isResolved()) return observer == other.observer;
    if (text && other.text) return *text == *other.text;
    const auto mine = getPath();
    const auto theirs = mine ? other.getPath() : std::nullopt;
    return mine && theirs && *mine == *theirs;
}

}  // namespace QOR::AttributeContainer
