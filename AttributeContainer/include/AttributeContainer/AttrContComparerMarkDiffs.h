// Marks the attributes in which two container trees differ.
#pragma once

#include <AttributeContainer/AttrContComparer.h>

namespace QOR::AttributeContainer {

/// A comparer that sets the mark of each attribute that is not exactly the same, also where a
/// tolerance keeps it from being counted. Marks that are set already stay, and nobody is told.
class QOR_API AttrContComparerMarkDiffs : public AttrContComparer {
public:
    static constexpr int markFirst = 1;   ///< marks the attribute of the first container
    static constexpr int markSecond = 2;  ///< marks that of the second one

    /// Compares all categories, exactly.
    /// \param markingMode whose attributes get the mark: the bits are or-ed.
    explicit AttrContComparerMarkDiffs(int markingMode);

    int getMarkingMode() const { return markingMode; }
    void setMarkingMode(int value) { markingMode = value; }

protected:
    std::uint64_t handleAttributes(const Attribute* first, const Attribute* second) const override;

private:
    int markingMode;
};

}  // namespace QOR::AttributeContainer
