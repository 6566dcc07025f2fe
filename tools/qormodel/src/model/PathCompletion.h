// Paths that begin as a user has typed them.
#pragma once

#include "outline/Outline.h"

#include <string>
#include <vector>

namespace qormodel {

/// The paths that go on from `prefix`, in the order of the file: fields and objects with a "/"
/// behind them, then attributes. They begin as the prefix does, with its spelling of the holders'
/// names. Names that are not valid are left out: no path leads there, and a shell might take them
/// for more than names. Costs one pass over the names at each level of the path.
std::vector<std::string> completePaths(const Outline& outline, const std::string& prefix);

}  // namespace qormodel
