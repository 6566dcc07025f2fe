#include <QOR/Text.h>

#include <algorithm>
#include <istream>
#include <streambuf>
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

// \return what stands behind the white space.
int skipWhiteSpace(std::streambuf& buffer) {
    int next = buffer.sgetc();
    while (next != endOfInput && isWhiteSpace(static_cast<char>(next))) next = buffer.snextc();
    return next;
}

// \return what stands behind the word.
int takeWord(std::streambuf& buffer, std::string& word) {
    int next = buffer.sgetc();
    for (; next != endOfInput && !isWhiteSpace(static_cast<char>(next)); next = buffer.snextc())
        word += static_cast<char>(next);
    return next;
}

template <class Predicate> int findFrom(const std::string& text, int start, Predicate matches) {
    for (std::size_t i = static_cast<std::size_t>(std::max(start, 0)); i < text.size(); ++i)
        if (matches(text[i])) return static_cast<int>(i);
    return -1;
}

}  // namespace

void takeAsBad(std::ios& stream) {
    const bool goesOn = (stream.exceptions() & std::ios::badbit) != 0;
    try {
        stream.setstate(std::ios::badbit);
    } catch (const std::ios::failure&) {
        // What the buffer threw says more.
    }
    if (goesOn) throw;
}

std::istream& eatWS(std::istream& stream) {
    if (!stream.good()) return stream;
    int next = endOfInput;
    try {
        next = skipWhiteSpace(*stream.rdbuf());
    } catch (...) {
        takeAsBad(stream);
        return stream;
    }
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
    int next = endOfInput;
    try {
        next = takeWord(*stream.rdbuf(), text);
    } catch (...) {
        takeAsBad(stream);
        return stream;
    }
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
