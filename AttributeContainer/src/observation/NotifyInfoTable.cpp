#include "observation/NotifyInfoTable.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
QOR_THREAD_WORD bool threadEnds = false;
}  // namespace

// Ends the table with the thread; objects that are destroyed later find none.
struct NotifyInfoTable::Owner {
    std::shared_ptr<NotifyInfoTable> table = std::make_shared<NotifyInfoTable>();
    Owner() { ofThread = table.get(); }
    ~Owner() {
        ofThread = nullptr;
        threadEnds = true;
    }
};

NotifyInfoTable* NotifyInfoTable::makeAnew() {
    if (!threadEnds) {
        thread_local Owner owner;
    }
    return ofThread;
}

namespace {
// The entry of an observable and a type, from the last one down; the end when there is none.
template <class Entries>
auto findEntry(Entries& entries, const Observable& observable, const std::type_index& type) {
    for (auto entry = entries.end(); entry != entries.begin();) {
        --entry;
        if (entry->observable == &observable && entry->type == type) return entry;
    }
    return entries.end();
}
}  // namespace

const NotifyInfoTable::Entries* NotifyInfoTable::entriesOf(const Observable& observable) const {
    if (further.empty()) return &recent;
    const auto place = further.find(&observable);
    return place != further.end() ? &place->second : &recent;
}

NotifyInfoTable::Entries* NotifyInfoTable::entriesOf(const Observable& observable) {
    return const_cast<Entries*>(std::as_const(*this).entriesOf(observable));
}

// Where one info of an observable is, the next one goes too.
NotifyInfoTable::Entries& NotifyInfoTable::placeFor(const Observable& observable) {
    Entries& entries = *entriesOf(observable);
    if (&entries != &recent || recent.size() < maxRecent) return entries;
    const bool isKnown = std::ranges::find(recent, &observable, &Entry::observable) != recent.end();
    return isKnown ? recent : further[&observable];
}

void NotifyInfoTable::forgetEmpty(const Observable& observable, const Entries& entries) {
    if (&entries != &recent && entries.empty()) further.erase(&observable);
}

const std::shared_ptr<ObserverInfo>* NotifyInfoTable::find(const Observable& observable,
                                                           const std::type_index& type) const {
    const Entries& entries = *entriesOf(observable);
    const auto found = findEntry(entries, observable, type);
    return found != entries.end() ? &found->info : nullptr;
}

bool NotifyInfoTable::hasOnly(const Observable& observable, const char* typeName) const {
    return std::ranges::all_of(*entriesOf(observable), [&](const Entry& entry) {
        return entry.observable != &observable || entry.type.name() == typeName;
    });
}

void NotifyInfoTable::store(const Observable& observable, std::shared_ptr<ObserverInfo> info) {
    const ObserverInfo& content = *info;
    const std::type_index type{typeid(content)};
    Entries& entries = placeFor(observable);
    const auto same = findEntry(entries, observable, type);
    if (same == entries.end()) {
        entries.push_back({&observable, type, std::move(info)});
    } else {
        std::swap(same->info, info);  // the former one ends behind the last use of the entry
    }
}

std::shared_ptr<ObserverInfo> NotifyInfoTable::take(const Observable& observable,
                                                    const std::type_index& type) {
    Entries& entries = *entriesOf(observable);
    const auto found = findEntry(entries, observable, type);
    if (found == entries.end()) return nullptr;
    auto taken = std::move(found->info);
    entries.erase(found);
    forgetEmpty(observable, entries);
    return taken;
}

std::size_t NotifyInfoTable::drop(const Observable& observable, bool all) {
    Entries& entries = *entriesOf(observable);
    const auto leaves = [&](const Entry& entry) {
        return entry.observable == &observable && (all || entry.info->willExpire());
    };
    // What leaves ends behind the last use of the table, since its end may run foreign code. One
    // info, the common case, needs no second list.
    const auto first = std::ranges::find_if(entries, leaves);
    if (first == entries.end()) return 0;
    const std::shared_ptr<ObserverInfo> ended = std::move(first->info);
    auto next = entries.erase(first);
    next = std::find_if(next, entries.end(), leaves);
    Entries others;
    if (next != entries.end()) {
        const auto stay = std::stable_partition(next, entries.end(), std::not_fn(leaves));
        others.assign(std::make_move_iterator(stay), std::make_move_iterator(entries.end()));
        entries.erase(stay, entries.end());
    }
    forgetEmpty(observable, entries);
    return 1 + others.size();
}

std::shared_ptr<ObserverInfoMap> NotifyInfoTable::copy(const Observable& observable) const {
    std::shared_ptr<ObserverInfoMap> infos;
    for (const Entry& entry : *entriesOf(observable)) {
        if (entry.observable != &observable) continue;
        if (!infos) infos = std::make_shared<ObserverInfoMap>();
        infos->emplace(entry.type, entry.info);
    }
    return infos;
}

}  // namespace QOR::AttributeContainer
