// The ordered relations of one observable, before or after a change.
#pragma once

#include <AttributeContainer/ObserverPath.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace QOR::AttributeContainer {

/// Relations in the order of `ObserverPath::comp`, so that the strongest is the last one.
///
/// A notification walks the list from its back. Relations are held by pointer: sorting moves
/// pointers, and the address of a relation lasts as long as it is in the list.
class QOR_API ObserverList {
public:
    std::uint64_t size() const { return paths ? paths->size() : 0; }
    bool empty() const { return !paths || paths->empty(); }
    /// \throws std::out_of_range past the end.
    ObserverPath& get(std::uint64_t index);
    const ObserverPath& get(std::uint64_t index) const;

    /// Adds a relation at the end. \return its address; null, with nothing added, for an empty one.
    ObserverPath* add(std::unique_ptr<ObserverPath> path);
    /// Inserts behind `index`; all ones means in front of all, past the end means at the end.
    ObserverPath* addAfter(std::uint64_t index, std::unique_ptr<ObserverPath> path);
    /// Drops the relations that have no action or whose observer has gone; the argument has no
    /// effect.
    void compress(bool);
    /// The greatest index of an equal relation; all ones when there is none.
    std::uint64_t lookup(const ObserverPath& path) const;
    std::uint64_t lookupContent(ObserverPath& path) const;
    /// Takes a relation out and returns it. While a notification runs (`depth` is not 0) walks hold
    /// indices, so the relation stays in the list with the action "Notify" instead.
    /// \return an empty pointer when the relation stayed.
    /// \throws std::out_of_range past the end while a notification runs.
    std::unique_ptr<ObserverPath> remove(std::uint64_t index, std::uint64_t depth);
    /// \return false, with nothing removed, when an equal relation is in the list; true when there
    /// is none. The sense is inverted; stored callers rely on it.
    bool removeElement(const ObserverPath& path, std::uint64_t depth);
    /// Orders the list; relations that compare equal keep no defined order.
    void sort();
    /// The index behind which `path` belongs: behind those of equal priority.
    std::uint64_t findInsertionPoint(const ObserverPath& path) const;

private:
    friend class Observable;  // walks the list while observers change it

    using Paths = std::vector<std::unique_ptr<ObserverPath>>;

    Paths& made();
    ObserverPath& at(std::uint64_t index) const { return *(*paths)[index]; }

    // Made with the first relation: most lists never have one, and cost one word each.
    std::unique_ptr<Paths> paths;
};

}  // namespace QOR::AttributeContainer
