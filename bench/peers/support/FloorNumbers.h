// The floor's own numbers as text: apart from the library's, so that it stays as it is when they
// change.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace bench::text {

// The number of digits.
// -----------------------------------------------------------------------------

/// 1 for 0, 8 below 1, and else the power of ten that is not below the number, and 9.
inline int digitsByLogarithm(double number) {
    if (number == 0) return 1;
    const double logarithm = std::log10(std::fabs(number));
    return logarithm < 0 ? 8 : static_cast<int>(std::ceil(logarithm)) + 9;
}

/// Where the rule changes, found once by asking the logarithm itself.
struct DigitBounds {
    double one = 1;                      // the smallest number whose logarithm is not below 0
    std::array<double, 309> greatest{};  // the greatest whose logarithm is not above the index
    DigitBounds() {
        while (std::log10(std::nextafter(one, 0.0)) >= 0) one = std::nextafter(one, 0.0);
        for (int k = 0; k < 309; ++k) {
            double bound = std::pow(10.0, k);
            while (std::log10(bound) > k) bound = std::nextafter(bound, 0.0);
            for (double next = std::nextafter(bound, HUGE_VAL);
                 std::isfinite(next) && std::log10(next) <= k;
                 next = std::nextafter(bound, HUGE_VAL))
                bound = next;
            greatest[static_cast<std::size_t>(k)] = bound;
        }
    }
};
inline const DigitBounds digitBounds;

/// The same as by the logarithm.
inline int digitsOf(double number) {
    const double size = std::fabs(number);
    if (size == 0) return 1;
    if (size < digitBounds.one) return 8;
    std::size_t k = 0;
    while (k < 308 && size > digitBounds.greatest[k]) ++k;
    return size > digitBounds.greatest[k] ? 318 : static_cast<int>(k) + 9;
}

// Numbers to text.
// ----------------------------------------------------------------------------------

/// Writes to `to`, which has room for all there can be. \return the end, here and below.
inline char* putByToChars(char* to, double number, int digits) {
    return std::to_chars(to, to + 400, number, std::chars_format::general, digits).ptr;
}

__extension__ using Wide = unsigned __int128;

inline constexpr auto powersOfTen = [] {
    std::array<std::uint64_t, 20> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = 10 * powers[i - 1];
    return powers;
}();
inline constexpr double powersFromMinus5[] = {1e-5, 1e-4, 1e-3, 1e-2, 1e-1, 1e0,  1e1,
                                              1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,
                                              1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
inline constexpr auto digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// Eight decimal digits, one in each byte, the first in the lowest.
inline std::uint64_t eightDigits(std::uint32_t number) {
    const std::uint64_t fours = (number / 10000) | static_cast<std::uint64_t>(number % 10000) << 32;
    const std::uint64_t hundreds = ((fours * 10486) >> 20) & 0x0000'007f'0000'007f;
    const std::uint64_t twos = hundreds | (fours - 100 * hundreds) << 16;
    const std::uint64_t tens = ((twos * 103) >> 10) & 0x000f'000f'000f'000f;
    return tens | (twos - 10 * tens) << 8;
}

inline char* putWhole(char* to, std::uint64_t number) {
    char digits[20];
    std::size_t start = sizeof digits;
    for (; number >= 100; number /= 100)
        std::memcpy(digits + (start -= 2), &digitPairs[2 * (number % 100)], 2);
    if (number >= 10) std::memcpy(digits + (start -= 2), &digitPairs[2 * number], 2);
    else digits[--start] = static_cast<char>('0' + number);
    std::memcpy(to, digits + start, sizeof digits - start);
    return to + (sizeof digits - start);
}

/// What stands behind the point, without its last zeros.
inline char* putDecimals(char* to, std::uint64_t decimals, int count) {
    decimals *= powersOfTen[static_cast<std::size_t>(16 - count)];  // to the left of 16 places
    const std::uint64_t first = eightDigits(static_cast<std::uint32_t>(decimals / 100'000'000));
    const std::uint64_t last = eightDigits(static_cast<std::uint32_t>(decimals % 100'000'000));
    const std::uint64_t letters[] = {first | 0x3030'3030'3030'3030, last | 0x3030'3030'3030'3030};
    std::memcpy(to, letters, 16);
    return to + (last ? 16 - std::countl_zero(last) / 8 : 8 - std::countl_zero(first) / 8);
}

/// The same text, for the numbers that are common here by way of 128-bit integers: exact, and ties
/// go to the even one.
inline char* putExact(char* to, double number, int digits) {
    const double size = std::fabs(number);
    if (size == 0) {
        if (std::signbit(number)) *to++ = '-';
        *to++ = '0';
        return to;
    }
    if (!(size >= 1e-4 && size < 1e15)) return putByToChars(to, number, digits);
    const auto bits = std::bit_cast<std::uint64_t>(size);
    const int exponent = static_cast<int>(bits >> 52);
    int power = ((exponent - 1023) * 1233) >> 12;  // of ten; one too small at most
    if (size >= powersFromMinus5[power + 6]) ++power;
    const int numDecimals = digits - 1 - power;
    const int shift = 1075 - exponent;
    if (numDecimals < 1 || numDecimals > 16 || digits < 1 || digits > 18 || shift < 1 ||
        shift > 116)
        return putByToChars(to, number, digits);

    const std::uint64_t scale = powersOfTen[static_cast<std::size_t>(numDecimals)];
    const std::uint64_t mantissa = (bits & 0xf'ffff'ffff'ffff) | 0x10'0000'0000'0000;
    const Wide product = static_cast<Wide>(mantissa) * scale;
    const Wide doubled = product >> (shift - 1);
    auto rounded = static_cast<std::uint64_t>((doubled + 1) >> 1);
    const bool isTie =
        (doubled & 1) != 0 && (product & ((static_cast<Wide>(1) << (shift - 1)) - 1)) == 0;
    if (isTie && rounded % 2 == 1) --rounded;

    if (std::signbit(number)) *to++ = '-';
    auto whole = static_cast<std::uint64_t>(size);
    std::uint64_t decimals = rounded - whole * scale;
    if (decimals == scale) {
        ++whole;
        decimals = 0;
    }
    to = putWhole(to, whole);
    if (decimals == 0) return to;
    *to++ = '.';
    return putDecimals(to, decimals, numDecimals);
}

struct ByToChars {
    static char* put(char* to, double number, int digits) {
        return putByToChars(to, number, digits);
    }
};
struct Exactly {
    static char* put(char* to, double number, int digits) { return putExact(to, number, digits); }
};

/// What is no number is written as 0.
inline double finite(double number) { return std::isfinite(number) ? number : 0.0; }

/// Three numbers with the digits of the greatest.
template <class How> char* putTriple(char* to, double x, double y, double z) {
    x = finite(x);
    y = finite(y);
    z = finite(z);
    const int digits = digitsOf(std::max({std::fabs(x), std::fabs(y), std::fabs(z)}));
    to = How::put(to, x, digits);
    *to++ = ' ';
    to = How::put(to, y, digits);
    *to++ = ' ';
    return How::put(to, z, digits);
}

/// "{ x y z x y z } "
template <class How, class P> void writeList(std::string& text, const std::vector<P>& points) {
    char chunk[1 << 14];
    char* end = chunk;
    *end++ = '{';
    for (const P& p : points) {
        if (end > chunk + sizeof chunk - 1500) {
            text.append(chunk, end);
            end = chunk;
        }
        *end++ = ' ';
        end = putTriple<How>(end, p.x, p.y, p.z);
    }
    text.append(chunk, end);
    text += " } ";
}

// Text to numbers.
// ----------------------------------------------------------------------------------

inline bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline bool isOfNumber(char c) {
    return (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.' || c == 'e' || c == 'E';
}

/// A float is held between its smallest normal and its greatest value.
template <class T> T storedAs(double number) {
    if constexpr (std::is_same_v<T, float>)
        number = std::clamp<double>(number, std::numeric_limits<float>::min(),
                                    std::numeric_limits<float>::max());
    return static_cast<T>(number);
}

template <class P> void readList(std::string_view text, std::vector<P>& points) {
    using T = decltype(P::x);
    const char* at = text.data();
    const char* const end = at + text.size();
    const auto skipBlanks = [&] {
        while (at < end && isBlank(*at)) ++at;
    };
    const auto read = [&](T& number) {
        skipBlanks();
        double found = 0;
        const char* const behind = std::from_chars(at, end, found).ptr;
        if (behind == at) return;
        at = behind;
        number = storedAs<T>(found);
    };
    points.clear();
    skipBlanks();
    if (at < end) ++at;  // the brace
    for (skipBlanks(); at < end && *at != '}'; skipBlanks()) {
        P p{};
        read(p.x);
        read(p.y);
        read(p.z);
        points.push_back(p);
    }
}

}  // namespace bench::text
