// The relations of a page.
#pragma once

#include "compare/Diff.h"
#include "model/Values.h"
#include "page/PageTree.h"

#include <vector>

namespace qormodel {

/// The list `relations` of a page. Those of the first document stand ahead of those that only the
/// second one has.
Json describeRelations(const PageTree& tree, const std::vector<Change>& changes,
                       const Document& first, const Document* second);

}  // namespace qormodel
