// The header of a PLY file.
#pragma once

#include "LineReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace points {

/// How numbers stand behind the header.
enum class PlyForm { Text, LittleEndian, BigEndian };

/// The type of a number.
struct PlyType {
    std::size_t size = 0;  ///< in bytes
    bool isFloat = false;
    bool isSigned = false;
};

struct PlyProperty {
    std::string name;
    PlyType type;
    std::optional<PlyType> countType;  ///< of the number of its values; none for a single value
};

struct PlyElement {
    std::string name;
    std::uint64_t count = 0;  ///< as announced; not to be trusted
    std::vector<PlyProperty> properties;
};

struct PlyHeader {
    PlyForm form = PlyForm::Text;
    std::vector<PlyElement> elements;
};

/// Reads the header; the reader then stands on its last line. \throws BadPointFile
PlyHeader readPlyHeader(LineReader& lines);

}  // namespace points
