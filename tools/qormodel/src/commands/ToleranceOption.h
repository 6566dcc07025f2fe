// The option --tolerance of the commands that compare.
#pragma once

#include "Failure.h"
#include "compare/ValueEquality.h"

#include <CLI/CLI.hpp>

#include <string>

namespace qormodel {

inline void addTolerance(CLI::App& command, std::string& text) {
    command.add_option("--tolerance", text,
                       "Take numbers for the same that differ by this at most; \"library\" for "
                       "the limits of the library's comparer");
}

/// None for an empty text. \throws Failure for what is no tolerance
inline Tolerance toleranceOf(const std::string& text) {
    if (text.empty()) return {};
    const auto tolerance = Tolerance::parse(text);
    if (!tolerance)
        throw Failure("--tolerance takes \"library\" or a number that is not negative, not \"" +
                      text + '"');
    return *tolerance;
}

}  // namespace qormodel
