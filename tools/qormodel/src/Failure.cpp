#include "Failure.h"

namespace qormodel {

std::string describe(const Place& place, const std::string& text) {
    std::string line = place.file;
    if (place.line != 0) line += ':' + std::to_string(place.line);
    if (!line.empty()) line += ": ";
    if (!place.path.empty()) line += place.path + ": ";
    return line + text;
}

}  // namespace qormodel
