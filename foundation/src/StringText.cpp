#include <QOR/StringText.h>

#include <QOR/Text.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace QOR {

namespace {

template <class Integer> void takeNumber(std::string& text, Integer& value) {
    std::size_t position = 0;
    while (position < text.size() && isWhiteSpace(text[position])) ++position;
    const bool negative = position < text.size() && text[position] == '-';
    if (negative || (position < text.size() && text[position] == '+')) ++position;
    if (position == text.size() || !isDigit(text[position])) return;

    // Beyond the range of any target, so that a number with more digits has no need to grow
    // further.
    constexpr long long enough = 1'000'000'000'000;
    long long number = 0;
    for (; position < text.size() && isDigit(text[position]); ++position)
        number = std::min(number * 10 + (text[position] - '0'), enough);

    using Limits = std::numeric_limits<Integer>;
    value = static_cast<Integer>(
        std::clamp<long long>(negative ? -number : number, Limits::min(), Limits::max()));
    text.erase(0, position);
}

}  // namespace

std::string& operator<<(std::string& text, const char* value) {
    if (value) text += value;
    return text;
}

std::string& operator<<(std::string& text, const std::string& value) { return text += value; }

std::string& operator<<(std::string& text, const uuids::uuid& value) {
    return text += value.toString();
}

std::string& operator<<(std::string& text, const JsonValue& value) { return text += value.text; }

std::string& operator<<(std::string& text, const std::map<std::string, std::string>& value) {
    text += '{';
    const char* separator = "";
    for (const auto& [key, entry] : value) {
        text.append(separator).append(key).append("=").append(entry);
        separator = ", ";
    }
    return text += '}';
}

std::string& operator>>(std::string& text, char& value) {
    const int position = findNonWS(text, 0);
    if (position < 0) return text;
    value = text[static_cast<std::size_t>(position)];
    return text.erase(0, static_cast<std::size_t>(position) + 1);
}

std::string& operator>>(std::string& text, signed char& value) {
    takeNumber(text, value);
    return text;
}

std::string& operator>>(std::string& text, unsigned char& value) {
    takeNumber(text, value);
    return text;
}

std::string& operator>>(std::string& text, int& value) {
    takeNumber(text, value);
    return text;
}

}  // namespace QOR
