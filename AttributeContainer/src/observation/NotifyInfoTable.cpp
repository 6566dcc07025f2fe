#include "observation/NotifyInfoTable.h"

#include "observation/ThreadWord.h"

#include <algorithm>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
QOR_THREAD_WORD NotifyInfoTable* tableOfThread = nullptr;
QOR_THREAD_WORD bool threadEnds = false;
constexpr std::size_t maxSpare = 16;

// Ends the table with the thread; objects that are destroyed later find none.
struct TableOwner {
    std::shared_ptr<NotifyInfoTable> table = std::make_shared<NotifyInfoTable>();
    TableOwner() { tableOfThread = table.get(); }
    ~TableOwner() {
        tableOfThread = nullptr;
        threadEnds = true;
    }
};
}  // namespace

NotifyInfoTable* NotifyInfoTable::current() { return tableOfThread; }

NotifyInfoTable* NotifyInfoTable::make() {
    if (!tableOfThread && !threadEnds) {
        thread_local TableOwner owner;
    }
    return tableOfThread;
}

NotifyInfoTable::Infos* NotifyInfoTable::find(const Observable& observable) {
    const auto found = table.find(&observable);
    return found != table.end() ? &found->second : nullptr;
}

void NotifyInfoTable::store(const Observable& observable, std::shared_ptr<ObserverInfo> info) {
    const ObserverInfo& content = *info;
    const std::type_index type{typeid(content)};
    auto place = table.find(&observable);
    if (place == table.end()) {
        if (spare.empty()) {
            place = table.try_emplace(&observable).first;
        } else {
            auto node = std::move(spare.back());
            spare.pop_back();
            node.key() = &observable;
            place = table.insert(std::move(node)).position;
        }
    }
    Infos& infos = place->second;
    const auto same = std::ranges::find(infos, type, &Entry::type);
    if (same == infos.end()) {
        infos.push_back({type, std::move(info)});
    } else {
        std::swap(same->info, info);  // the former one ends behind the last use of the entry
    }
}

std::shared_ptr<ObserverInfo> NotifyInfoTable::take(const Observable& observable,
                                                    const std::type_index& type, bool dropEmpty) {
    const auto place = table.find(&observable);
    if (place == table.end()) return nullptr;
    Infos& infos = place->second;
    const auto found = std::ranges::find(infos, type, &Entry::type);
    std::shared_ptr<ObserverInfo> taken;
    if (found != infos.end()) {
        taken = std::move(found->info);
        infos.erase(found);
    }
    if (dropEmpty && infos.empty()) erase(place);
    return taken;
}

std::size_t NotifyInfoTable::drop(const Observable& observable, bool all) {
    const auto place = table.find(&observable);
    if (place == table.end()) return 0;
    Infos& infos = place->second;
    const auto leaves = [all](const Entry& entry) { return all || entry.info->willExpire(); };
    // What leaves ends behind the last use of the table, since its end may run foreign code. A
    // single info, the common case, needs no second list.
    if (infos.size() == 1 && leaves(infos.front())) {
        const std::shared_ptr<ObserverInfo> ended = std::move(infos.front().info);
        infos.clear();
        erase(place);
        return 1;
    }
    Infos leaving;
    for (Entry& entry : infos)
        if (leaves(entry)) leaving.push_back({entry.type, std::move(entry.info)});
    std::erase_if(infos, [](const Entry& entry) { return !entry.info; });
    if (infos.empty()) erase(place);
    return leaving.size();
}

void NotifyInfoTable::erase(Table::iterator place) {
    auto node = table.extract(place);
    if (spare.size() < maxSpare) spare.push_back(std::move(node));
}

}  // namespace QOR::AttributeContainer
