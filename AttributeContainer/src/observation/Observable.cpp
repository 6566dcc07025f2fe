#include <AttributeContainer/Observable.h>

#include <AttributeContainer/Observer.h>
#include <AttributeContainer/ObserverRelation.h>

#include "observation/PathText.h"
#include "observation/WalkFrame.h"

#include <stdexcept>

namespace QOR::AttributeContainer {

namespace {
constexpr std::uint64_t none = ~std::uint64_t{0};
}  // namespace

Observable::Params::~Params() = default;

bool Observable::Params::empty() const { return postObservers.empty(); }

std::uint64_t Observable::Params::lookupContent(ObserverPath& path) const {
    return postObservers.lookupContent(path);
}

Observable::ParamsEx::~ParamsEx() = default;

bool Observable::ParamsEx::empty() const { return postObservers.empty() && preObservers.empty(); }

std::uint64_t Observable::ParamsEx::lookupContent(ObserverPath& path) const {
    const std::uint64_t index = postObservers.lookupContent(path);
    if (index != none) return index + preObservers.size();
    return preObservers.lookupContent(path);
}

Observable::Observable(const std::optional<std::reference_wrapper<const Observable>>& source) {
    if (source) Observable::copyFrom(source->get());
}

Observable::~Observable() {
    WalkFrame::leaveWord(*this);
    removeNotifyInfos(true);
}

std::weak_ptr<const ObservingObject> Observable::inqObserver(
    const std::optional<const std::string>& path) const {
    if (!path) return {};
    if (path->empty()) {
        if (!dynamic_cast<const Observer*>(static_cast<const ObservingObject*>(this))) return {};
        return weak_from_this();
    }
    return resolveSegments(*this, *path);
}

std::optional<std::string> Observable::inqObjPath() const { return std::nullopt; }

// Adding and removing -----------------------------------------------------------------------

namespace {
// A new relation to an observer, or to whom a path leads.
template <class Target>
std::unique_ptr<ObserverPath> makeRelation(Observable& owner, const Target& target, short priority,
                                           std::uint64_t action, bool temporary) {
    auto path =
        std::make_unique<ObserverPath>(ObserverPath::Owner{owner}, target, priority, action);
    path->setTemporary(temporary);
    return path;
}
using Target = ObserverPath::OptionalObserver;
using Text = std::optional<const std::string>;
}  // namespace

Observable::AddResult Observable::addObserver(Observer& observer, short priority,
                                              std::uint64_t action, bool temporary) {
    return addObserver(makeRelation(*this, Target{observer}, priority, action, temporary), true);
}

Observable::AddResult Observable::addObserver(const std::string& text, short priority,
                                              std::uint64_t action, bool temporary) {
    return addObserver(makeRelation(*this, Text{text}, priority, action, temporary), true);
}

Observable::AddResult Observable::addObserver(std::unique_ptr<ObserverPath> path, bool sorted) {
    return finishAdding(informAddPostObservedBy(std::move(path), sorted));
}

Observable::AddResult Observable::addPreObserver(Observer& observer, short priority,
                                                 std::uint64_t action, bool temporary) {
    return addPreObserver(makeRelation(*this, Target{observer}, priority, action, temporary), true);
}

Observable::AddResult Observable::addPreObserver(const std::string& text, short priority,
                                                 std::uint64_t action, bool temporary) {
    return addPreObserver(makeRelation(*this, Text{text}, priority, action, temporary), true);
}

Observable::AddResult Observable::addPreObserver(std::unique_ptr<ObserverPath> path, bool sorted) {
    return finishAdding(informAddPreObservedBy(std::move(path), sorted));
}

Observable::AddResult Observable::finishAdding(ObserverPath* path) {
    if (!path) return AlreadyThere;
    if (!path->isActive()) return ObserverPending;
    const auto observer = path->getObserver();
    if (!observer) return ObserverPending;
    observer->get().informAddObserve(*this);
    return ObserverInformed;
}

ObserverPath* Observable::informAddPostObservedBy(std::unique_ptr<ObserverPath> path, bool sorted) {
    return insert(params.postObservers, std::move(path), sorted);
}

ObserverPath* Observable::informAddPreObservedBy(std::unique_ptr<ObserverPath> path, bool sorted) {
    return insert(params.preObservers, std::move(path), sorted);
}

ObserverPath* Observable::insert(ObserverList& list, std::unique_ptr<ObserverPath> path,
                                 bool sorted) {
    if (!path || list.lookupContent(*path) != none) return nullptr;
    path->setOwner(this);
    if (!sorted) return list.add(std::move(path));
    const std::uint64_t place = list.findInsertionPoint(*path);
    return list.addAfter(place, std::move(path));
}

void Observable::rmObserver(Observer& observer) {
    informRmObservedBy(observer);
    observer.informRmObserveAll(*this);
    if (params.notifyDepth.load(std::memory_order_relaxed) == 0) return;
    // What had to stay in its list is not to tell the observer again.
    for (ObserverList* const list : {&params.postObservers, &params.preObservers})
        for (std::uint64_t i = 0; i < list->size(); ++i)
            if (list->get(i).leadsTo(observer))
                list->get(i).setFlag(ObserverPath::dismissedBit, true);
}

void Observable::informRmObservedBy(Observer& observer) {
    informRmObservedBy(observer, params.postObservers);
    informRmObservedBy(observer, params.preObservers);
}

void Observable::informRmObservedBy(Observer& observer, ObserverList& list) {
    const std::uint64_t depth = params.notifyDepth.load(std::memory_order_relaxed);
    bool deferred = false;
    for (std::uint64_t i = list.size(); i-- > 0;) {
        if (list.get(i).leadsTo(observer) && !list.remove(i, depth)) deferred = true;
    }
    if (!deferred) return;
    params.setFlag(
        &list == &params.postObservers ? ParamsEx::postCleanupPending : ParamsEx::preCleanupPending,
        true);
    observer.noteLingering(*this);
}

void Observable::informRmObservedBy(const ObserverPath& path) {
    const std::uint64_t depth = params.notifyDepth.load(std::memory_order_relaxed);
    params.preObservers.removeElement(path, depth);
    params.postObservers.removeElement(path, depth);
}

void Observable::forgetObserver(const Observer& observer) {
    forgetObserver(observer, params.postObservers, ParamsEx::postCleanupPending);
    forgetObserver(observer, params.preObservers, ParamsEx::preCleanupPending);
}

void Observable::forgetObserver(const Observer& observer, ObserverList& list,
                                std::uint16_t cleanupBit) {
    const std::uint64_t depth = params.notifyDepth.load(std::memory_order_relaxed);
    for (std::uint64_t i = list.size(); i-- > 0;) {
        ObserverPath& path = list.get(i);
        if (!path.leadsTo(observer)) continue;
        if (depth == 0) {
            list.remove(i, 0);
            continue;
        }
        path.abandon();
        params.setFlag(cleanupBit, true);
    }
}

ObserverList& Observable::listOf(std::uint64_t& index) {
    if (index < params.preObservers.size()) return params.preObservers;
    index -= params.preObservers.size();
    return params.postObservers;
}

void Observable::removePath(std::uint64_t index) {
    std::uint64_t place = index;
    ObserverList& list = listOf(place);
    ObserverPath& path = list.get(place);
    const std::uint64_t depth = params.notifyDepth.load(std::memory_order_relaxed);
    path.dismiss(*this);
    if (depth != 0 && path.isActive()) path.observer->noteLingering(*this);
    list.remove(place, depth);
    params.setFlag(
        &list == &params.preObservers ? ParamsEx::preCleanupPending : ParamsEx::postCleanupPending,
        true);
}

bool Observable::removePath(ObserverPath& path) {
    ObserverPath wanted(path);  // which may be one of those that go
    std::uint64_t index = parEx()->lookupContent(wanted);
    if (index == none) return false;
    // While a notification runs nothing leaves the list, and asking again would find it again.
    const bool once = params.notifyDepth.load(std::memory_order_relaxed) != 0;
    for (; index != none; index = once ? none : parEx()->lookupContent(wanted)) removePath(index);
    return true;
}

ObserverPath& Observable::getPath(std::uint64_t index) {
    ObserverList& list = listOf(index);
    return list.get(index);
}

const ObserverPath& Observable::getPath(std::uint64_t index) const {
    return const_cast<Observable*>(this)->getPath(index);
}

std::uint64_t Observable::lookupPath(ObserverPath& path) const {
    return parEx()->lookupContent(path);
}

void Observable::rmAllObservers(bool) {
    const auto self = shared_from_this();
    for (ObserverList* list : {&params.preObservers, &params.postObservers}) {
        while (!list->empty()) {
            const std::uint64_t before = list->size();
            const ObserverPath& path = list->get(0);
            if (path.isActive()) path.observer->informDelete(*this);
            if (list->size() >= before) list->remove(0, 0);
        }
    }
    removeNotifyInfos(true);
}

// Copies and late resolving -----------------------------------------------------------------

bool Observable::updateObserverLists(bool forceSort) {
    bool ok = true;
    bool activated = false;
    const std::uint64_t count = params.preObservers.size() + params.postObservers.size();
    for (std::uint64_t i = count; i-- > 0;) {
        if (i >= params.preObservers.size() + params.postObservers.size()) continue;
        ObserverPath& path = getPath(i);
        if (path.isGone()) continue;
        if (!path.isResolved() && !path.lookupObserver()) {
            ok = false;
            continue;
        }
        if (!path.isActive() && path.activate()) activated = true;
    }
    if (activated || forceSort) {
        params.preObservers.sort();
        params.postObservers.sort();
    }
    return ok;
}

int Observable::copyFrom(const Observable& source) {
    if (source.params.empty()) return 1;  // as for most attributes: no scope, nothing to sort
    const PreserveObserverRelation scope;
    const std::uint64_t numPre = source.params.preObservers.size();
    const std::uint64_t count = numPre + source.params.postObservers.size();
    for (std::uint64_t i = 0; i < count; ++i) {
        const ObserverPath& path = source.getPath(i);
        if (path.getPriority() <= 0 || path.isTemporary() || !path.getAction()) continue;
        if (!path.getPath()) continue;
        auto clone = std::make_unique<ObserverPath>(ObserverPath::Owner{*this}, path);
        if (i < numPre) {
            addPreObserver(std::move(clone), false);
        } else {
            addObserver(std::move(clone), false);
        }
    }
    params.preObservers.sort();
    params.postObservers.sort();
    return 1;
}

std::uint64_t Observable::exchangePtr(ObserverRelationTableObserver& table) {
    std::uint64_t numExchanged = 0;
    const std::uint64_t count = params.preObservers.size() + params.postObservers.size();
    for (std::uint64_t i = count; i-- > 0;) {
        ObserverPath& path = getPath(i);
        if (path.isActive() || !path.isResolved()) continue;
        const auto old = path.getObserver();
        if (!old) continue;
        const auto copy = table.lookup(&old->get());
        if (!copy) continue;
        path.setObserver(*copy, false);  // the old one was never told of this relation
        ++numExchanged;
    }
    return numExchanged;
}

}  // namespace QOR::AttributeContainer
