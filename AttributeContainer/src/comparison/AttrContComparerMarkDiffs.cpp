#include <AttributeContainer/AttrContComparerMarkDiffs.h>

namespace QOR::AttributeContainer {

AttrContComparerMarkDiffs::AttrContComparerMarkDiffs(int markingMode)
    : AttrContComparer(allCategories, 0), markingMode(markingMode) {}

std::uint64_t AttrContComparerMarkDiffs::handleAttributes(const Attribute* first,
                                                          const Attribute* second) const {
    // No attribute is a constant, and a mark is no part of the value: the walk promises no more
    // than that the trees keep their shape and values.
    const auto mark = [this](const Attribute* attribute, int bit) {
        if (attribute && (markingMode & bit) != 0)
            const_cast<Attribute*>(attribute)->setMarked(true);
    };
    mark(first, markFirst);
    mark(second, markSecond);
    return AttrContComparer::handleAttributes(first, second);
}

}  // namespace QOR::AttributeContainer
