// Whether two texts in a model stream stand for the same value.
#pragma once

#include "outline/Outline.h"

#include <optional>
#include <string>

namespace qormodel {

/// Where two values part.
struct ValueDifference {
    std::string before;  ///< the piece of the value that differs; empty where nothing stands there
    std::string after;
    std::string reason;
};

/// Compares two values of an attribute type such as "Attr<double>", each a slice of its file.
/// Numbers, flags and identifiers may be spelled in different ways; an empty slice is the default.
/// Costs a pass over both, and memory for one element; for sets and maps, whose order is no matter,
/// for all. \return none when they are the same
std::optional<ValueDifference> compareValues(const std::string& type, const SourceFile& before,
                                             const Slice& beforeSlice, const SourceFile& after,
                                             const Slice& afterSlice);

/// Whether the slice holds the default of its type: nothing, zeros, an empty text or list.
bool isDefaultText(const SourceFile& source, const Slice& slice);

}  // namespace qormodel
