// Reads point files: lines of `x,y,z[,nx,ny,nz]`, legacy VTK text, and PLY.
#pragma once

#include "Scan.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

namespace points {

/// A file that is no point file; the text names the file, the line and what is wrong there.
class BadPointFile : public std::runtime_error {
public:
    /// \param line counts from 1; 0 for what concerns the file as a whole.
    BadPointFile(const std::filesystem::path& file, std::uint64_t line, const std::string& what);
};

/// Is told how many bytes of a file of what size were read; the size is 0 where nobody knows it.
using ReadProgress = std::function<void(std::uint64_t done, std::uint64_t size)>;

/// Reads a scan, whose form the first line tells. It is named after the file; its numbers are
/// rounded to what a stream keeps. Memory goes by the points that are there, never by a number that
/// the file announces.
/// \throws BadPointFile for what cannot be opened or is in none of the forms, for a number that is
/// not finite, and for a file with no points.
Scan readPointFile(const std::filesystem::path& file, const ReadProgress& progress = {});

}  // namespace points
