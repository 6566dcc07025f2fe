// Hexadecimal digits, as uuids and escape sequences spell their bytes.
#pragma once

namespace QOR {

inline constexpr char hexDigits[] = "0123456789abcdef";

/// The value of a hexadecimal digit of either case; -1 for any other character.
constexpr int hexValue(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    if (character >= 'a' && character <= 'f') return character - 'a' + 10;
    if (character >= 'A' && character <= 'F') return character - 'A' + 10;
    return -1;
}

}  // namespace QOR
