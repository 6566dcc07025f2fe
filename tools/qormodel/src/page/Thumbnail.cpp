#include "page/Thumbnail.h"

#include "compare/FlatTree.h"
#include "model/Elements.h"
#include "model/ValueVisit.h"
#include "model/Values.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace qormodel {

namespace {
using Point = std::array<double, 3>;

// Calls `visit` with each point of finite coordinates.
template <class Visit> void forEachPoint(const ac::Attribute& attribute, const Visit& visit) {
    visitValue(attribute, [&]<class T>(const T& value) {
        if constexpr (requires { value.begin(); }) {
            const auto take = [&](const auto& group) {
                if constexpr (requires { group[2]; } && NumberGroup<decltype(group)>) {
                    const Point point{static_cast<double>(group[0]), static_cast<double>(group[1]),
                                      static_cast<double>(group[2])};
                    if (std::ranges::all_of(point, [](double x) { return std::isfinite(x); }))
                        visit(point);
                }
            };
            for (const auto& each : value) {
                if constexpr (requires { each.position; }) take(each.position);
                else take(each);
            }
        }
    });
}

bool isOfNormals(const ac::Attribute& attribute) {
    return foldedName(attribute.getName()).find("normal") != std::string::npos;
}

// The place in 0 ... count - 1 of a value in a range.
std::size_t cellOf(double value, double min, double max, std::size_t count) {
    if (!(max > min)) return count / 2;
    const double part = (value / 2 - min / 2) / (max / 2 - min / 2);  // halves do not overflow
    return std::min(static_cast<std::size_t>(part * static_cast<double>(count)), count - 1);
}
}  // namespace

std::optional<PointSet> inqPointSet(const ac::AttrContainer& container) {
    PointSet found;
    std::pair<bool, std::uint64_t> best{false, 0};  // points before normals, then the longer list
    forEachAttribute(container, [&](const auto& attribute) {
        const std::uint64_t count = numPoints(*attribute).value_or(0);
        const std::pair rank{count > 0 && !isOfNormals(*attribute), count};
        if (rank <= best) return;
        best = rank;
        found.attribute = attribute;
        found.numPoints = count;
    });
    if (!found.attribute) return std::nullopt;
    found.min.fill(std::numeric_limits<double>::infinity());
    found.max.fill(-std::numeric_limits<double>::infinity());
    forEachPoint(*found.attribute, [&](const Point& point) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            found.min[axis] = std::min(found.min[axis], point[axis]);
            found.max[axis] = std::max(found.max[axis], point[axis]);
        }
    });
    if (found.min[0] > found.max[0]) return std::nullopt;
    return found;
}

Thumbnail makeThumbnail(const PointSet& points, std::size_t side) {
    constexpr std::size_t numLevels = 15;
    const double width = points.max[0] / 2 - points.min[0] / 2;
    const double depth = points.max[1] / 2 - points.min[1] / 2;
    const auto cellsFor = [&](double length) {
        const double longest = std::max(width, depth);
        if (!(longest > 0)) return std::size_t{1};
        const double cells = std::ceil(length / longest * static_cast<double>(side));
        return std::clamp(static_cast<std::size_t>(cells), std::size_t{1}, side);
    };
    Thumbnail thumbnail;
    thumbnail.numColumns = cellsFor(width);
    thumbnail.numRows = cellsFor(depth);
    thumbnail.cells.assign(thumbnail.numColumns * thumbnail.numRows, 0);
    forEachPoint(*points.attribute, [&](const Point& point) {
        const auto cell = [&](std::size_t axis, std::size_t count) {
            return cellOf(point[axis], points.min[axis], points.max[axis], count);
        };
        const std::size_t row = thumbnail.numRows - 1 - cell(1, thumbnail.numRows);
        auto& target = thumbnail.cells[row * thumbnail.numColumns + cell(0, thumbnail.numColumns)];
        target = std::max(target, static_cast<std::uint8_t>(1 + cell(2, numLevels)));
    });
    return thumbnail;
}

std::string packCells(const Thumbnail& thumbnail) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto& cells = thumbnail.cells;
    const auto byteAt = [&](std::size_t index) {
        const auto half = [&](std::size_t i) -> unsigned {
            return i < cells.size() ? cells[i] : 0;
        };
        return half(2 * index) << 4 | half(2 * index + 1);
    };
    const std::size_t numBytes = (cells.size() + 1) / 2;
    std::string text;
    text.reserve((numBytes + 2) / 3 * 4);
    for (std::size_t i = 0; i < numBytes; i += 3) {
        const unsigned bits = byteAt(i) << 16 | byteAt(i + 1) << 8 | byteAt(i + 2);
        for (std::size_t digit = 0; digit < 4; ++digit)
            text += i + digit > numBytes ? '=' : digits[bits >> (18 - 6 * digit) & 63];
    }
    return text;
}

std::size_t sideFor(std::size_t numThumbnails, std::uint64_t numPoints) {
    const std::size_t greatest = numThumbnails <= 80 ? 128 : numThumbnails <= 320 ? 64 : 32;
    const double wanted = std::ceil(2 * std::sqrt(static_cast<double>(numPoints)));
    return std::clamp(static_cast<std::size_t>(wanted), std::size_t{16}, greatest);
}

}  // namespace qormodel
