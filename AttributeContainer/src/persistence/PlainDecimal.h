// Numbers of the plain form that nearly all numbers have: a minus, digits, a point, digits.
#pragma once

#include "persistence/DecimalPowers.h"

#include <bit>
#include <cfloat>
#include <cstdint>
#include <cstring>
#include <streambuf>

namespace QOR::AttributeContainer {

/// The digits of a plain decimal as a whole number, and how many of them stand behind the point.
struct PlainDecimal {
    static constexpr int mostDigits = 19;
    static constexpr int mostCharacters = mostDigits + 2;

    std::uint64_t digits = 0;
    int numDigits = 0;
    int numDecimals = 0;
    bool isNegative = false;

    /// Whether digits and power of ten are exact in a double, so that their quotient is the nearest
    /// number to the decimal.
    bool isExact() const {
        return FLT_EVAL_METHOD == 0 && numDigits > 0 && digits <= std::uint64_t{1} << 53;
    }

    /// The number, if `isExact`.
    double value() const {
        const double magnitude = static_cast<double>(digits) / powerOfTen(numDecimals);
        return isNegative ? -magnitude : magnitude;
    }

    /// Moves the cursor over what can be part of a plain decimal, mostCharacters at most.
    template <class Cursor> static PlainDecimal take(Cursor& cursor);
};

template <class Cursor> PlainDecimal PlainDecimal::take(Cursor& cursor) {
    std::uint64_t digits = 0;  // apart from the result, so that it can stay in a register
    int numLeft = mostDigits;
    const auto takeDigits = [&] {
        for (; numLeft > 0; --numLeft) {
            const auto digit = static_cast<unsigned>(cursor.current() - '0');
            if (digit > 9) return;
            digits = digits * 10 + digit;
            cursor.advance();
        }
    };

    const bool isNegative = cursor.current() == '-';
    if (isNegative) cursor.advance();
    takeDigits();
    const int numLeftForDecimals = numLeft;
    if (cursor.current() == '.') {
        cursor.advance();
        if constexpr (requires { cursor.takeEightDigits(digits); })
            if (numLeft >= 8 && cursor.takeEightDigits(digits)) numLeft -= 8;
        takeDigits();
    }
    return {digits, mostDigits - numLeft, numLeftForDecimals - numLeft, isNegative};
}

/// Goes over characters in memory, of which there must be one more than it takes.
struct MemoryCursor {
    const char* at;

    int current() const { return static_cast<unsigned char>(*at); }
    void advance() { ++at; }

    /// Takes the next eight characters if they are digits, and appends them to `digits`.
    bool takeEightDigits(std::uint64_t& digits) {
        if (std::endian::native != std::endian::little) return false;
        std::uint64_t word;  // the first digit in its lowest byte
        std::memcpy(&word, at, sizeof word);
        constexpr std::uint64_t zeros = 0x3030'3030'3030'3030;
        constexpr std::uint64_t highHalves = 0xf0f0'f0f0'f0f0'f0f0;
        const bool areDigits =
            (word & highHalves) == zeros && ((word + 0x0606'0606'0606'0606) & highHalves) == zeros;
        if (!areDigits) return false;
        // Neighbours join to pairs, then to fours, then to the number.
        word -= zeros;
        word = (word * 10 + (word >> 8)) & 0x00ff'00ff'00ff'00ff;
        word = (word * 100 + (word >> 16)) & 0x0000'ffff'0000'ffff;
        word = (word * 10'000 + (word >> 32)) & 0xffff'ffff;
        digits = digits * 100'000'000 + word;
        at += 8;
        return true;
    }
};

/// Goes over the characters of a stream buffer and keeps what it takes.
struct BufferCursor {
    std::streambuf& buffer;
    char* takenEnd;  // there must be room for what it takes
    int character = buffer.sgetc();

    int current() const { return character; }
    void advance() {
        *takenEnd++ = static_cast<char>(character);
        character = buffer.snextc();
    }
};

}  // namespace QOR::AttributeContainer
