#include "PointFile.h"

#include "LineReader.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>

namespace example {

namespace {

std::string placeText(const std::filesystem::path& file, std::uint64_t line) {
    return line > 0 ? file.string() + ":" + std::to_string(line) : file.string();
}

// How much of a file is shown in a message: a file of another kind can be one long line.
constexpr std::size_t maxQuoted = 40;

// The forms. -------------------------------------------------------------------------------------

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

// Moves on to the line "POINTS n type". \return the number of points
std::uint64_t findPoints(LineReader& lines) {
    while (lines.next()) {
        if (lines.takeWord() != "POINTS") continue;
        const auto word = lines.takeWord();
        std::uint64_t count = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
        if (error != std::errc{} || end != word.data() + word.size())
            lines.fail("the number of points is expected behind \"POINTS\"");
        return count;
    }
    lines.fail("the file ends and has no \"POINTS\"");
}

// The reader stands on the first line. What follows the points is left alone.
void readVtk(LineReader& lines, Scan& scan) {
    lines.next();  // the title
    if (!lines.next() || lines.takeWord() != "ASCII")
        lines.fail("\"ASCII\" is expected here: only the text form can be read");
    // The number is not trusted for an allocation: the points that are there count.
    const std::uint64_t count = findPoints(lines);
    Point point;
    std::size_t component = 0;
    while (scan.points.size() < count) {
        if (!lines.next())
            lines.fail("the file ends behind " + std::to_string(scan.points.size()) + " of " +
                       std::to_string(count) + " points");
        while (!lines.isAtEnd()) {
            const auto number = lines.takeNumber();
            if (!number)
                lines.fail("a number is expected, not \"" +
                           std::string(lines.takeWord().substr(0, maxQuoted)) + "\"");
            if (scan.points.size() == count)
                lines.fail("there are more points than were announced");
            point[component] = *number;
            component = (component + 1) % point.size();
            if (component == 0) scan.points.push_back(kept(point));
        }
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
    if (lines.rest().starts_with("# vtk DataFile")) {
        readVtk(lines, scan);
    } else {
        readRows(lines, scan);
    }
    if (scan.points.empty()) lines.fail("the file holds no points");
    return scan;
}

}  // namespace example
