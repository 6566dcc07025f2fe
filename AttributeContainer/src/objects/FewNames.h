// The names of few children, side by side in memory.
#pragma once

#include <AttributeContainer/ChildList.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace QOR::AttributeContainer {

/// What a search through a short list looks at in place of the children, each of which lies
/// somewhere else in memory. Good until the list or a child's name changes.
class QOR_API FewNames {
public:
    static constexpr std::size_t maxSize = 15;

    /// The names of a whole list, of `maxSize` children at the most. Not where names are pending.
    /// \return an empty pointer if a class of the children has a `getName` of its own, or may have
    /// one: nobody would tell of a change of such a name.
    static std::unique_ptr<FewNames> make(const ChildList& list);

    /// The oldest child of that name, whatever its case; null for none.
    const std::shared_ptr<Object>* find(const std::string& name) const;

private:
    // The first characters, folded, filled up with zeros; last the length, or what is above all.
    struct Key {
        std::uint64_t front = 0;
        std::uint64_t back = 0;

        bool operator==(const Key&) const = default;
    };

    FewNames() = default;

    static Key keyOf(const std::string& name);

    std::uint64_t size = 0;
    std::array<Key, maxSize> keys;
    std::array<const std::shared_ptr<Object>*, maxSize> children;
};

}  // namespace QOR::AttributeContainer
