#include "outline/Outline.h"

#include "outline/OutlineReader.h"

#include <algorithm>
#include <array>

namespace qormodel {

std::string Outline::pathOf(std::size_t element) const {
    std::vector<const std::string*> names;
    for (std::size_t at = element; at != 0; at = elements[at].parent)
        names.push_back(&elements[at].name);
    if (names.empty()) return "/";
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name) path += '/' + **name;
    return path;
}

// Elements stand in the order in which their blocks begin, so the last one that begins ahead of
// the place is inside all that hold it.
std::size_t Outline::elementAt(std::uint64_t offset) const {
    auto behind = std::upper_bound(
        elements.begin(), elements.end(), offset,
        [](std::uint64_t place, const ElementText& each) { return place < each.block.begin; });
    if (behind == elements.begin()) return 0;
    auto index = static_cast<std::size_t>(behind - elements.begin()) - 1;
    while (index != 0 && elements[index].block.end <= offset) index = elements[index].parent;
    return index;
}

// Flags, identifiers and numbers of 8 bits are read as words, texts by their quotes.
bool isOfNumbers(std::string_view type) {
    static constexpr std::array<std::string_view, 12> others{
        "Attr<bool>",        "Attr<BoolVector>", "Attr<int8_t>",    "Attr<uint8_t>",
        "Attr<Int8Vector>",  "Attr<UInt8Vector>", "Attr<Uuid>",     "Attr<UuidSet>",
        "Attr<UuidVector>",  "Attr<StringArray>", "Attr<StringSet>", "Attr<String>"};
    return std::find(others.begin(), others.end(), type) == others.end();
}

Outline readOutline(const SourceFile& source) {
    return OutlineReader(source).read();
}

}  // namespace qormodel
