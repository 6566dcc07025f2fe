#include "observation/NotifyInfoTable.h"

#include <algorithm>
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

const NotifyInfoTable::Entries* NotifyInfoTable::placeAmongFurther(
    const Observable& observable) const {
    const auto place = further.find(&observable);
    return place != further.end() ? &place->second : &recent;
}

std::shared_ptr<ObserverInfo> NotifyInfoTable::take(const Observable& observable,
                                                    const std::type_index& type) {
    Entries& entries = *entriesOf(observable);
    const std::size_t found = findEntry(entries, observable, type);
    return found != none ? takeOut(entries, found) : nullptr;
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
