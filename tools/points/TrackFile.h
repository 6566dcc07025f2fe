// Reads the track of a sensor from legacy VTK text.
#pragma once

#include "PointFile.h"
#include "Scan.h"

#include <filesystem>

namespace points {

/// Reads a track: the points are the positions, and the vectors "orientationX", "orientationY" and
/// "orientationZ" behind them the axes of the sensor. Without any of these it looks along the axes
/// of the track. It is named after the file; its numbers are rounded to what a stream keeps.
/// \throws BadPointFile for what is no such file, for a number that is not finite, and for a file
/// with no positions or with some of the axes only.
Track readTrackFile(const std::filesystem::path& file, const ReadProgress& progress = {});

}  // namespace points
