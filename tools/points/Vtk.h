// The parts of legacy VTK text that hold points.
#pragma once

#include "LineReader.h"

#include <cstdint>
#include <vector>

namespace points {

/// Whether the reader, which stands on the first line of a file, has VTK text before it.
bool isVtk(const LineReader& lines);

/// Moves on from the first line to that of the points. \return the number of points
/// \throws BadPointFile for the binary form, and where there are no points.
std::uint64_t findVtkPoints(LineReader& lines);

/// Takes `count` vectors of three numbers from the lines behind the current one.
/// \param what what they are, for the message where they are too few or too many.
/// \throws BadPointFile
std::vector<Point> takeVtkVectors(LineReader& lines, std::uint64_t count, const char* what);

}  // namespace points
