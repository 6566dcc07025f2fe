#include "PointFile.h"

#include "LineReader.h"
#include "Ply.h"
#include "Vtk.h"

#include <array>
#include <cstddef>
#include <optional>

namespace points {

namespace {

std::string placeText(const std::filesystem::path& file, std::uint64_t line) {
    return line > 0 ? file.string() + ":" + std::to_string(line) : file.string();
}

// The numbers of a line: three, or six with a normal.
struct Row {
    std::array<double, 6> numbers{};
    std::size_t size = 0;
};

// A whole line of numbers with commas between them; empty for any other line.
std::optional<Row> takeRow(LineReader& lines) {
    Row row;
    while (row.size < row.numbers.size()) {
        if (row.size > 0 && !lines.takeComma()) break;
        const auto number = lines.takeNumber();
        if (!number) return std::nullopt;
        row.numbers[row.size++] = *number;
    }
    if (!lines.isAtEnd() || (row.size != 3 && row.size != 6)) return std::nullopt;
    return row;
}

void add(Scan& scan, const Row& row) {
    const auto& [x, y, z, nx, ny, nz] = row.numbers;
    scan.points.push_back(kept(Point{x, y, z}));
    if (row.size == 6) scan.normals.push_back(kept(Point{nx, ny, nz}));
}

// The reader stands on the first line, which is a heading or a row. That one tells how many numbers
// there are in all others.
void readRows(LineReader& lines, Scan& scan) {
    std::optional<std::size_t> size;
    bool isFirst = true;
    do {
        if (!isFirst && lines.isAtEnd()) continue;
        const auto row = takeRow(lines);
        if (!row && !isFirst)
            lines.fail("numbers with commas between them are expected: x,y,z or x,y,z,nx,ny,nz");
        isFirst = false;
        if (!row) continue;
        if (size && row->size != *size)
            lines.fail("there are " + std::to_string(row->size) + " numbers, and " +
                       std::to_string(*size) + " in the lines before");
        size = row->size;
        add(scan, *row);
    } while (lines.next());
}

}  // namespace

BadPointFile::BadPointFile(const std::filesystem::path& file, std::uint64_t line,
                           const std::string& what)
    : std::runtime_error(placeText(file, line) + ": " + what) {}

Scan readPointFile(const std::filesystem::path& file, const ReadProgress& progress) {
    LineReader lines(file, progress);
    if (!lines.next()) throw BadPointFile(file, 0, "is empty");
    Scan scan;
    scan.name = file.stem().string();
    if (isVtk(lines)) {
        scan.points = takeVtkVectors(lines, findVtkPoints(lines), "points");
    } else if (isPly(lines)) {
        readPly(lines, scan);
    } else {
        readRows(lines, scan);
    }
    if (scan.points.empty()) lines.fail("the file holds no points");
    return scan;
}

}  // namespace points
