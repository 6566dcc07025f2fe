#include "Room.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <random>

namespace example {

namespace {

// Metres; the instrument stands at the origin, all else is seen from there.
constexpr Point roomMin{-2.6, -1.9, -1.55};
constexpr Point roomMax{3.4, 2.1, 1.25};
constexpr double pillarX = 1.4;
constexpr double pillarY = -0.8;
constexpr double pillarRadius = 0.2;
constexpr double noise = 0.002;

struct Hit {
    double distance = std::numeric_limits<double>::infinity();
    Point normal;

    void offer(double otherDistance, const Point& otherNormal) {
        if (otherDistance < distance) *this = {otherDistance, otherNormal};
    }
};

// Where a ray from the origin leaves the box of the room. The normals look inwards.
Hit hitRoom(const Point& direction) {
    Hit hit;
    for (std::size_t axis = 0; axis < Point::size(); ++axis) {
        if (direction[axis] == 0) continue;
        const bool isUpper = direction[axis] > 0;
        Point normal;
        normal[axis] = isUpper ? -1 : 1;
        hit.offer((isUpper ? roomMax : roomMin)[axis] / direction[axis], normal);
    }
    return hit;
}

// Where it meets the pillar, which reaches from the floor to the ceiling; far off where it does
// not.
Hit hitPillar(const Point& direction) {
    const double a = direction.x * direction.x + direction.y * direction.y;
    const double b = direction.x * pillarX + direction.y * pillarY;
    const double c = pillarX * pillarX + pillarY * pillarY - pillarRadius * pillarRadius;
    const double root = b * b - a * c;
    if (root < 0 || b <= 0) return {};
    const double distance = (b - std::sqrt(root)) / a;
    return {distance,
            {(distance * direction.x - pillarX) / pillarRadius,
             (distance * direction.y - pillarY) / pillarRadius, 0}};
}

// Between -1 and 1. The distributions of the standard library differ from one to the next.
double randomNumber(std::mt19937& engine) {
    return static_cast<double>(engine()) / (static_cast<double>(std::mt19937::max()) / 2) - 1;
}

}  // namespace

Scan makeRoom() {
    constexpr int numColumns = 320;
    constexpr int numRows = 160;
    constexpr double step = 2 * std::numbers::pi / numColumns;  // radians, both ways
    std::mt19937 engine(20240517);
    Scan scan;
    scan.name = "room";
    for (int column = 0; column < numColumns; ++column) {
        for (int row = 0; row < numRows; ++row) {
            const double azimuth = column * step;
            const double elevation = (row + 0.5) * step - std::numbers::pi / 2;
            const Point direction{std::cos(elevation) * std::cos(azimuth),
                                  std::cos(elevation) * std::sin(azimuth), std::sin(elevation)};
            Hit hit = hitRoom(direction);
            const Hit pillar = hitPillar(direction);
            hit.offer(pillar.distance, pillar.normal);
            const double distance = hit.distance + noise * randomNumber(engine);
            scan.points.push_back(kept(
                Point{distance * direction.x, distance * direction.y, distance * direction.z}));
            scan.normals.push_back(kept(hit.normal));
        }
    }
    return scan;
}

}  // namespace example
