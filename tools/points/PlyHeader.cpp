#include "PlyHeader.h"

#include <array>
#include <charconv>
#include <system_error>
#include <utility>

namespace points {

namespace {
constexpr std::array<std::pair<std::string_view, PlyType>, 16> types{{
    {"char", {1, false, true}},
    {"int8", {1, false, true}},
    {"uchar", {1, false, false}},
    {"uint8", {1, false, false}},
    {"short", {2, false, true}},
    {"int16", {2, false, true}},
    {"ushort", {2, false, false}},
    {"uint16", {2, false, false}},
    {"int", {4, false, true}},
    {"int32", {4, false, true}},
    {"uint", {4, false, false}},
    {"uint32", {4, false, false}},
    {"float", {4, true, true}},
    {"float32", {4, true, true}},
    {"double", {8, true, true}},
    {"float64", {8, true, true}},
}};

PlyType typeOf(LineReader& lines, std::string_view word) {
    for (const auto& [name, type] : types)
        if (name == word) return type;
    lines.fail("a type such as \"float\" is expected");
}

PlyForm takeForm(LineReader& lines) {
    const std::string_view word = lines.takeWord();
    if (word == "ascii") return PlyForm::Text;
    if (word == "binary_little_endian") return PlyForm::LittleEndian;
    if (word == "binary_big_endian") return PlyForm::BigEndian;
    lines.fail(
        "\"ascii\", \"binary_little_endian\" or \"binary_big_endian\" is expected behind "
        "\"format\"");
}

PlyElement takeElement(LineReader& lines) {
    PlyElement element;
    element.name = lines.takeWord();
    const std::string_view word = lines.takeWord();
    const auto [end, error] =
        std::from_chars(word.data(), word.data() + word.size(), element.count);
    if (error != std::errc{} || end != word.data() + word.size())
        lines.fail("the number of elements is expected behind \"element " + element.name + "\"");
    return element;
}

PlyProperty takeProperty(LineReader& lines) {
    PlyProperty property;
    std::string_view word = lines.takeWord();
    if (word == "list") {
        property.countType = typeOf(lines, lines.takeWord());
        if (property.countType->isFloat) lines.fail("the number of values must be a whole number");
        word = lines.takeWord();
    }
    property.type = typeOf(lines, word);
    property.name = lines.takeWord();
    if (property.name.empty()) lines.fail("the name of the property is expected");
    return property;
}
}  // namespace

PlyHeader readPlyHeader(LineReader& lines) {
    PlyHeader header;
    bool hasForm = false;
    while (lines.next()) {
        const std::string_view word = lines.takeWord();
        if (word == "end_header") {
            if (!hasForm) lines.fail("\"format\" is missing in the header");
            return header;
        }
        if (word == "format") {
            header.form = takeForm(lines);
            hasForm = true;
        } else if (word == "element") {
            header.elements.push_back(takeElement(lines));
        } else if (word == "property") {
            if (header.elements.empty()) lines.fail("an \"element\" is expected ahead of this");
            header.elements.back().properties.push_back(takeProperty(lines));
        } else if (word != "comment" && word != "obj_info") {
            lines.fail("\"element\", \"property\" or \"end_header\" is expected");
        }
    }
    lines.fail("the file ends and has no \"end_header\"");
}

}  // namespace points
