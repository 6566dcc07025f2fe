// Which part of a document is meant.
#pragma once

#include "model/Document.h"

#include <string>
#include <vector>

namespace qormodel {

/// Marks the attributes at and below these paths and no others, but for the names of the objects on
/// the way to them: without a marked name an object is not written, with all below it.
/// \throws Failure for a path that leads nowhere; the marks are gone then
void markOnly(const Document& document, const std::vector<std::string>& paths);

/// Whether `path` is one of `paths` or lies below one. Names compare without case.
bool isAtOrBelow(const std::string& path, const std::vector<std::string>& paths);

}  // namespace qormodel
