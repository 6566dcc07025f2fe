// What the points of a scan say about it.
#pragma once

#include "Scan.h"

#include <AttributeContainer/ScanProperties.h>

#include <cstddef>

namespace example {

namespace model = QOR::AttributeContainer;

/// The distances of the points of a scan from the instrument, in metres.
struct Distances {
    double mean = 0;
    double min = 0;
    double max = 0;
    double deviation = 0;
    double logarithmicAverage = 0;
    std::size_t nearest = 0;  // the index of the point
    std::size_t farthest = 0;
};

/// \param points at least one
Distances measure(const std::vector<Point>& points);

/// Stores what is known of a scan: distances, bounding box, normals. The scans of this example have
/// no reflectances, so those statistics stay invalid.
void store(model::ScanProperties& properties, const Scan& scan, const Distances& distances);

}  // namespace example
