// Laser scans and tracks as the example handles them, before they become part of a document.
#pragma once

#include <points/Scan.h>

namespace example {

using points::kept;
using points::Point;
using points::Pose;
using points::Scan;
using points::Track;

}  // namespace example
