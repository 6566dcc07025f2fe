// A document's tree as a list, for those who hold two of them against each other.
#pragma once

#include "model/Elements.h"

#include <QOR/Uuid.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace qormodel {

/// An element with its place in the list.
struct Node {
    Element element;
    std::string slot;                 ///< the name by which its parent knows it
    QOR::uuids::uuid id;              ///< nil for none, and for fields
    std::size_t parent = 0;           ///< the root's is its own
    std::vector<std::size_t> fields;  ///< in their order
    std::vector<std::size_t> children;
};

/// A tree, each node behind its parent. A field that hangs in two places is two nodes.
struct FlatTree {
    static constexpr std::size_t none = ~std::size_t{0};

    std::vector<Node> nodes;
};

/// A name as names are compared: without case.
std::string foldedName(std::string name);

/// The nodes of a tree, in the order in which a file holds them.
FlatTree flatten(const std::shared_ptr<ac::Object>& root);

}  // namespace qormodel
