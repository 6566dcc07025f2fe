#include "TrackFile.h"

#include "LineReader.h"
#include "Vtk.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace points {

namespace {

using Axes = std::array<std::vector<Point>, 3>;

constexpr std::array<std::string_view, 3> axisNames{"orientationX", "orientationY", "orientationZ"};

// Takes the axes from what follows the points; an axis that is not there stays empty.
Axes takeAxes(LineReader& lines, std::uint64_t count) {
    Axes axes;
    while (lines.next()) {
        if (lines.takeWord() != "VECTORS") continue;
        const auto name = std::ranges::find(axisNames, lines.takeWord());
        if (name == axisNames.end()) continue;
        axes[static_cast<std::size_t>(name - axisNames.begin())] =
            takeVtkVectors(lines, count, "orientations");
    }
    return axes;
}

void setColumn(Pose& pose, std::size_t column, const Point& vector) {
    for (std::size_t row = 0; row < vector.size(); ++row) pose(row, column) = vector[row];
}

}  // namespace

Track readTrackFile(const std::filesystem::path& file, const ReadProgress& progress) {
    LineReader lines(file, progress);
    if (!lines.next()) throw BadPointFile(file, 0, "is empty");
    if (!isVtk(lines)) lines.fail("\"# vtk DataFile\" is expected here: a track is VTK text");
    const std::uint64_t count = findVtkPoints(lines);
    const std::vector<Point> positions = takeVtkVectors(lines, count, "points");
    if (positions.empty()) lines.fail("the file holds no points");
    const Axes axes = takeAxes(lines, count);
    const auto numThere =
        std::ranges::count_if(axes, [](const auto& axis) { return !axis.empty(); });
    if (numThere != 0 && numThere != std::ssize(axes))
        lines.fail("the file has some of the orientations X, Y and Z only");

    Track track;
    track.name = file.stem().string();
    for (std::size_t i = 0; i < positions.size(); ++i) {
        Pose pose = Pose::identity();
        for (std::size_t axis = 0; axis < axes.size(); ++axis)
            if (numThere > 0) setColumn(pose, axis, axes[axis][i]);
        setColumn(pose, 3, positions[i]);
        track.poses.push_back(pose);
    }
    return track;
}

}  // namespace points
