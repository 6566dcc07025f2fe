// The side information of the changes that run on this thread.
#pragma once

#include <AttributeContainer/ObserverInfo.h>

#include <AttributeContainer/ThreadWord.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <typeindex>
#include <unordered_map>
#include <utility>
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
    NotifyInfoTable() { recent.reserve(maxRecent); }
    NotifyInfoTable(const NotifyInfoTable&) = delete;
    NotifyInfoTable& operator=(const NotifyInfoTable&) = delete;
    ~NotifyInfoTable() { ::operator delete(spare); }

    /// The table of this thread; null until the first use, and again when the thread has ended it.
    static NotifyInfoTable* current() { return ofThread; }
    /// The table of this thread, made at first use; null only when the thread is ending.
    static NotifyInfoTable* make() { return ofThread ? ofThread : makeAnew(); }

    /// The info of that type, where it lies; null when there is none. Lasts until the next change
    /// of the table.
    const std::shared_ptr<ObserverInfo>* find(const Observable& observable,
                                              const std::type_index& type) const {
        const Entries& entries = *entriesOf(observable);
        const std::size_t found = findEntry(entries, observable, type);
        return found != none ? &entries[found].info : nullptr;
    }
    /// Whether nothing hangs on the observable but an info of that type, named as its own
    /// `type_info` names it. Quick; may be false where another module names the type.
    bool hasOnly(const Observable& observable, const char* typeName) const {
        for (const Entry& entry : *entriesOf(observable))
            if (entry.observable == &observable && entry.type.name() != typeName) return false;
        return true;
    }
    /// Stores an info of that type in the place of an earlier one, and takes it over.
    void store(const Observable& observable, const std::type_index& type,
               std::shared_ptr<ObserverInfo>&& info);
    /// Takes out the info of that type. \return an empty pointer when there is none.
    std::shared_ptr<ObserverInfo> take(const Observable& observable, const std::type_index& type);
    /// Takes out all infos, or those that expire. \return how many.
    std::size_t drop(const Observable& observable, bool all);
    /// A map of all infos of an observable; empty pointer when there are none.
    std::shared_ptr<ObserverInfoMap> copy(const Observable& observable) const;

    /// A block of memory of `spareSize` bytes: the one in hand, or a new one.
    static void* takeSpare() {
        NotifyInfoTable* const table = current();
        void* const block = table ? std::exchange(table->spare, nullptr) : nullptr;
        return block ? block : ::operator new(spareSize);
    }
    /// Takes such a block back. Kept for the next one, since changes come one behind the other.
    static void giveSpare(void* block) {
        NotifyInfoTable* const table = current();
        ::operator delete(table ? std::exchange(table->spare, block) : block);
    }
    static constexpr std::size_t spareSize = 64;

private:
    struct Entry {
        Entry(const Observable& of, const std::type_index& type,
              std::shared_ptr<ObserverInfo>&& info)
            : observable(&of), type(type), info(std::move(info)) {}

        const Observable* observable;
        std::type_index type;
        std::shared_ptr<ObserverInfo> info;
    };
    using Entries = std::vector<Entry>;
    struct Owner;
    static constexpr std::size_t maxRecent = 16;
    static constexpr std::size_t none = ~std::size_t{0};

    /// The entries among which those of an observable are, all of them.
    const Entries* entriesOf(const Observable& observable) const {
        return further.empty() ? &recent : placeAmongFurther(observable);
    }
    Entries* entriesOf(const Observable& observable) {
        return const_cast<Entries*>(std::as_const(*this).entriesOf(observable));
    }
    const Entries* placeAmongFurther(const Observable& observable) const;
    Entries& placeFor(const Observable& observable);
    /// The entry of an observable and a type, looked for from the last one down.
    static std::size_t findEntry(const Entries& entries, const Observable& observable,
                                 const std::type_index& type) {
        for (std::size_t i = entries.size(); i-- > 0;)
            if (entries[i].observable == &observable && entries[i].type == type) return i;
        return none;
    }
    std::shared_ptr<ObserverInfo> takeOut(Entries& entries, std::size_t index);

    static NotifyInfoTable* makeAnew();

    QOR_THREAD_WORD static inline NotifyInfoTable* ofThread = nullptr;

    Entries recent;
    std::unordered_map<const Observable*, Entries> further;
    void* spare = nullptr;
};

// In place for the one file that runs changes -------------------------------------------------

// Where one info of an observable is, the next one goes too.
inline NotifyInfoTable::Entries& NotifyInfoTable::placeFor(const Observable& observable) {
    Entries& entries = *entriesOf(observable);
    if (&entries != &recent || recent.size() < maxRecent) return entries;
    const bool isKnown = std::ranges::find(recent, &observable, &Entry::observable) != recent.end();
    return isKnown ? recent : further[&observable];
}

inline void NotifyInfoTable::store(const Observable& observable, const std::type_index& type,
                                   std::shared_ptr<ObserverInfo>&& info) {
    Entries& entries = placeFor(observable);
    const std::size_t same = findEntry(entries, observable, type);
    if (same == none) {
        entries.emplace_back(observable, type, std::move(info));
        return;
    }
    // The former one ends behind the last use of the entry.
    const auto former = std::exchange(entries[same].info, std::move(info));
}

inline std::shared_ptr<ObserverInfo> NotifyInfoTable::takeOut(Entries& entries, std::size_t index) {
    const Observable& observable = *entries[index].observable;
    auto taken = std::move(entries[index].info);
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(index));
    if (&entries != &recent && entries.empty()) further.erase(&observable);
    return taken;
}

inline std::size_t NotifyInfoTable::drop(const Observable& observable, bool all) {
    const auto leaves = [&](const Entry& entry) {
        return entry.observable == &observable && (all || entry.info->willExpire());
    };
    if (further.empty() && recent.size() == 1) {  // as for a change that runs by itself
        if (!leaves(recent.back())) return 0;
        const auto ended = std::move(recent.back().info);
        recent.pop_back();
        return 1;
    }
    const Entries& entries = *entriesOf(observable);
    const auto numLeaving =
        static_cast<std::size_t>(std::count_if(entries.begin(), entries.end(), leaves));
    // One by one, and each looked for anew: the end of an info may run foreign code, and that may
    // change the table.
    for (std::size_t i = 0; i < numLeaving; ++i) {
        Entries& left = *entriesOf(observable);
        const auto next = std::ranges::find_if(left, leaves);
        if (next == left.end()) return i;
        const auto ended = takeOut(left, static_cast<std::size_t>(next - left.begin()));
    }
    return numLeaving;
}

}  // namespace QOR::AttributeContainer
