#include "persistence/NumberText.h"

#include "persistence/DecimalPowers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

// Where a number of 128 bits can be had, most numbers need no general conversion. Digits are put
// down eight at a time, in the order of the bytes of a word.
#if defined(__SIZEOF_INT128__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
#define QOR_EXACT_DIGITS
#endif

namespace QOR::AttributeContainer {

namespace {

int digitRuleOfLogarithm(double logarithm) {
    return logarithm < 0 ? 8 : static_cast<int>(std::ceil(logarithm)) + 9;
}

char* anyNumberToText(char* to, double number, int precision) {
    return std::to_chars(to, to + maxNumberText, number, std::chars_format::general, precision).ptr;
}

#ifdef QOR_EXACT_DIGITS
__extension__ typedef unsigned __int128 Uint128;

constexpr int mostDecimals = 16;

constexpr auto digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// The eight decimal digits of a number below 10^8, one a byte, the first in the lowest byte. The
// halves, then the pairs, then the digits are split side by side in one word; the multiplications
// with a shift are divisions by 100 and 10 that are exact for these ranges.
std::uint64_t eightDigits(std::uint64_t number) {
    const std::uint64_t halves = number / 10'000 | number % 10'000 << 32;
    const std::uint64_t hundreds = ((halves * 10'486) >> 20) & 0x0000'007f'0000'007f;
    const std::uint64_t pairs = hundreds | (halves - 100 * hundreds) << 16;
    const std::uint64_t tens = ((pairs * 103) >> 10) & 0x000f'000f'000f'000f;
    return tens | (pairs - 10 * tens) << 8;
}

void storeDigits(char* to, std::uint64_t digits) {
    digits |= 0x3030'3030'3030'3030;
    std::memcpy(to, &digits, sizeof digits);
}

char* wholeToText(char* to, std::uint64_t number) {
    if (number >= 100) return std::to_chars(to, to + 20, number).ptr;
    const bool hasTens = number >= 10;
    std::memcpy(to, &digitPairs[2 * number + (hasTens ? 0 : 1)], 2);
    return to + 1 + hasTens;
}

// The digits behind the point, with no zeros at the end. `fraction` counts units of 10^-16 and is
// not 0.
char* fractionToText(char* to, std::uint64_t fraction) {
    const std::uint64_t first = eightDigits(fraction / 100'000'000);
    const std::uint64_t last = eightDigits(fraction % 100'000'000);
    storeDigits(to, first);
    storeDigits(to + 8, last);
    return last != 0 ? to + 16 - std::countl_zero(last) / 8 : to + 8 - std::countl_zero(first) / 8;
}

// magnitude * 10^decimals to the nearest whole number, ties to the even one, which is what printf
// does in the usual rounding mode. Exact: the mantissa has 53 bits and 10^16 has 54.
std::uint64_t scaled(double magnitude, int decimals) {
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const std::uint64_t mantissa = (bits & 0xf'ffff'ffff'ffff) | 0x10'0000'0000'0000;
    const int shift = 1075 - static_cast<int>(bits >> 52);  // 26 to 66 from 1e-4 to 1e15
    const Uint128 product = static_cast<Uint128>(mantissa) * wholePowersOfTen[decimals];
    const Uint128 doubled = product >> (shift - 1);
    const auto roundedUp = static_cast<std::uint64_t>((doubled + 1) >> 1);
    const bool isHalf = (doubled & 1) != 0 && (product & ((Uint128{1} << (shift - 1)) - 1)) == 0;
    return isHalf ? roundedUp & ~std::uint64_t{1} : roundedUp;
}
#endif

// The text of a number with no point in it and the exponent set right for that, since the point is
// all that strtod reads by the locale.
std::string withoutPoint(std::string_view text) {
    constexpr std::int64_t enough = 1'000'000'000'000;  // more digits than any text has
    std::string digits;
    std::int64_t exponent = 0;
    std::size_t i = 0;
    bool behindPoint = false;
    for (; i < text.size() && text[i] != 'e' && text[i] != 'E'; ++i) {
        if (text[i] == '.') {
            behindPoint = true;
        } else {
            digits += text[i];
            exponent -= behindPoint;
        }
    }
    if (i < text.size()) {
        const bool negative = text[++i] == '-';
        if (negative || text[i] == '+') ++i;
        std::int64_t written = 0;
        for (; i < text.size(); ++i) written = std::min(written * 10 + (text[i] - '0'), enough);
        exponent += negative ? -written : written;
    }
    return digits + 'e' + std::to_string(exponent);
}

// The road for numbers near the ends of the range, where strtod tells which of them count as out
// of range. `text` is a whole number text.
NumberFromText extremeNumber(std::string_view text) {
    const int savedErrno = errno;
    errno = 0;
    NumberFromText result;
    result.number = std::strtod(withoutPoint(text).c_str(), nullptr);
    result.end = text.data() + text.size();
    result.outOfRange = errno == ERANGE;
    errno = savedErrno;
    return result;
}

}  // namespace

int digitRule(double number) {
    const double magnitude = std::fabs(number);
    if (magnitude == 0) return 1;
    // Well away from a power of ten every logarithm, however rounded, lies between the same two
    // whole numbers. Close to one the function itself must tell to which side it falls.
    constexpr double close = 1e-9;
    if (magnitude < 1 - close) return 8;
    if (magnitude >= 1e22) return digitRuleOfLogarithm(std::log10(magnitude));
    const int exponent = decimalExponent(magnitude);
    if (magnitude > powerOfTen(exponent) * (1 + close) &&
        magnitude < powerOfTen(exponent + 1) * (1 - close))
        return exponent + 10;
    return digitRuleOfLogarithm(std::log10(magnitude));
}

char* numberToText(char* to, double number, int precision) {
#ifdef QOR_EXACT_DIGITS
    const double magnitude = std::fabs(number);
    *to = '-';
    if (magnitude == 0) {
        to += std::signbit(number);
        *to = '0';
        return to + 1;
    }
    // In this range the general notation has no exponent. Rounding may carry into one more digit
    // before the point, but then only zeros stand behind it, and they are not written.
    if (!(magnitude >= 1e-4 && magnitude < 1e15)) return anyNumberToText(to, number, precision);
    const int decimals = precision - 1 - decimalExponent(magnitude);
    if (decimals < 1 || decimals > mostDecimals || precision > 18)
        return anyNumberToText(to, number, precision);

    to += std::signbit(number);
    const std::uint64_t digits = scaled(magnitude, decimals);
    auto whole = static_cast<std::uint64_t>(magnitude);
    std::uint64_t fraction = digits - whole * wholePowersOfTen[decimals];
    if (fraction == wholePowersOfTen[decimals]) {
        ++whole;
        fraction = 0;
    }
    to = wholeToText(to, whole);
    if (fraction == 0) return to;
    *to++ = '.';
    return fractionToText(to, fraction * wholePowersOfTen[mostDecimals - decimals]);
#else
    return anyNumberToText(to, number, precision);
#endif
}

NumberFromText textToNumber(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* begin = text.data();
    if (!text.empty() && text.front() == '+') ++begin;  // from_chars knows no plus
    NumberFromText result;
    result.end = text.data();
    if (begin == end || (begin != text.data() && *begin == '-')) return result;

    const auto [behind, error] = std::from_chars(begin, end, result.number);
    if (error == std::errc::invalid_argument) return result;
    result.end = behind;
    const double magnitude = std::fabs(result.number);
    const bool ordinary = magnitude > std::numeric_limits<double>::min() || magnitude == 0;
    if (error == std::errc{} && ordinary) return result;
    return extremeNumber({text.data(), static_cast<std::size_t>(behind - text.data())});
}

std::optional<std::int64_t> textToSigned(std::string_view text) {
    if (text.starts_with("+") && !text.starts_with("+-")) text.remove_prefix(1);
    std::int64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc{}) return std::nullopt;
    return number;
}

std::optional<std::uint64_t> textToUnsigned(std::string_view text) {
    const bool negative = text.starts_with("-");
    if (negative || text.starts_with("+")) text.remove_prefix(1);
    std::uint64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc{}) return std::nullopt;
    return negative ? 0 - number : number;
}

}  // namespace QOR::AttributeContainer
