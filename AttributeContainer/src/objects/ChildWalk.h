// A walk over the children of one object while they may come and go.
#pragma once

#include <AttributeContainer/ChildList.h>

#include <cstdint>
#include <iterator>
#include <memory>

namespace QOR::AttributeContainer {

/// Gives the children by their indices, up to the number that there was at first. What is added
/// meanwhile is not seen; a removal moves the children behind it forward by one.
///
/// Costs one step a child, but for the first one behind each removal, which is sought from the
/// beginning.
class ChildWalk {
public:
    /// The list must outlive the walk.
    explicit ChildWalk(const ChildList& list)
        : list(list),
          number(list.getNumChildren()),
          place(list.begin()),
          numRemoved(list.numRemoved) {}

    /// \return false when the walk is over. A `child` that has gone meanwhile is an empty pointer.
    bool next(std::shared_ptr<Object>& child) {
        if (index == number) return false;
        if (numRemoved != list.numRemoved) findPlace();
        child = place != list.end() ? *place++ : nullptr;
        ++index;
        return true;
    }

private:
    void findPlace() {
        numRemoved = list.numRemoved;
        const bool isThere = index < list.getNumChildren();
        place = isThere ? std::next(list.begin(), static_cast<std::ptrdiff_t>(index)) : list.end();
    }

    const ChildList& list;
    const std::uint64_t number;
    std::uint64_t index = 0;
    ChildList::Children::const_iterator place;
    std::uint64_t numRemoved;
};

}  // namespace QOR::AttributeContainer
