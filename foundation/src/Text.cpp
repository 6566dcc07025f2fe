#include <QOR/Text.h>

#include <algorithm>
#include <istream>
#include <utility>

namespace QOR {

namespace {

constexpr auto endOfInput = std::istream::traits_type::eof();

unsigned char lowerCase(char character) {
    const bool upper = character >= 'A' && character <= 'Z';
    return static_cast<unsigned char>(upper ? character - 'A' + 'a' : character);
}

bool isAlphaNum(char character) {
    return isDigit(character) || (lowerCase(character) >= 'a' && lowerCase(character) <= 'z');
}

template <class Predicate> int findFrom(const std::string& text, int start, Predicate matches) {
    for (std::size_t i = static_cast<std::size_t>(std::max(start, 0)); i < text.size(); ++i)
        if (matches(text[i])) return static_cast<int>(i);
    return -1;
}

}  // namespace

std::istream& eatWS(std::istream& stream) {
    if (!stream.good()) return stream;
    auto& buffer = *stream.rdbuf();
    auto next = buffer.sgetc();
    while (next != endOfInput && isWhiteSpace(static_cast<char>(next))) next = buffer.snextc();
    if (next == endOfInput) stream.setstate(std::ios::eofbit);
    return stream;
}

std::istream& operator>>(std::istream& stream, std::optional<std::string>& word) {
    word.reset();
    if (!eatWS(stream).good()) {
        stream.setstate(std::ios::failbit);
        return stream;
    }

    std::string text;
    auto& buffer = *stream.rdbuf();
    auto next = buffer.sgetc();
    for (; next != endOfInput && !isWhiteSpace(static_cast<char>(next)); next = buffer.snextc())
        text += static_cast<char>(next);
    word = std::move(text);
    if (next == endOfInput) stream.setstate(std::ios::eofbit);
    return stream;
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    if (from.empty()) return;
    auto found = text.find(from);
    if (found == std::string::npos) return;

    std::string result;
    std::size_t begin = 0;
    for (; found != std::string::npos; found = text.find(from, begin)) {
        result.append(text, begin, found - begin).append(to);
        begin = found + from.size();
    }
    result.append(text, begin);
    text = std::move(result);
}

int compareIgnoreCase(const std::string& left, const std::string& right) {
    const auto common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int difference = lowerCase(left[i]) - lowerCase(right[i]);
        if (difference != 0) return difference;
    }
    if (left.size() == right.size()) return 0;
    return left.size() < right.size() ? -1 : 1;
}

int findNonWS(const std::string& text, int start) {
    return findFrom(text, start, [](char character) { return !isWhiteSpace(character); });
}

int findAlphaNum(const std::string& text, int start) { return findFrom(text, start, isAlphaNum); }

int findLastOf(const std::string& text, const std::string& set) {
    const auto found = text.find_last_of(set);
    return found != std::string::npos ? static_cast<int>(found) : -1;
}

void incrementIndex(std::string& name) {
    // Counted digit by digit, so that no number is too long.
    auto position = name.size();
    while (position > 0 && isDigit(name[position - 1])) {
        auto& digit = name[--position];
        if (digit != '9') {
            ++digit;
            return;
        }
        digit = '0';
    }
    name.insert(position, 1, '1');
}

}  // namespace QOR
