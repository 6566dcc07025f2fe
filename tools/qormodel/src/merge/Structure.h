// Which elements a merge keeps, and where they hang.
#pragma once

#include "merge/Conflict.h"
#include "merge/Versions.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace qormodel {

/// What is decided about an entity.
struct Placement {
    bool isAlive = false;
    bool isFromTheirs = false;  ///< the merged tree takes over their element, with all its values
    std::size_t parent = FlatTree::none;  ///< an entity
};

/// Decides for each entity. What one side alone added, removed or moved is so in the result. An
/// element that one side removed while the other changed something at or below it, and one that
/// both moved to different places, is a conflict: without `preferred` ours stands and `conflicts`
/// gets an entry.
std::vector<Placement> decideStructure(const Versions& versions, std::optional<Side> preferred,
                                       std::vector<Conflict>& conflicts);

}  // namespace qormodel
