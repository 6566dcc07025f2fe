// The side information of the changes that run on this thread.
#pragma once

#include <AttributeContainer/ObserverInfo.h>

#include <AttributeContainer/ThreadWord.h>

#include <cstddef>
#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

namespace QOR::AttributeContainer {

class Observable;

/// All notify infos of one thread, by observable. Not kept in the observables, since only those
/// with a running change have any.
///
/// Few changes run at a time, so the infos of a few observables stand in one list that is searched
/// from its end. Where infos stay beyond their change and fill it, further observables go to a map.
class NotifyInfoTable {
public:
    /// The table of this thread; null until the first use, and again when the thread has ended it.
    static NotifyInfoTable* current() { return ofThread; }
    /// The table of this thread, made at first use; null only when the thread is ending.
    static NotifyInfoTable* make() { return ofThread ? ofThread : makeAnew(); }

    /// The info of that type, where it lies; null when there is none. Lasts until the next change
    /// of the table.
    const std::shared_ptr<ObserverInfo>* find(const Observable& observable,
                                              const std::type_index& type) const;
    /// Whether nothing hangs on the observable but an info of that type, named as its own
    /// `type_info` names it. Quick; may be false where another module names the type.
    bool hasOnly(const Observable& observable, const char* typeName) const;
    /// Stores an info in the place of an earlier one of its type.
    void store(const Observable& observable, std::shared_ptr<ObserverInfo> info);
    /// Takes out the info of that type. \return an empty pointer when there is none.
    std::shared_ptr<ObserverInfo> take(const Observable& observable, const std::type_index& type);
    /// Takes out all infos, or those that expire. \return how many.
    std::size_t drop(const Observable& observable, bool all);
    /// A map of all infos of an observable; empty pointer when there are none.
    std::shared_ptr<ObserverInfoMap> copy(const Observable& observable) const;

private:
    struct Entry {
        const Observable* observable;
        std::type_index type;
        std::shared_ptr<ObserverInfo> info;
    };
    using Entries = std::vector<Entry>;
    struct Owner;
    static constexpr std::size_t maxRecent = 16;

    /// The entries among which those of an observable are, all of them.
    const Entries* entriesOf(const Observable& observable) const;
    Entries* entriesOf(const Observable& observable);
    Entries& placeFor(const Observable& observable);
    void forgetEmpty(const Observable& observable, const Entries& entries);

    static NotifyInfoTable* makeAnew();

    QOR_THREAD_WORD static inline NotifyInfoTable* ofThread = nullptr;

    Entries recent;
    std::unordered_map<const Observable*, Entries> further;
};

}  // namespace QOR::AttributeContainer
