// Finds the children of one object by name and by identity.
#pragma once

#include <AttributeContainer/ChildList.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace QOR::AttributeContainer {

/// An index over the children of one list. Whoever changes the list or a child's name tells it.
class QOR_API ChildIndex {
public:
    using Place = ChildList::Children::const_iterator;

    /// An index over a whole list.
    /// \return an empty pointer if a child does not go by its name attribute: nobody would tell of
    /// a change of its name.
    static std::unique_ptr<ChildIndex> make(const ChildList& list);

    /// Adds a child behind all others. \return false as `make` fails; then nothing is added.
    bool add(Place place);
    void remove(const Object& child);
    /// Takes note of a child's present name. \return false as `make` fails.
    bool rename(const Object& child);
    /// The name of which was taken note last; none for what is no child.
    std::optional<std::string> getName(const Object& child) const;

    /// The oldest child of that name, whatever its case.
    std::optional<Place> find(const std::string& name) const;
    std::optional<Place> find(const Object& child) const;

private:
    // The number counts up from child to child, so that the oldest of a name comes first. A tree,
    // because names come from streams, and nobody can choose names that slow it down.
    struct Entry {
        Place place;
        std::string name;
    };
    using ByName = std::map<std::pair<std::string, std::uint64_t>, Entry>;

    ByName byName;
    std::unordered_map<const Object*, ByName::iterator> byChild;
    std::uint64_t numAdded = 0;
};

}  // namespace QOR::AttributeContainer
