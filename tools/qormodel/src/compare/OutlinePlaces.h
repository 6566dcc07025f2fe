// Which element of a tree was read from which element of its file's text.
#pragma once

#include "compare/FlatTree.h"
#include "outline/Outline.h"

#include <cstddef>
#include <vector>

namespace qormodel {

/// The node of each element of the outline; `FlatTree::none` for what was not taken over. Elements
/// of one parent are paired by their names, those of the same name in their order, and those whose
/// names were not taken over in their order if they are as many.
std::vector<std::size_t> nodesOf(const Outline& outline, const FlatTree& tree);

/// The node of the element, or that of the nearest one above it that was taken over.
std::size_t nodeAtOrAbove(const Outline& outline, const std::vector<std::size_t>& nodes,
                          std::size_t element);

}  // namespace qormodel
