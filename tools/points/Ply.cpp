#include "Ply.h"

#include "PlyHeader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace points {

namespace {
constexpr std::array<std::string_view, 6> vertexNames{"x", "y", "z", "nx", "ny", "nz"};
constexpr std::size_t noPlace = vertexNames.size();

// Gives the numbers of the elements one by one, whatever their form.
class NumberSource {
public:
    NumberSource(LineReader& lines, PlyForm form) : lines(lines), form(form) {}

    // Ahead of each element. In text an element is a line. False at the end of the file.
    bool beginElement() {
        if (form != PlyForm::Text) return true;
        while (lines.next())
            if (!lines.isAtEnd()) return true;
        return false;
    }
    void endElement() {
        if (form == PlyForm::Text && !lines.isAtEnd())
            lines.fail("there are more numbers than the header tells");
    }
    // Empty at the end of the file.
    std::optional<double> take(const PlyType& type) {
        if (form != PlyForm::Text) return takeBinary(type);
        const auto number = lines.takeNumber();
        if (!number) lines.fail("there are fewer numbers than the header tells, or one is none");
        return number;
    }

private:
    std::optional<double> takeBinary(const PlyType& type) {
        std::array<char, 8> bytes{};
        if (!takeBytes(bytes.data(), type.size)) return std::nullopt;
        if ((form == PlyForm::BigEndian) == (std::endian::native == std::endian::little))
            std::reverse(bytes.data(), bytes.data() + type.size);
        switch (type.size) {
            case 1: return type.isSigned ? as<std::int8_t>(bytes) : as<std::uint8_t>(bytes);
            case 2: return type.isSigned ? as<std::int16_t>(bytes) : as<std::uint16_t>(bytes);
            case 4:
                if (type.isFloat) return as<float>(bytes);
                return type.isSigned ? as<std::int32_t>(bytes) : as<std::uint32_t>(bytes);
            default: return as<double>(bytes);
        }
    }
    template <class T> static double as(const std::array<char, 8>& bytes) {
        T value;
        std::memcpy(&value, bytes.data(), sizeof(T));
        return static_cast<double>(value);
    }
    bool takeBytes(char* target, std::size_t count) {
        if (end - begin < count) {
            std::memmove(chunk.data(), chunk.data() + begin, end - begin);
            end -= begin;
            begin = 0;
            end += lines.takeBytes(chunk.data() + end, chunk.size() - end);
            if (end < count) return false;
        }
        std::memcpy(target, chunk.data() + begin, count);
        begin += count;
        return true;
    }

    LineReader& lines;
    PlyForm form;
    std::array<char, 1 << 14> chunk;
    std::size_t begin = 0;
    std::size_t end = 0;
};

[[noreturn]] void failAtEnd(LineReader& lines, const PlyElement& element, std::uint64_t done) {
    lines.failWhole("the file ends behind " + std::to_string(done) + " of " +
                    std::to_string(element.count) + " elements \"" + element.name + '"');
}

// Takes one element. `places` tells for each property where its number belongs.
// False at the end of the file.
bool takeElement(NumberSource& source, const PlyElement& element,
                 const std::vector<std::size_t>& places, std::array<double, 7>& numbers) {
    if (!source.beginElement()) return false;
    for (std::size_t i = 0; i < element.properties.size(); ++i) {
        const PlyProperty& property = element.properties[i];
        double count = 1;
        if (property.countType) {
            const auto announced = source.take(*property.countType);
            if (!announced) return false;
            count = *announced;
        }
        for (double done = 0; done < count; ++done) {
            const auto number = source.take(property.type);
            if (!number) return false;
            numbers[places[i]] = *number;
        }
    }
    source.endElement();
    return true;
}

std::vector<std::size_t> placesOf(const PlyElement& element) {
    std::vector<std::size_t> places;
    for (const PlyProperty& property : element.properties) {
        const auto name = std::find(vertexNames.begin(), vertexNames.end(), property.name);
        places.push_back(property.countType ? noPlace
                                            : static_cast<std::size_t>(name - vertexNames.begin()));
    }
    return places;
}

bool isThere(const std::vector<std::size_t>& places, std::size_t place) {
    return std::find(places.begin(), places.end(), place) != places.end();
}

void readVertices(LineReader& lines, NumberSource& source, const PlyElement& element, Scan& scan) {
    const auto places = placesOf(element);
    if (!isThere(places, 0) || !isThere(places, 1) || !isThere(places, 2))
        lines.fail("the element \"vertex\" has no properties x, y and z");
    const bool hasNormals = isThere(places, 3) && isThere(places, 4) && isThere(places, 5);
    std::array<double, 7> numbers{};
    for (std::uint64_t done = 0; done < element.count; ++done) {
        if (!takeElement(source, element, places, numbers)) failAtEnd(lines, element, done);
        const auto& [x, y, z, nx, ny, nz, other] = numbers;
        if (!std::all_of(numbers.begin(), numbers.begin() + (hasNormals ? 6 : 3),
                         [](double number) { return std::isfinite(number); }))
            lines.failWhole("the vertex " + std::to_string(done + 1) +
                            " has a number that is not finite");
        scan.points.push_back(kept(Point{x, y, z}));
        if (hasNormals) scan.normals.push_back(kept(Point{nx, ny, nz}));
    }
}

void skipElements(LineReader& lines, NumberSource& source, const PlyElement& element) {
    if (element.properties.empty()) return;  // takes no room, whatever its number
    const std::vector<std::size_t> places(element.properties.size(), noPlace);
    std::array<double, 7> numbers{};
    for (std::uint64_t done = 0; done < element.count; ++done)
        if (!takeElement(source, element, places, numbers)) failAtEnd(lines, element, done);
}
}  // namespace

bool isPly(const LineReader& lines) { return lines.rest() == "ply"; }

// What follows the vertices is left alone.
void readPly(LineReader& lines, Scan& scan) {
    const PlyHeader header = readPlyHeader(lines);
    NumberSource source(lines, header.form);
    for (const PlyElement& element : header.elements) {
        if (element.name == "vertex") return readVertices(lines, source, element, scan);
        skipElements(lines, source, element);
    }
    lines.fail("the header has no element \"vertex\"");
}

}  // namespace points
