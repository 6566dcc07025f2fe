#include "survival/ValueCompare.h"

#include "outline/Scanner.h"
#include "outline/WordList.h"

#include <QOR/Text.h>
#include <QOR/Uuid.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qormodel {

namespace {
using Kind = Token::Kind;

constexpr std::size_t chunkSize = std::size_t{1} << 16;

Scanner scannerOf(const std::string& type, const SourceFile& source, const Slice& slice) {
    Scanner scanner(source, slice.begin, slice.end, slice.line);
    scanner.setBracesEndWords(isOfNumbers(type));
    return scanner;
}

bool isSameUuid(const SourceFile& a, const Slice& first, const SourceFile& b, const Slice& second) {
    const auto uuid = QOR::uuids::uuid::parse(a.slice(first.begin, first.end));
    return uuid && uuid == QOR::uuids::uuid::parse(b.slice(second.begin, second.end));
}

bool isSameText(const SourceFile& a, const Slice& first, const SourceFile& b, const Slice& second) {
    if (first.end - first.begin != second.end - second.begin) return false;
    for (std::uint64_t done = 0; done < first.end - first.begin; done += chunkSize) {
        const std::uint64_t left = first.end - first.begin - done;
        const std::uint64_t count = std::min<std::uint64_t>(chunkSize, left);
        if (a.slice(first.begin + done, first.begin + done + count) !=
            b.slice(second.begin + done, second.begin + done + count))
            return false;
    }
    return true;
}

std::optional<double> numberOf(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    if (text == "1.#INF") return std::numeric_limits<double>::infinity();
    if (text == "-1.#INF") return -std::numeric_limits<double>::infinity();
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

// Whole numbers of 64 bits, which a double does not hold.
template <class Integer>
std::optional<Integer> integerOf(std::string_view text) {
    Integer number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

bool isOfFloats(std::string_view type) {
    constexpr auto none = std::string_view::npos;
    return type.find("df>") != none || type.find("3df") != none || type.find("2df") != none;
}

bool isSameNumber(std::string_view type, std::string_view a, std::string_view b) {
    if (const auto first = integerOf<std::int64_t>(a), second = integerOf<std::int64_t>(b);
        first && second)
        return first == second;
    if (const auto first = integerOf<std::uint64_t>(a), second = integerOf<std::uint64_t>(b);
        first && second)
        return first == second;
    const auto first = numberOf(a);
    const auto second = numberOf(b);
    if (!first || !second) return false;
    if (isOfFloats(type)) return static_cast<float>(*first) == static_cast<float>(*second);
    return *first == *second;
}

bool isTrue(std::string_view text) {
    return QOR::compareIgnoreCase(std::string(text), "true") == 0;
}

bool isSameWord(const std::string& type, const std::string& a, const std::string& b) {
    if (a == b || isSameNumber(type, a, b)) return true;
    if (type == "Attr<bool>" || type == "Attr<BoolVector>") return isTrue(a) == isTrue(b);
    const auto first = QOR::uuids::uuid::parse(a);
    return first && first == QOR::uuids::uuid::parse(b);
}

std::string unescaped(std::string text) {
    QOR::escToControls(text, true);
    return text;
}

bool isSameToken(const std::string& type, const Token& a, const Token& b) {
    if (a.kind != b.kind) return false;
    if (a.kind == Kind::Word) return isSameWord(type, a.text, b.text);
    return a.kind != Kind::String || a.text == b.text || unescaped(a.text) == unescaped(b.text);
}

bool isUnordered(std::string_view type) {
    return type == "Attr<UuidSet>" || type == "Attr<StringSet>" || type == "Attr<StringMap>";
}

std::string wordOf(const Token& token) {
    if (token.kind == Kind::String) return unescaped(token.text);
    const auto uuid = QOR::uuids::uuid::parse(token.text);
    return uuid ? uuid->toString() : token.text;
}

// What a set or a map holds, in an order that is not that of its text. What comes twice shows,
// since it would not be written twice; a key with its value is one element.
std::multiset<std::string> elementsOf(const std::string& type, const SourceFile& source,
                                      const Slice& slice) {
    Scanner scanner = scannerOf(type, source, slice);
    scanner.next();  // the brace, or the number of elements
    scanner.setWordsOnly(isWordList(type));
    std::multiset<std::string> elements;
    while (true) {
        const Token& token = scanner.next();
        if (token.kind == Kind::Close || token.kind == Kind::End) break;
        std::string element = wordOf(token);
        if (type == "Attr<StringMap>") {
            scanner.next();  // the arrow
            element += '\0' + wordOf(scanner.next());
        }
        elements.insert(std::move(element));
    }
    return elements;
}

std::string textOf(const Token& token) {
    switch (token.kind) {
        case Kind::Word: return token.text;
        case Kind::String: return '"' + token.text + '"';
        case Kind::Open: return "{";
        case Kind::Close: return "}";
        case Kind::End: break;
    }
    return "";
}

std::string reasonFor(const std::string& type, const Token& before, const Token& after) {
    if (after.kind == Kind::End) return "the rest of the value is not taken over";
    const auto number = before.kind == Kind::Word ? numberOf(before.text) : std::nullopt;
    if (!number) return "the value is read as another one";
    if (!std::isfinite(*number)) return "infinities and not-a-numbers are written as 0";
    if (isOfFloats(type) && *number < std::numeric_limits<float>::min())
        return "a float is read as its smallest normal value at least";
    const auto kept = after.kind == Kind::Word ? numberOf(after.text) : std::nullopt;
    if (kept && std::abs(*kept - *number) <= 1e-7 * std::abs(*number))
        return "the number has more digits than the stream keeps";
    return "the number is no value of its type";
}
}  // namespace

std::optional<ValueDifference> compareValues(const std::string& type, const SourceFile& before,
                                             const Slice& beforeSlice, const SourceFile& after,
                                             const Slice& afterSlice) {
    if (beforeSlice.isEmpty() || afterSlice.isEmpty()) {
        const bool isDefault =
            isDefaultText(before, beforeSlice) && isDefaultText(after, afterSlice);
        if (isDefault) return std::nullopt;
        return ValueDifference{before.slice(beforeSlice.begin, beforeSlice.end),
                               after.slice(afterSlice.begin, afterSlice.end),
                               "the value is not taken over"};
    }
    if (isSameText(before, beforeSlice, after, afterSlice)) return std::nullopt;
    if (type == "Attr<Uuid>" && isSameUuid(before, beforeSlice, after, afterSlice))
        return std::nullopt;
    if (isUnordered(type) &&
        elementsOf(type, before, beforeSlice) == elementsOf(type, after, afterSlice))
        return std::nullopt;
    Scanner first = scannerOf(type, before, beforeSlice);
    Scanner second = scannerOf(type, after, afterSlice);
    for (bool isInside = false;; isInside = isInside || isWordList(type)) {
        first.setWordsOnly(isInside);  // the brace in front of the words is one
        second.setWordsOnly(isInside);
        const Token& a = first.next();
        const Token& b = second.next();
        if (!isSameToken(type, a, b))
            return ValueDifference{textOf(a), textOf(b), reasonFor(type, a, b)};
        if (a.kind == Kind::End) return std::nullopt;
    }
}

bool isDefaultText(const SourceFile& source, const Slice& slice) {
    Scanner scanner = scannerOf("", source, slice);
    for (bool isInList = false;;) {
        const Token& token = scanner.next();
        switch (token.kind) {
            case Kind::End: return true;
            case Kind::Open:
                if (isInList) return false;
                isInList = true;
                break;
            case Kind::Close: break;
            case Kind::String:
                if (isInList || !token.text.empty()) return false;
                break;
            case Kind::Word: {
                if (isInList) return false;
                const auto number = numberOf(token.text);
                const auto uuid = QOR::uuids::uuid::parse(token.text);
                const bool isZero = number ? *number == 0
                                    : uuid ? uuid->is_nil()
                                           : token.text == "false";
                if (!isZero) return false;
            }
        }
    }
}

}  // namespace qormodel
