// Small pictures of point sets, seen from above.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/Vec.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

/// The points of a container with the box around them.
struct PointSet {
    std::shared_ptr<const ac::Attribute> attribute;  ///< the list that holds them
    std::uint64_t numPoints = 0;
    std::array<double, 3> min{};
    std::array<double, 3> max{};
};

/// The longest list of points in a container, the first of those as long, and one of normals only
/// where there is no other. None where there is no list with a point of finite coordinates.
std::optional<PointSet> inqPointSet(const ac::AttrContainer& container);

/// A grid of cells, the upper row first, x to the right and y up. A cell is 0 where no point lies,
/// else from 1 to 15 with the height of its highest point.
struct Thumbnail {
    std::size_t numColumns = 0;
    std::size_t numRows = 0;
    std::vector<std::uint8_t> cells;
};

/// Costs one pass over the points. \param side how many cells the longer side has
Thumbnail makeThumbnail(const PointSet& points, std::size_t side);

/// Two cells to a byte, the first in the upper half, as base64.
std::string packCells(const Thumbnail& thumbnail);

/// A page shows no more thumbnails than these.
constexpr std::size_t maxNumThumbnails = 1280;

/// How many cells the longer side has where a page shows that many thumbnails: all of a page
/// together take less than a megabyte. Few points have larger cells, or they would hardly be seen.
std::size_t sideFor(std::size_t numThumbnails, std::uint64_t numPoints);

}  // namespace qormodel
