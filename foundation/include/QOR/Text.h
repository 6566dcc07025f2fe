// Helpers for text: searching, escaping, names that count up, wide text.
//
// Letters, digits and white space are those of ASCII, whatever the locale: stored documents must
// not read differently from one machine to the next. Positions and results are `int`; a negative
// `start` counts as 0.
#pragma once

#include <QOR/Export.h>

#include <iosfwd>
#include <optional>
#include <string>

namespace QOR {

/// True for a blank, tab, line feed, vertical tab, form feed and carriage return.
constexpr bool isWhiteSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// True for '0' to '9'.
constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// True for a character that can stand in a number: a digit, '+', '-', '.', 'e' and 'E'.
constexpr bool isValidNumberChar(const char& character) {
    return isDigit(character) || character == '+' || character == '-' || character == '.' ||
           character == 'e' || character == 'E';
}

/// The character that ends a quoted string.
template <class Character> constexpr Character getStringEnd() {
    return static_cast<Character>('"');
}

/// What a stream does where its buffer throws, for operations that read or write the buffer
/// themselves: the stream gets its bad bit, and the exception goes on only if `exceptions()` of the
/// stream asks for that bit. To be called in the handler that caught the exception.
QOR_API void takeAsBad(std::ios& stream);

/// Skips white space. At the end of the input the stream gets its end bit, but not its fail bit; a
/// stream that is not good is left alone, and one whose buffer throws becomes bad.
QOR_API std::istream& eatWS(std::istream& stream);

/// Reads one word that ends at white space. The optional is empty, and the fail bit set, if the
/// stream has none. It is empty too where the buffer throws, which makes the stream bad: part of a
/// word is none.
QOR_API std::istream& operator>>(std::istream& stream, std::optional<std::string>& word);

/// Writes a wide text as UTF-8, with '?' for what is no valid wide text. Null writes nothing.
QOR_API std::ostream& operator<<(std::ostream& stream, const wchar_t* text);

/// Puts escape sequences in place of what cannot stand in a quoted text: "\n", "\r", "\t", "\\",
/// and a backslash, 'x' and two hexadecimal digits for every other control character (0 to 31 and
/// 127). Any other byte stays.
/// \param quotes also put "\"" for a quote. The result can then stand between quotes.
QOR_API void controlsToEsc(std::string& text, bool quotes);

/// The reverse of controlsToEsc with the same argument: any text comes back as it was. A backslash
/// that begins none of the sequences stays.
/// \return the number of sequences that were replaced.
QOR_API int escToControls(std::string& text, bool quotes);

/// Replaces every occurrence of `from`, from the left; what was put in is not searched again. An
/// empty `from` changes nothing. Costs one walk over the text.
QOR_API void replaceAll(std::string& text, const std::string& from, const std::string& to);

/// Compares with 'A' to 'Z' taken as 'a' to 'z', and otherwise by the bytes as unsigned numbers.
/// \return 0 if the two are equal, a negative number if `left` comes first, else a positive one.
QOR_API int compareIgnoreCase(const std::string& left, const std::string& right);

/// The position of the first character at or after `start` that is no white space; -1 if there is
/// none.
QOR_API int findNonWS(const std::string& text, int start);

/// The position of the first letter or digit at or after `start`; -1 if there is none.
QOR_API int findAlphaNum(const std::string& text, int start);

/// The position of the last character that stands in `set`; -1 if there is none.
QOR_API int findLastOf(const std::string& text, const std::string& set);

/// Counts up the number that the name's last digits make, or appends "1" if it ends in none.
/// Leading zeros stay as long as there is room: "a" to "a1", "a9" to "a10", "a09" to "a10", "a099"
/// to "a100". The number may have any length.
QOR_API void incrementIndex(std::string& name);

/// Wide text as UTF-8, with `replacement` for each unit that is no valid wide text. Where a unit
/// can hold a whole character, pairs of surrogates are understood all the same.
QOR_API std::string narrow(const std::wstring& text, char replacement);

/// UTF-8 as wide text, with the replacement character U+FFFD for each byte that begins no valid
/// sequence.
QOR_API std::wstring wide(const std::string& text);

}  // namespace QOR
