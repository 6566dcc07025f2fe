// Which element of one tree is which of another.
#pragma once

#include "compare/FlatTree.h"

#include <cstddef>
#include <vector>

namespace qormodel {

/// The pairs of two trees, as indices of nodes; `FlatTree::none` for what has no counterpart.
struct Pairing {
    std::vector<std::size_t> toSecond;
    std::vector<std::size_t> toFirst;
};

/// What two objects of one name are that have identifiers of their own.
enum class NameRule {
    Pairs,          ///< the same all the same
    PairsUnmarked,  ///< two objects
};

/// Pairs the roots, then objects by their identifiers wherever they stand, then what is left below
/// each pair by name: children in the order of those of one name, fields by their slots. A pair is
/// of one class. An identifier that comes twice in a tree pairs nothing. Costs a look-up for each
/// node.
Pairing pairUp(const FlatTree& first, const FlatTree& second, NameRule rule = NameRule::Pairs);

}  // namespace qormodel
