// Brings one container tree to the state of another.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace QOR::AttributeContainer {

/// Assigns, adds and removes attributes and fields, so that a target comes to hold what a source
/// holds. Both are paired by name; the children of objects are not looked at.
class QOR_API AttrContMerger {
public:
    // The flags of a merge, which are or-ed.
    /// An attribute that is equal already is not touched. Without it all are that have a
    /// counterpart in the source.
    static constexpr unsigned int ASSIGN_ONLY_CHANGED_VALUES = 1;
    /// Nothing is removed from the target.
    static constexpr unsigned int KEEP_NON_EXISTENT_IN_SOURCE = 2;
    /// Attributes of the source that are not marked are not assigned or added. What is missing is
    /// removed all the same, and fields that are missing arrive as they are.
    static constexpr unsigned int CONSIDER_ONLY_MARKED = 4;
    /// Marks the attributes of the target that were changed or added.
    static constexpr unsigned int MARK_CHANGED_WITH_AUXILIARY = 8;
    /// Observers hear of it when the whole tree is merged.
    static constexpr unsigned int TRIGGER_OBSERVERS_AFTER_MERGE_IS_COMPLETE = 16;
    /// No observer hears of it. Wins over the flag before.
    static constexpr unsigned int BLOCK_OBSERVERS = 32;

    /// What merges did. They add to it; the caller begins with zeros.
    struct Result {
        std::uint32_t numChanged = 0;            ///< assigned, also where an observer refused
        std::uint32_t numUnchanged = 0;          ///< found equal
        std::uint32_t numAttributesAdded = 0;    ///< taken in by the target
        std::uint32_t numAttributesRemoved = 0;  ///< to be removed; declared ones stay
        std::uint32_t numFieldsAdded = 0;        ///< taken in by the target
        std::uint32_t numFieldsRemoved = 0;      ///< to be removed; declared slots stay, empty
    };

    /// Merges `source` into `target`, and tells the observers of its attributes as `flags` say.
    ///
    /// Costs a look-up by name for each attribute and field. A merge that holds observers back or
    /// blocks them ends a `BlockObserver` of the caller at its first assignment.
    /// \param result may be null.
    /// \throws std::invalid_argument where the type of an attribute is not that of the source's and
    /// the source's text is a malformed number; what was merged before stays.
    static void merge(AttrContainer& target, const AttrContainer& source, unsigned int flags,
                      Result* result);

private:
    static void merge_Internal(AttrContainer& target, const AttrContainer& source,
                               unsigned int flags, std::vector<std::weak_ptr<Attribute>>& changed,
                               Result* result);
};

}  // namespace QOR::AttributeContainer
