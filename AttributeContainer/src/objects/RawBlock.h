// The text of a block that nobody here understands.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

namespace QOR::AttributeContainer {

/// The text of a block as it stands in a stream, without the brace that ends it.
struct RawBlock {
    static constexpr std::size_t noContainer = std::string::npos;

    std::string text;
    std::size_t containerBegin = noContainer;  // where the first "AttrContainer" of its own stands
    bool isEnded = false;                      // false where the input ended inside the block

    /// Reads on from `beginning`, the word that was taken from the block already, up to and with
    /// the brace that ends the block. Braces in quotes do not count. Costs the length of the text.
    static RawBlock read(std::string beginning, std::istream& stream);
};

}  // namespace QOR::AttributeContainer
