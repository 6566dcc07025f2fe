#include "Statistics.h"

#include <QOR/Time.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace example {

namespace {

double distanceOf(const Point& point) { return std::hypot(point.x, point.y, point.z); }

// Whether all normals point to the side on which the instrument stands.
bool lookAtInstrument(const Scan& scan) {
    for (std::size_t i = 0; i < scan.normals.size(); ++i) {
        const Point& point = scan.points[i];
        const Point& normal = scan.normals[i];
        if (point.x * normal.x + point.y * normal.y + point.z * normal.z > 0) return false;
    }
    return true;
}

void storeBoundingBox(model::ScanProperties& properties, const std::vector<Point>& points) {
    Point min = points.front();
    Point max = min;
    for (const Point& point : points) {
        for (std::size_t axis = 0; axis < Point::size(); ++axis) {
            min[axis] = std::min(min[axis], point[axis]);
            max[axis] = std::max(max[axis], point[axis]);
        }
    }
    properties.BoundingBoxMin(min);
    properties.BoundingBoxMax(max);
}

}  // namespace

Distances measure(const std::vector<Point>& points) {
    std::vector<double> all(points.size());
    std::ranges::transform(points, all.begin(), distanceOf);
    const auto [nearest, farthest] = std::ranges::minmax_element(all);
    Distances result;
    result.min = *nearest;
    result.max = *farthest;
    result.nearest = static_cast<std::size_t>(nearest - all.begin());
    result.farthest = static_cast<std::size_t>(farthest - all.begin());

    const auto count = static_cast<double>(all.size());
    double logarithms = 0;
    for (const double distance : all) {
        result.mean += distance / count;
        logarithms += std::log(distance) / count;
    }
    result.logarithmicAverage = std::exp(logarithms);
    // In parts of the largest, so that no square is too large for a number.
    double squares = 0;
    for (const double distance : all) {
        const double part = result.max > 0 ? (distance - result.mean) / result.max : 0;
        squares += part * part / count;
    }
    result.deviation = result.max * std::sqrt(squares);
    return result;
}

void store(model::ScanProperties& properties, const Scan& scan, const Distances& distances) {
    properties.DistanceStatisticsMean(kept(distances.mean));
    properties.DistanceStatisticsMin(kept(distances.min));
    properties.DistanceStatisticsMax(kept(distances.max));
    properties.DistanceStatisticsDeviation(kept(distances.deviation));
    properties.DistanceStatisticsValid(true);
    storeBoundingBox(properties, scan.points);
    properties.HasNormals(!scan.normals.empty());
    if (!scan.normals.empty()) properties.HasDirectedNormals(lookAtInstrument(scan) ? 1 : 0);
    properties.LastPointDataSaveTimeStamp(
        static_cast<std::int64_t>(QOR::Time::calcCurrentTimeStatic()));
}

}  // namespace example
