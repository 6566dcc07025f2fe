// The file that lists the conflicts of a merge.
#pragma once

#include "merge/Conflict.h"

#include <string>
#include <vector>

namespace qormodel {

/// The list that belongs to a model file: its name with ".conflicts.json" behind it.
std::string conflictListOf(const std::string& file);

/// Writes the list of a file, or takes a former one away where there are no conflicts.
/// \throws Failure
void storeConflicts(const std::string& file, const std::vector<Conflict>& conflicts);

/// One line of a report.
std::string describe(const Conflict& conflict);

}  // namespace qormodel
