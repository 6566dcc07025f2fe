// The side information of the changes that run on this thread.
#pragma once

#include <AttributeContainer/ObserverInfo.h>

#include <cstddef>
#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

namespace QOR::AttributeContainer {

class Observable;

/// All notify infos of one thread, by observable. Not kept in the observables, since only those
/// with a running change have any.
class NotifyInfoTable {
public:
    struct Entry {
        std::type_index type;
        std::shared_ptr<ObserverInfo> info;
    };
    using Infos = std::vector<Entry>;

    /// The table of this thread; null until the first use, and again when the thread has ended it.
    static NotifyInfoTable* current();
    /// The table of this thread, made at first use; null only when the thread is ending.
    static NotifyInfoTable* make();

    /// The infos of an observable; null when it has no entry.
    Infos* find(const Observable& observable);
    /// Stores an info in the place of an earlier one of its type.
    void store(const Observable& observable, std::shared_ptr<ObserverInfo> info);
    /// Takes out the info of that type. \return an empty pointer when there is none.
    std::shared_ptr<ObserverInfo> take(const Observable& observable, const std::type_index& type,
                                       bool dropEmpty);
    /// Takes out all infos, or those that expire. \return how many.
    std::size_t drop(const Observable& observable, bool all);

private:
    using Table = std::unordered_map<const Observable*, Infos>;

    void erase(Table::iterator place);

    Table table;
    std::vector<Table::node_type> spare;  // emptied entries, so that a change allocates no new one
};

}  // namespace QOR::AttributeContainer
