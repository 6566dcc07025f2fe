// The attributes of one element in three versions, merged into one.
#pragma once

#include "compare/FlatTree.h"
#include "merge/Conflict.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qormodel {

/// Brings into `ours` what `theirs` changed, added or removed against `base`, attribute by
/// attribute. What both changed in different ways is a conflict: without `preferred` ours stands
/// and `conflicts` gets an entry. No observer is asked or told.
/// \param base null where the element is new on both sides.
/// \return how many attributes changed
std::uint64_t mergeAttributes(const Node* base, const Node& ours, const Node& theirs,
                              std::optional<Side> preferred, std::vector<Conflict>& conflicts);

/// Gives `target` the value of `source`, its type too where that can be; adds it where `target` has
/// none of that name. No observer is asked or told.
/// \return false where the class of the target declares another type
bool takeAttribute(ac::AttrContainer& target, const ac::Attribute& source);

}  // namespace qormodel
