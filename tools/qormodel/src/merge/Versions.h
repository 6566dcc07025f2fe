// Three versions of a document side by side.
#pragma once

#include "compare/FlatTree.h"
#include "model/Document.h"

#include <cstddef>
#include <vector>

namespace qormodel {

/// An element with the nodes that it has in the versions; `FlatTree::none` where it is not there.
struct Entity {
    std::size_t base = FlatTree::none;
    std::size_t ours = FlatTree::none;
    std::size_t theirs = FlatTree::none;

    bool isInBase() const { return base != FlatTree::none; }
    bool isInOurs() const { return ours != FlatTree::none; }
    bool isInTheirs() const { return theirs != FlatTree::none; }
};

/// The trees of the versions and what is the same element in them. The root comes first; then all
/// of ours, then what only theirs has, then what only the base has, each behind its parent there.
struct Versions {
    Versions(const Document& baseDocument, const Document& oursDocument,
             const Document& theirsDocument);

    FlatTree base;
    FlatTree ours;
    FlatTree theirs;
    std::vector<Entity> entities;
    std::vector<std::size_t> ofBase;  ///< the entity of each node
    std::vector<std::size_t> ofOurs;
    std::vector<std::size_t> ofTheirs;
};

}  // namespace qormodel
