// Makes a scan of a room, for when there is no scan at hand.
#pragma once

#include "Scan.h"

namespace example {

/// A scan as an instrument in the middle of a room would make it: four walls, floor, ceiling and a
/// pillar with what it hides, 51,200 points with normals and two millimetres of noise. It is the
/// same scan at every call.
Scan makeRoom();

}  // namespace example
