#include "Vtk.h"

#include <charconv>
#include <cstddef>
#include <string>
#include <system_error>

namespace points {

namespace {
// How much of a file is shown in a message: a file of another kind can be one long line.
constexpr std::size_t maxQuoted = 40;
}  // namespace

bool isVtk(const LineReader& lines) { return lines.rest().starts_with("# vtk DataFile"); }

std::uint64_t findVtkPoints(LineReader& lines) {
    lines.next();  // the title
    if (!lines.next() || lines.takeWord() != "ASCII")
        lines.fail("\"ASCII\" is expected here: only the text form can be read");
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

std::vector<Point> takeVtkVectors(LineReader& lines, std::uint64_t count, const char* what) {
    // The number is not trusted for an allocation: the vectors that are there count.
    std::vector<Point> vectors;
    Point vector;
    std::size_t component = 0;
    while (vectors.size() < count) {
        if (!lines.next())
            lines.fail("the file ends behind " + std::to_string(vectors.size()) + " of " +
                       std::to_string(count) + " " + what);
        while (!lines.isAtEnd()) {
            const auto number = lines.takeNumber();
            if (!number)
                lines.fail("a number is expected, not \"" +
                           std::string(lines.takeWord().substr(0, maxQuoted)) + "\"");
            if (vectors.size() == count)
                lines.fail(std::string("there are more ") + what + " than were announced");
            vector[component] = *number;
            component = (component + 1) % vector.size();
            if (component == 0) vectors.push_back(kept(vector));
        }
    }
    return vectors;
}

}  // namespace points
