#include "store/RegEncoding.h"

#include <algorithm>
#include <array>

namespace qormodel {

namespace {
// The characters of the bytes 0x80 to 0x9F; all others are the characters of their own number. The
// five bytes without a character stand for the control characters of their number.
constexpr std::array<wchar_t, 32> special{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
}  // namespace

std::wstring fromCodePage(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        text += byte >= 0x80 && byte < 0xA0 ? special[byte - 0x80] : static_cast<wchar_t>(byte);
    }
    return text;
}

std::optional<std::string> toCodePage(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        const bool isOwnNumber = character < 0x80 || (character >= 0xA0 && character <= 0xFF);
        const auto* const found = std::ranges::find(special, character);
        if (!isOwnNumber && found == special.end()) return std::nullopt;
        bytes += static_cast<char>(isOwnNumber ? character : 0x80 + (found - special.begin()));
    }
    return bytes;
}

}  // namespace qormodel
