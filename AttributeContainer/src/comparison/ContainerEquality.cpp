// The flat comparison of two containers, token by token.
#include <AttributeContainer/kVAttrContainer.h>

namespace QOR::AttributeContainer {

AttrContainer::CompareSelectTokens::~CompareSelectTokens() = default;

namespace {
bool isSelected(const AttrContainer::CompareSelectTokens* select, std::uint64_t token) {
    if (!select) return true;
    return (select->includesAll() || select->includes(token)) && !select->excludes(token);
}

bool isSameAt(std::uint64_t token, const AttrContainer& first, const AttrContainer& second) {
    const auto a = first.getAttribute(token).lock();
    const auto b = second.getAttribute(token).lock();
    return a && b && !(*a != *b);  // by the operator that a class may have of its own
}
}  // namespace

bool AttrContainer::isEqualTo(const AttrContainer& other, std::vector<std::uint64_t>* differing,
                              const CompareSelectTokens* select) const {
    if (&other == this) return true;
    const std::uint64_t numAttributes = getNumAttributes();
    if (!differing && !select && other.getNumAttributes() != numAttributes) return false;
    bool isEqual = true;
    for (std::uint64_t token = 0; token < numAttributes; ++token) {
        if (!isSelected(select, token) || isSameAt(token, *this, other)) continue;
        if (!differing) return false;
        isEqual = false;
        differing->push_back(token);
    }
    return isEqual;
}

}  // namespace QOR::AttributeContainer
