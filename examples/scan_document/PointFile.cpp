#include "PointFile.h"

#include "LineReader.h"
#include "Vtk.h"

#include <array>
#include <cstddef>
#include <optional>

namespace example {

namespace {

std::string placeText(const std::filesystem::path& file, std::uint64_t line) {
    return line > 0 ? file.string() + ":" + std::to_string(line) : file.string();
}

using Row = std::array<double, 6>;

// A whole line of six numbers with commas between them; empty for any other line.
std::optional<Row> takeRow(LineReader& lines) {
    Row row{};
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0 && !lines.takeComma()) return std::nullopt;
        const auto number = lines.takeNumber();
        if (!number) return std::nullopt;
        row[i] = *number;
    }
    if (!lines.isAtEnd()) return std::nullopt;
    return row;
}

// The reader stands on the heading line.
void readRows(LineReader& lines, Scan& scan) {
    if (takeRow(lines)) lines.fail("a heading line should come first, and these are numbers");
    while (lines.next()) {
        if (lines.isAtEnd()) continue;
        const auto row = takeRow(lines);
        if (!row) lines.fail("six numbers with commas between them are expected: x,y,z,nx,ny,nz");
        const auto& [x, y, z, nx, ny, nz] = *row;
        scan.points.push_back(kept(Point{x, y, z}));
        scan.normals.push_back(kept(Point{nx, ny, nz}));
    }
}

}  // namespace

BadPointFile::BadPointFile(const std::filesystem::path& file, std::uint64_t line,
                           const std::string& what)
    : std::runtime_error(placeText(file, line) + ": " + what) {}

Scan readPointFile(const std::filesystem::path& file) {
    LineReader lines(file);
    if (!lines.next()) throw BadPointFile(file, 0, "is empty");
    Scan scan;
    scan.name = file.stem().string();
    if (isVtk(lines)) {
        scan.points = takeVtkVectors(lines, findVtkPoints(lines), "points");
    } else {
        readRows(lines, scan);
    }
    if (scan.points.empty()) lines.fail("the file holds no points");
    return scan;
}

}  // namespace example
