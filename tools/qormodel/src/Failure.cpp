#include "Failure.h"

namespace qormodel {

namespace {
constexpr std::size_t maxPathLength = 400;

// A path that fills screens tells no more than its ends.
std::string inShort(const std::string& path) {
    if (path.size() <= maxPathLength) return path;
    constexpr std::size_t half = maxPathLength / 2;
    return path.substr(0, half) + "..." + path.substr(path.size() - half);
}
}  // namespace

std::string describe(const Place& place, const std::string& text) {
    std::string line = place.file;
    if (place.line != 0) line += ':' + std::to_string(place.line);
    if (!line.empty()) line += ": ";
    if (!place.path.empty()) line += inShort(place.path) + ": ";
    return line + text;
}

}  // namespace qormodel
