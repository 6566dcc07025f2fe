// Laser scans and tracks as files hold them, before they become part of a document.
#pragma once

#include <QOR/Mat4d.h>
#include <QOR/Vec.h>

#include <cmath>
#include <string>
#include <vector>

namespace points {

using Point = QOR::Vec3d<double>;
using Pose = QOR::Mat4d<double>;

/// The points of one scan, in metres as seen from the instrument, and their normals: as many as
/// points, or none.
struct Scan {
    std::string name;
    std::vector<Point> points;
    std::vector<Point> normals;
};

/// Where a sensor was, one pose behind the other: the first three columns are its axes, the last
/// one its position in metres.
struct Track {
    std::string name;
    std::vector<Pose> poses;
};

/// The nearest number that a stream keeps in full, with eight digits behind the point.
///
/// A stream writes the numbers of a vector with as many digits as its largest one needs to have
/// nine behind the point, or with eight digits where all are below 1. Eight digits behind the point
/// therefore always come back: a hundredth of a micrometre, far below what a scanner measures.
inline double kept(double value) {
    constexpr double perUnit = 1e8;
    if (std::abs(value) > perUnit) return value;  // written with 18 digits, enough for every double
    return std::round(value * perUnit) / perUnit + 0.0;  // the sum turns -0 into 0
}

inline Point kept(const Point& point) { return {kept(point.x), kept(point.y), kept(point.z)}; }

}  // namespace points
