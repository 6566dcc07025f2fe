// Reads point files: lines of `x,y,z,nx,ny,nz` behind a heading line, and legacy VTK text.
#pragma once

#include "Scan.h"

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace example {

/// A file that is no point file; the text names the file, the line and what is wrong there.
class BadPointFile : public std::runtime_error {
public:
    /// \param line counts from 1; 0 for what concerns the file as a whole.
    BadPointFile(const std::filesystem::path& file, std::uint64_t line, const std::string& what);
};

/// Reads a scan. It is named after the file; its numbers are rounded to what a stream keeps.
/// \throws BadPointFile for what cannot be opened or is not in one of the two forms, for a number
/// that is not finite, and for a file with no points.
Scan readPointFile(const std::filesystem::path& file);

}  // namespace example
