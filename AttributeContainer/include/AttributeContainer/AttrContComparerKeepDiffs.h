// Lists the attributes in which two container trees differ.
#pragma once

#include <AttributeContainer/AttrContComparer.h>

#include <string>
#include <vector>

namespace QOR::AttributeContainer {

/// A comparer that keeps the path of each attribute that is not exactly the same, also where a
/// tolerance keeps it from being counted.
class QOR_API AttrContComparerKeepDiffs : public AttrContComparer {
public:
    /// Compares all categories, exactly.
    AttrContComparerKeepDiffs();

    /// How many the last comparison has found.
    std::uint64_t getNumMismatches() const { return mismatches.size(); }
    /// The names of the fields that lead to the attribute and its own, as in "Outer/Inner/Gain", in
    /// the order of the walk; empty past the end. A field counts with its `name`, the first
    /// container's where both have it, and not with that of its slot: where the two differ,
    /// `inqObserver` does not take the text.
    std::optional<std::string> getMismatch(std::uint64_t index) const;

protected:
    void reset() const override;
    void enterField(OptionalContainer field) const override;
    void exitField(OptionalContainer field) const override;
    std::uint64_t handleAttributes(const Attribute* first, const Attribute* second) const override;

private:
    mutable std::string currentPath;
    mutable std::vector<std::string> mismatches;
};

}  // namespace QOR::AttributeContainer
