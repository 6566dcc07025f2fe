// Values to the end of a text, and from its front: `<<` and `>>` on strings.
#pragma once

#include <QOR/Export.h>
#include <QOR/JsonValue.h>
#include <QOR/Uuid.h>

#include <concepts>
#include <map>
#include <string>

namespace QOR {

// The forms for one character and for a truth value take no other type: a number or a pointer would
// otherwise turn into one of them unseen.

/// Appends the character and returns `text`, as all these operators do.
template <std::same_as<char> Character>
std::string& operator<<(std::string& text, const Character& value) {
    return text += value;
}

/// Appends "true" or "false".
template <std::same_as<bool> Bool> std::string& operator<<(std::string& text, const Bool& value) {
    return text += value ? "true" : "false";
}

/// Appends the characters up to the terminating zero; null appends nothing.
QOR_API std::string& operator<<(std::string& text, const char* value);

/// Appends the text.
QOR_API std::string& operator<<(std::string& text, const std::string& value);

/// Appends the textual form of the uuid.
QOR_API std::string& operator<<(std::string& text, const uuids::uuid& value);

/// Appends the document's text.
QOR_API std::string& operator<<(std::string& text, const JsonValue& value);

/// Appends the entries for people to read, as in "{a=1, b=2}".
QOR_API std::string& operator<<(std::string& text, const std::map<std::string, std::string>& value);

/// Removes leading white space and one character from the front of `text` and stores the character.
/// With nothing but white space left, neither changes. Returns `text`, as all these operators do.
QOR_API std::string& operator>>(std::string& text, char& value);

/// Removes leading white space and a decimal number with an optional sign from the front of `text`
/// and stores the number, the nearest one that the type holds if it is out of range. Where no
/// number stands in front, neither changes.
QOR_API std::string& operator>>(std::string& text, signed char& value);
/// \copydoc operator>>(std::string&, signed char&)
QOR_API std::string& operator>>(std::string& text, unsigned char& value);
/// \copydoc operator>>(std::string&, signed char&)
QOR_API std::string& operator>>(std::string& text, int& value);

}  // namespace QOR

namespace QOR::uuids {

using QOR::operator<<;  // found with the value, from any namespace

}  // namespace QOR::uuids
