// What differs between two versions of a project, as a table.
#pragma once

#include "Project.h"

#include <string>
#include <vector>

namespace example {

/// One attribute that is not the same in both; "-" stands for a version that does not have it.
struct Difference {
    std::string path;  // the names of the fields that lead to it, and its own
    std::string first;
    std::string second;
};

/// The differences in the order in which they are found.
std::vector<Difference> differencesOf(const model::AttrContainer& first,
                                      const model::AttrContainer& second);

/// Prints them, one on a line.
void printDifferences(const std::vector<Difference>& differences);

/// A text in a column of `width` letters.
std::string column(std::string text, std::size_t width);

}  // namespace example
