// Puts a tree together from elements that come from several.
#pragma once

#include "compare/FlatTree.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qormodel {

/// An element of the tree that is to be.
struct Part {
    static constexpr std::size_t none = ~std::size_t{0};

    std::shared_ptr<ac::AttrContainer> container;
    std::size_t parent = none;  ///< index of a part; none for the root
    bool isField = false;
    std::string slot{};  ///< of a field
    /// Parent and name in each of the versions; empty where one does not have it.
    std::array<std::string, 2> homes{};
};

/// What to keep in `Part::homes` for a node.
std::string homeOf(const Node& node);

/// Hangs each part below its parent, the children in the order of the parts, and takes away what is
/// no part. A child whose name is taken gets one like it, unless one version has the two like that.
/// Costs nothing where all is in place.
/// \param withFields whether fields are placed as well; else they stay as they are.
/// \param tellRenamed is called with a part that got another name, and with its former name.
/// \throws Failure where an object refuses a child or a field, and where parts hang in a circle
void assemble(const std::vector<Part>& parts, bool withFields,
              const std::function<void(const Part&, const std::string&)>& tellRenamed);

}  // namespace qormodel
