// The elements of a page with their attributes and what differs in them.
#pragma once

#include "compare/Diff.h"
#include "model/Values.h"
#include "page/PageTree.h"

#include <vector>

namespace qormodel {

/// Adds the lists `classes`, `types` and `nodes` to the data of a page.
void addNodes(Json& page, const PageTree& tree, const std::vector<Change>& changes,
              const Document& first, const Document* second);

}  // namespace qormodel
