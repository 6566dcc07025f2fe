// Values of a key store as text, and values from text.
#pragma once

#include "store/StoreFile.h"
#include "terminal/JsonOutput.h"

#include <optional>
#include <string>

namespace qormodel {

/// Types of values beside those that the key store itself names.
constexpr unsigned long TypeNone = 0;
constexpr unsigned long TypeDword = 4;
constexpr unsigned long TypeQword = 11;

/// The word for a type: "none", "text", "expand", "binary", "dword", "multi", "qword", or its
/// number.
std::string typeWordOf(unsigned long type);
/// The type of such a word. \throws Failure for what is none
unsigned long typeOfWord(const std::string& word);

/// The characters of a text, without the terminator if it has one; none for other types and for
/// data that is no text, as of an odd size.
std::optional<std::wstring> inqText(const StoredValue& value);
/// The lines of a list of texts; none for what is none.
std::optional<std::vector<std::wstring>> inqTexts(const StoredValue& value);
/// The number of a dword or qword that has its size.
std::optional<std::uint64_t> inqNumber(const StoredValue& value);

/// A text with its control characters as escape sequences; a backslash stays as it is.
std::string onOneLine(const std::string& text);

/// The value for people: a text as it is, a number, the lines of a list, else its bytes in
/// hexadecimal digits.
std::string valueText(const StoredValue& value);
/// The same on one line, cut to about 80 characters.
std::string shortText(const StoredValue& value);
Json valueJson(const StoredValue& value);

/// A text with a terminator, as programs of the home platform store it.
StoredValue textValue(const std::wstring& text, unsigned long type = keystore::TypeText);
StoredValue textsValue(const std::vector<std::wstring>& texts);
/// A number of `size` bytes, the low one first.
StoredValue numberValue(std::uint64_t number, unsigned long type, std::size_t size);

/// The value that `text` stands for in a type; numbers are decimal, or hexadecimal behind "0x",
/// bytes are pairs of hexadecimal digits. \throws Failure with what was expected
StoredValue parseStored(const std::string& text, unsigned long type);

}  // namespace qormodel
