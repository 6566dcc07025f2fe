// The walk of a notification over the observers, and the side information that goes with it.
#include <AttributeContainer/Observable.h>
#include <AttributeContainer/Observer.h>

#include "observation/NotifyInfoTable.h"
#include "observation/WalkFrame.h"

#include <algorithm>

namespace QOR::AttributeContainer {

void Observable::preTouch(const std::shared_ptr<ObservingObject>& initiator,
                          std::vector<NotificationResult>* results) {
    notifySequence(initiator, &params.preObservers, results);
}

void Observable::touch(const std::shared_ptr<ObservingObject>& initiator,
                       std::vector<NotificationResult>* results) {
    notifySequence(initiator, &params.postObservers, results);
}

// For the walk alone, and part of it: it runs for every change.
inline Action::ExecReturn ObserverPath::execute(Observable& observable, Observer& target,
                                                ObservingObject* initiator) const {
    Action::Initiator own;  // the observer may change it, for itself alone
    if (initiator) own = *initiator;
    if (!hasFlag(tellsBit | asksBit)) [[unlikely]]
        return action ? action->get().execute(observable, target, own) : Action::ExecUnchanged;
    if (initiator == static_cast<const ObservingObject*>(&target)) return Action::ExecUnchanged;
    return hasFlag(tellsBit) ? target.changedNotify(observable, own)
                             : target.toChangeNotify(observable, own);
}

Action::ExecReturn Observable::executeForRecord(const ObserverPath& path, Observer& observer,
                                                ObservingObject* initiator,
                                                std::vector<NotificationResult>& results) {
    if (!path.action) return Action::ExecUnchanged;
    // The observer may end itself in its action; its record must still be made.
    const auto self = observer.weak_from_this().lock();
    const auto result = path.execute(*this, observer, initiator);
    if (!self) throw std::bad_weak_ptr{};
    results.push_back({self, result});
    return result;
}

void Observable::notifySequence(const Initiator& initiator, ObserverList* list,
                                std::vector<NotificationResult>* results) {
    if ((params.flags & ParamsEx::notifyEnabled) == 0) return;
    // A plain counter: one tree is used by one thread, so no locked operation is needed.
    auto& depth = params.notifyDepth;
    if (!list->empty()) {
        const WalkFrame frame(*this);
        depth.store(depth.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        ObservingObject* const given = initiator.get();
        // Observers may change the list, and end this object.
        for (std::uint64_t index = list->size(); index > 0; index = std::min(index, list->size())) {
            const ObserverPath& path = list->at(--index);
            Observer* const observer = path.liveObserver();
            if (!observer) [[unlikely]] {
                if (path.isGone()) continue;  // one end does not silence those below
                break;                        // active relations come last, so none is left
            }
            const auto result = results ? executeForRecord(path, *observer, given, *results)
                                        : path.execute(*this, *observer, given);
            if (frame.isGone()) return;
            if (result == Action::ExecStopNotify) break;
        }
        depth.store(depth.load(std::memory_order_relaxed) - 1, std::memory_order_relaxed);
    }
    constexpr auto pending =
        ParamsEx::lookupPending | ParamsEx::postCleanupPending | ParamsEx::preCleanupPending;
    if (depth.load(std::memory_order_relaxed) == 0 && (params.flags & pending) != 0)
        finishWalk(list);
}

void Observable::finishWalk(const ObserverList* list) {
    if (list == &params.postObservers) {
        if ((params.flags & ParamsEx::lookupPending) != 0) lookupObject();
        if ((params.flags & ParamsEx::postCleanupPending) != 0) {
            params.setFlag(ParamsEx::postCleanupPending, false);
            params.postObservers.compress(true);
            removeNotifyInfos(false);
        }
    } else if ((params.flags & ParamsEx::preCleanupPending) != 0) {
        params.setFlag(ParamsEx::preCleanupPending, false);
        params.preObservers.compress(true);
    }
}

bool Observable::askFirst(const std::type_info& announced, std::shared_ptr<ObserverInfo>&& info,
                          const Initiator& initiator, std::vector<NotificationResult>* results) {
    const WalkFrame frame(*this);
    params.setFlag(ParamsEx::postCleanupPending, true);
    if (NotifyInfoTable* const table = NotifyInfoTable::make())
        table->store(*this, announced, std::move(info));
    preTouch(initiator, results);
    if (frame.isGone()) return false;  // an observer ended this object: nothing is left to change
    const NotifyInfoTable* const table = NotifyInfoTable::current();
    if (!table || table->hasOnly(*this, announced.name())) return true;  // as nearly always
    if (!hasNotifyInfo(typeid(InfoFailed))) return true;
    removeNotifyInfos(false);
    return false;
}

// Notify infos --------------------------------------------------------------------------------

bool Observable::addNotifyInfo(std::shared_ptr<ObserverInfo> info) {
    if (!info) return false;
    params.setFlag(ParamsEx::postCleanupPending, true);
    NotifyInfoTable* const table = NotifyInfoTable::make();
    if (!table) return false;
    const ObserverInfo& content = *info;
    table->store(*this, typeid(content), std::move(info));
    return true;
}

std::shared_ptr<ObserverInfo> Observable::lookupNotifyInfo(const std::type_index& type) {
    const NotifyInfoTable* const table = NotifyInfoTable::current();
    const auto* const found = table ? table->find(*this, type) : nullptr;
    return found ? *found : nullptr;
}

bool Observable::hasNotifyInfo(const std::type_index& type) const {
    const NotifyInfoTable* const table = NotifyInfoTable::current();
    return table && table->find(*this, type);
}

std::shared_ptr<const ObserverInfo> Observable::lookupNotifyInfo(
    const std::type_index& type) const {
    return const_cast<Observable*>(this)->lookupNotifyInfo(type);
}

std::shared_ptr<ObserverInfo> Observable::removeNotifyInfo(const std::type_index& type, bool) {
    NotifyInfoTable* const table = NotifyInfoTable::current();
    return table ? table->take(*this, type) : nullptr;
}

bool Observable::removeNotifyInfo(const std::shared_ptr<const ObserverInfo>& info, bool dropEmpty) {
    if (!info) return false;
    const ObserverInfo& content = *info;
    const std::type_index type{typeid(content)};
    if (lookupNotifyInfo(type) != info) return false;
    removeNotifyInfo(type, dropEmpty);
    return true;
}

int Observable::removeNotifyInfos(bool all) {
    NotifyInfoTable* const table = NotifyInfoTable::current();
    return table ? static_cast<int>(table->drop(*this, all)) : 0;
}

void Observable::removeNotifyInfos(std::shared_ptr<const ObserverInfoMap>& infos) {
    if (!infos) return;
    for (const auto& [type, info] : *infos) {
        if (info && lookupNotifyInfo(type) == info) removeNotifyInfo(type, true);
    }
}

std::shared_ptr<ObserverInfoMap> Observable::copyNotifyInfos() const {
    const NotifyInfoTable* const table = NotifyInfoTable::current();
    return table ? table->copy(*this) : nullptr;
}

void Observable::setNotifyInfos(std::shared_ptr<ObserverInfoMap>& infos) {
    if (!infos) return;
    for (const auto& [type, info] : *infos) addNotifyInfo(info);
}

}  // namespace QOR::AttributeContainer
