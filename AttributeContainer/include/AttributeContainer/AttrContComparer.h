// Counts the attributes in which two container trees differ.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <typeinfo>

namespace QOR::AttributeContainer {

/// Walks two containers side by side, down through their fields.
///
/// Attributes and fields are paired by name. The walk is fixed; derived classes act on what it
/// finds. Only attributes count: fields that are there on one side alone count through theirs, and
/// the children of objects are not looked at. An instance serves one comparison at a time, and the
/// containers must not change during it.
class QOR_API AttrContComparer {
public:
    static constexpr int allCategories = -1;

    // The bits of a compare mode.
    /// What only the second container has is no difference.
    static constexpr int ignoreOnlyInSecond = 1;
    /// What only the first container has is no difference.
    static constexpr int ignoreOnlyInFirst = 2;
    /// Floating-point numbers that are nearly the same do not count.
    static constexpr int withTolerance = 4;

    /// \param categories takes in the attributes whose category shares a bit with it.
    /// \param compareMode bits of the mode.
    AttrContComparer(int categories, int compareMode);
    AttrContComparer(const AttrContComparer&) = default;
    AttrContComparer& operator=(const AttrContComparer&) = default;
    virtual ~AttrContComparer() = default;

    int getCategories() const { return categories; }
    void setCategories(int value) { categories = value; }
    int getCompareMode() const { return compareMode; }
    void setCompareMode(int value) { compareMode = value; }

    /// The number of differences. It forgets those of the comparison before.
    ///
    /// Costs one look-up by name for each field, and for each attribute that is not declared by a
    /// class which both containers are of.
    /// \throws std::bad_typeid for an attribute that one side alone has, where the mode has
    /// `withTolerance` and lets that attribute count.
    std::uint64_t compare(const AttrContainer& first, const AttrContainer& second) const;

protected:
    using OptionalContainer = std::optional<std::reference_wrapper<const AttrContainer>>;

    /// Ahead of each comparison: drops what the one before has left.
    virtual void reset() const;
    /// Ahead of what is in a field, the first container's where both have it; empty for a slot of
    /// the first one that holds no field.
    virtual void enterField(OptionalContainer field) const;
    /// Behind it, with the same field.
    virtual void exitField(OptionalContainer field) const;
    /// Called for each pair that is not exactly the same; one of the two is null where the other
    /// side has no such attribute.
    /// \return for how many differences the pair stands: 1, or 0 where the tolerance forgives it.
    virtual std::uint64_t handleAttributes(const Attribute* first, const Attribute* second) const;

    /// Compares two containers, of which one or both may be missing.
    std::uint64_t runComparison(OptionalContainer first, OptionalContainer second) const;
    /// Handles all attributes of a tree that has no counterpart; the mode is not asked.
    std::uint64_t addAttributes(OptionalContainer container, bool isSecond) const;

private:
    std::uint64_t compareAttributes(const AttrContainer& first, const AttrContainer& second) const;
    /// Compares the attributes that both containers declare in the same places.
    /// \return their number: none where the classes differ, or one of them is not there.
    std::uint64_t compareInPlace(const AttrContainer& first, const AttrContainer& second,
                                 std::uint64_t& numDifferences) const;
    bool isFoundInPlace(const AttrContainer& container) const;
    std::uint64_t compareFields(const AttrContainer& first, const AttrContainer& second) const;
    bool isActive(const AttrContainer& container, std::uint64_t token) const;

    int categories;
    int compareMode;
    mutable std::deque<OptionalContainer> fieldStack;
    // The last class that was looked at, and whether each name of its table leads to its own row.
    mutable const std::type_info* knownClass = nullptr;
    mutable bool isKnownInPlace = false;
};

}  // namespace QOR::AttributeContainer
