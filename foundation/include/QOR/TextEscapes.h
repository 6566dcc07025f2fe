// What of a text must be escaped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace QOR {

/// Whether `controlsToEsc` with quotes would change the character.
constexpr bool needsEscape(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7f || byte == '\\' || byte == '"';
}

/// Whether `controlsToEsc` with quotes would change the text. Looks at eight characters at once.
inline bool needsEscapes(std::string_view text) {
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t highBits = ones * 0x80;
    const auto anyBelow = [](std::uint64_t bytes, std::uint64_t limit) {
        return (bytes - ones * limit) & ~bytes & highBits;
    };
    std::size_t i = 0;
    for (std::uint64_t bytes; i + sizeof bytes <= text.size(); i += sizeof bytes) {
        std::memcpy(&bytes, text.data() + i, sizeof bytes);
        if ((anyBelow(bytes, 0x20) | anyBelow(bytes ^ (ones * 0x7f), 1) |
             anyBelow(bytes ^ (ones * '\\'), 1) | anyBelow(bytes ^ (ones * '"'), 1)) != 0)
            return true;
    }
    for (; i < text.size(); ++i)
        if (needsEscape(text[i])) return true;
    return false;
}

}  // namespace QOR
