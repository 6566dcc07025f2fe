// Numbers and their text, apart from any stream: how many digits, number to text, text to number.
#pragma once

#include <AttributeContainer/Export.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace QOR::AttributeContainer {

// The names below are exported for the tests only.

/// The precision that the model stream gives a finite number: 1 for 0, 8 below 1, and otherwise
/// nine digits more than the decimal logarithm, rounded up. It never falls as |number| grows, so
/// that the largest of several numbers answers for all. Costs a logarithm only close to a power of
/// ten and from 1e22 on.
QOR_API int digitRule(double number);

/// Room that numberToText needs: 309 digits of the largest number and a sign, and what is written
/// ahead in blocks.
inline constexpr std::size_t maxNumberText = 352;

/// Writes `number` to `to` as a stream in the classic locale does in its general notation: the
/// bytes of printf's "%.*g", where precision 0 counts as 1.
/// \param to has room for maxNumberText characters, all of which may be written.
/// \param precision 0 to 318
/// \return the end of the text.
QOR_API char* numberToText(char* to, double number, int precision);

/// What stands at the front of a text.
struct NumberFromText {
    double number = 0;
    const char* end = nullptr;  ///< behind the number; the start of the text if there is none
    bool outOfRange = false;    ///< the number is too large or too close to 0 to be exact
};

/// Converts the longest front of the text that is a number, as strtod in the "C" locale does, but
/// whatever the locale of the program is. The text consists of number characters (digits, signs,
/// points, `e` and `E`). Leaves errno as it was.
QOR_API NumberFromText textToNumber(std::string_view text);

/// Converts the decimal number at the front of a text of number characters, as strtoll does.
/// \return empty if there is none or if it is out of range.
QOR_API std::optional<std::int64_t> textToSigned(std::string_view text);

/// The same for strtoull: a number with a minus counts back from 2^64.
QOR_API std::optional<std::uint64_t> textToUnsigned(std::string_view text);

}  // namespace QOR::AttributeContainer
