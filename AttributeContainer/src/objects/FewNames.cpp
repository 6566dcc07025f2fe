#include "objects/FewNames.h"

#include <AttributeContainer/Object.h>

#include <QOR/Text.h>

#include <algorithm>
#include <bit>

namespace QOR::AttributeContainer {

namespace {
constexpr std::size_t keptLength = 15;

unsigned char folded(char character) {
    const bool isUpper = character >= 'A' && character <= 'Z';
    return static_cast<unsigned char>(isUpper ? character - 'A' + 'a' : character);
}

// Whether the class of a child leaves `getName` as containers have it. What the two names are at
// the moment does not tell: one that is made up can be equal by chance.
bool goesByStoredName([[maybe_unused]] const Object& child) {
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpmf-conversions"
#pragma GCC diagnostic ignored "-Wpedantic"
    using Function = std::string (*)(const AttrContainer*);
    const AttrContainer& container = child;
    const auto stored = reinterpret_cast<Function>(&AttrContainer::getName);
    return reinterpret_cast<Function>(container.*(&AttrContainer::getName)) == stored;
#pragma GCC diagnostic pop
#else
    return false;  // no way to ask
#endif
}
}  // namespace

std::unique_ptr<FewNames> FewNames::make(const ChildList& list) {
    std::unique_ptr<FewNames> names(new FewNames);
    for (const auto& child : list) {
        if (!child) continue;
        if (!goesByStoredName(*child)) return nullptr;
        names->keys[names->size] = keyOf(child->name());
        names->children[names->size++] = &child;
    }
    return names;
}

FewNames::Key FewNames::keyOf(const std::string& name) {
    std::array<unsigned char, sizeof(Key)> bytes{};
    const std::size_t length = std::min(name.size(), keptLength);
    for (std::size_t i = 0; i < length; ++i) bytes[i] = folded(name[i]);
    bytes[keptLength] = static_cast<unsigned char>(std::min(name.size(), keptLength + 1));
    return std::bit_cast<Key>(bytes);
}

const std::shared_ptr<Object>* FewNames::find(const std::string& name) const {
    const Key wanted = keyOf(name);
    const bool isWhole = name.size() <= keptLength;
    for (std::uint64_t i = 0; i < size; ++i) {
        if (keys[i] != wanted) continue;
        if (isWhole || compareIgnoreCase((*children[i])->name(), name) == 0) return children[i];
    }
    return nullptr;
}

}  // namespace QOR::AttributeContainer
