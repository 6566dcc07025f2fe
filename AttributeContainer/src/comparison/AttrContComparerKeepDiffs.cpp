#include <AttributeContainer/AttrContComparerKeepDiffs.h>

#include <algorithm>
#include <cstddef>

namespace QOR::AttributeContainer {

AttrContComparerKeepDiffs::AttrContComparerKeepDiffs() : AttrContComparer(allCategories, 0) {}

std::optional<std::string> AttrContComparerKeepDiffs::getMismatch(std::uint64_t index) const {
    if (index >= mismatches.size()) return std::nullopt;
    return mismatches[index];
}

void AttrContComparerKeepDiffs::reset() const {
    AttrContComparer::reset();
    currentPath.clear();
    mismatches.clear();
}

void AttrContComparerKeepDiffs::enterField(OptionalContainer field) const {
    AttrContComparer::enterField(field);
    if (field) currentPath += field->get().getName() + '/';
}

void AttrContComparerKeepDiffs::exitField(OptionalContainer field) const {
    AttrContComparer::exitField(field);
    if (!field) return;
    const std::size_t added = field->get().getName().size() + 1;
    currentPath.resize(currentPath.size() - std::min(added, currentPath.size()));
}

std::uint64_t AttrContComparerKeepDiffs::handleAttributes(const Attribute* first,
                                                          const Attribute* second) const {
    const Attribute* const named = first ? first : second;
    if (named) mismatches.push_back(currentPath + named->getName());
    return AttrContComparer::handleAttributes(first, second);
}

}  // namespace QOR::AttributeContainer
