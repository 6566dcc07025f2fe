// Brings one document to the state of another.
#pragma once

#include "model/Document.h"

#include <AttributeContainer/AttrContMerger.h>

#include <cstdint>
#include <string>
#include <vector>

namespace qormodel {

/// When the observers in a document hear of a merge.
enum class Telling { Never, AtTheEnd, Each };

/// How a merge goes about it.
struct TwoWayOptions {
    bool keep = false;                    ///< nothing is removed
    std::vector<std::string> onlyMarked;  ///< paths in the source, to which it is limited
    Telling telling = Telling::Never;
};

/// What a merge did to the target.
struct TwoWayResult {
    ac::AttrContMerger::Result values;  ///< in attributes and fields
    std::uint64_t numObjectsAdded = 0;  ///< with all below them
    std::uint64_t numObjectsRemoved = 0;
    std::uint64_t numObjectsMoved = 0;
    std::vector<std::string> notes;  ///< what could not be brought to the state of the source
};

/// Brings `target` to the state of `source`: attributes and fields as the library's merger does it,
/// relations, and the children with their order, paired by identifier, then by name. With paths
/// only what stands at and below them comes over, and nothing is removed. Objects of `source` move
/// to `target`; it stays alive as long as `target` is used. \throws Failure for a path that leads
/// nowhere
TwoWayResult mergeTwoWays(Document& target, Document& source, const TwoWayOptions& options);

}  // namespace qormodel
