// The manual page, made from the commands themselves so that it tells of all their options.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace qormodel {

/// The page in the language of the man macros.
std::string manPageOf(const CLI::App& program);

}  // namespace qormodel
