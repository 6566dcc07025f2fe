#include "store/StoreText.h"

#include <QOR/Text.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace qormodel {

namespace {
struct TypeWord {
    const char* word;
    unsigned long type;
};
constexpr std::array<TypeWord, 7> typeWords{{{"none", TypeNone},
                                             {"text", keystore::TypeText},
                                             {"expand", keystore::TypeExpandText},
                                             {"binary", keystore::TypeBinary},
                                             {"dword", TypeDword},
                                             {"multi", keystore::TypeMultiText},
                                             {"qword", TypeQword}}};

constexpr std::size_t maxShown = 80;

std::string hexOf(const std::vector<unsigned char>& data, std::size_t limit) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < data.size() && text.size() < limit; ++i) {
        if (i > 0) text += ' ';
        text += digits[data[i] >> 4];
        text += digits[data[i] & 15];
    }
    return text;
}

std::wstring charactersOf(const StoredValue& value) {
    return joinPairs(keystore::dataToText(value.data.data(), value.data.size()));
}

template <class T> std::optional<T> parseNumber(std::string_view text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    if (isHex) text.remove_prefix(2);
    T number{};
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, isHex ? 16 : 10);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

template <class T> StoredValue parseNumberOf(const std::string& text, unsigned long type) {
    const auto number = parseNumber<T>(text);
    if (!number)
        throw Failure('"' + text + "\" is no value of type " + typeWordOf(type) +
                      ": expected a whole number from 0 to " +
                      std::to_string(std::numeric_limits<T>::max()) + ", or 0x and its digits");
    return numberValue(*number, type, sizeof(T));
}

StoredValue parseBytes(const std::string& text, unsigned long type) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits),
                         [](char each) { return each != ' ' && each != ','; });
    StoredValue value{type, {}};
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        unsigned char byte = 0;
        const char* const begin = digits.data() + i;
        const auto [end, error] =
            std::from_chars(begin, digits.data() + std::min(i + 2, digits.size()), byte, 16);
        if (error != std::errc{} || end != begin + 2)
            throw Failure('"' + text + "\" is no value of type " + typeWordOf(type) +
                          ": expected pairs of hexadecimal digits");
        value.data.push_back(byte);
    }
    return value;
}

std::vector<std::wstring> linesOf(const std::string& text) {
    std::vector<std::wstring> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (end == begin)
            throw Failure("a list has no empty texts, since one ends it: line " +
                          std::to_string(lines.size() + 1) + " is empty");
        lines.push_back(storeName(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return lines;
}
}  // namespace

std::string typeWordOf(unsigned long type) {
    const auto found = std::ranges::find(typeWords, type, &TypeWord::type);
    return found != typeWords.end() ? found->word : std::to_string(type);
}

unsigned long typeOfWord(const std::string& word) {
    for (const auto& each : typeWords)
        if (word == each.word) return each.type;
    if (const auto number = parseNumber<std::uint32_t>(word)) return *number;
    throw Failure('"' + word +
                  "\" is no type: expected text, expand, multi, dword, qword, binary, none or a "
                  "number");
}

std::optional<std::wstring> inqText(const StoredValue& value) {
    const bool isText = value.type == keystore::TypeText || value.type == keystore::TypeExpandText;
    if (!isText || value.data.size() % 2 != 0) return std::nullopt;
    std::wstring text = charactersOf(value);
    if (text.ends_with(L'\0')) text.pop_back();
    return text;
}

std::optional<std::vector<std::wstring>> inqTexts(const StoredValue& value) {
    if (value.type != keystore::TypeMultiText || value.data.size() % 2 != 0) return std::nullopt;
    std::wstring text = charactersOf(value);
    if (text.ends_with(L'\0')) text.pop_back();  // that of the list
    std::vector<std::wstring> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\0', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::optional<std::uint64_t> inqNumber(const StoredValue& value) {
    const bool isWhole = (value.type == TypeDword && value.data.size() == 4) ||
                         (value.type == TypeQword && value.data.size() == 8);
    if (!isWhole) return std::nullopt;
    std::uint64_t number = 0;
    for (std::size_t i = value.data.size(); i-- > 0;) number = number << 8 | value.data[i];
    return number;
}

std::string onOneLine(const std::string& text) {
    std::string line;
    for (const char character : text) {
        std::string shown(1, character);
        if (character != '\\') QOR::controlsToEsc(shown, false);
        line += shown;
    }
    return line;
}

std::string valueText(const StoredValue& value) {
    if (const auto text = inqText(value)) return nameText(*text);
    if (const auto number = inqNumber(value)) return std::to_string(*number);
    if (const auto texts = inqTexts(value)) {
        std::string lines;
        for (const auto& each : *texts) lines += (lines.empty() ? "" : "\n") + nameText(each);
        return lines;
    }
    return hexOf(value.data, std::string::npos);
}

std::string shortText(const StoredValue& value) {
    const bool isBytes = !inqText(value) && !inqNumber(value) && !inqTexts(value);
    std::string text = isBytes ? hexOf(value.data, 2 * maxShown) : valueText(value);
    std::size_t length = maxShown;
    if (text.size() > length + 20) {
        while (length > 0 && (text[length] & 0xC0) == 0x80) --length;  // inside a character
        text = text.substr(0, length) + "...";
    }
    return onOneLine(text);
}

Json valueJson(const StoredValue& value) {
    if (const auto text = inqText(value)) return nameText(*text);
    if (const auto number = inqNumber(value)) return *number;
    if (const auto texts = inqTexts(value)) {
        Json lines = Json::array();
        for (const auto& each : *texts) lines.push_back(nameText(each));
        return lines;
    }
    return hexOf(value.data, std::string::npos);
}

StoredValue textValue(const std::wstring& text, unsigned long type) {
    StoredValue value{type, keystore::textToData(text)};
    value.data.insert(value.data.end(), 2, 0);
    return value;
}

StoredValue textsValue(const std::vector<std::wstring>& texts) {
    std::wstring all;
    for (const auto& each : texts) all += each + L'\0';
    return textValue(all, keystore::TypeMultiText);
}

StoredValue numberValue(std::uint64_t number, unsigned long type, std::size_t size) {
    StoredValue value{type, {}};
    for (std::size_t i = 0; i < size; ++i)
        value.data.push_back(static_cast<unsigned char>(number >> 8 * i & 0xff));
    return value;
}

StoredValue parseStored(const std::string& text, unsigned long type) {
    switch (type) {
        case keystore::TypeText:
        case keystore::TypeExpandText: return textValue(storeName(text), type);
        case keystore::TypeMultiText: return textsValue(linesOf(text));
        case TypeDword: return parseNumberOf<std::uint32_t>(text, type);
        case TypeQword: return parseNumberOf<std::uint64_t>(text, type);
        default: return parseBytes(text, type);
    }
}

}  // namespace qormodel
