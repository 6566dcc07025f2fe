// Merges two versions of a document that come from one.
#pragma once

#include "merge/Conflict.h"
#include "model/Document.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qormodel {

/// What a merge of three versions did to ours.
struct ThreeWayResult {
    std::uint64_t numAttributes = 0;  ///< changed, added and removed in elements of ours
    std::uint64_t numAdded = 0;       ///< objects and fields taken over from theirs
    std::uint64_t numRemoved = 0;     ///< objects and fields of ours
    std::vector<Conflict> conflicts;
};

/// Brings into `ours` all that changed from `base` to `theirs`: values, attributes, fields,
/// objects, their names and places, and relations. Objects are paired by their identifiers, then by
/// name. Where both sides changed the same in different ways, the preferred one stands; without one
/// that is ours, and the conflict is listed. Objects of `theirs` move to `ours`; it stays alive as
/// long as `ours` is used. \throws Failure
ThreeWayResult mergeThreeWays(const Document& base, Document& ours, Document& theirs,
                              std::optional<Side> preferred);

}  // namespace qormodel
