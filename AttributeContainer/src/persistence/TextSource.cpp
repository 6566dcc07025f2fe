#include "persistence/TextSource.h"

#include "persistence/GetArea.h"
#include "persistence/NumberText.h"
#include "persistence/PlainDecimal.h"

#include <QOR/Text.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <streambuf>
#include <utility>

namespace QOR::AttributeContainer {

namespace {

bool isNumberCode(int character) {
    return character != TextSource::endOfInput && isValidNumberChar(static_cast<char>(character));
}

}  // namespace

TextSource::TextSource(std::istream& source, int sourceFormat)
    : stream(source), format(sourceFormat) {
    if (!stream.good()) return;
    // As every operation of the stream begins: a stream tied to this one is flushed.
    if (stream.tie()) const std::istream::sentry ready(stream, true);
    openArea();
}

int TextSource::peekInBuffer() {
    giveBack();
    int character;
    try {
        character = stream.rdbuf()->sgetc();
    } catch (...) {
        return broken();
    }
    openArea();
    return character != endOfInput ? character : ended();
}

void TextSource::dropInBuffer() {
    giveBack();
    try {
        stream.rdbuf()->sbumpc();
    } catch (...) {
        broken();
    }
}

int TextSource::skipWhiteSpaceInBuffer() {
    giveBack();
    int character;
    try {
        auto& buffer = *stream.rdbuf();
        character = buffer.sgetc();
        while (character != endOfInput && isWhiteSpace(static_cast<char>(character)))
            character = buffer.snextc();
    } catch (...) {
        return broken();
    }
    openArea();
    return character != endOfInput ? character : ended();
}

void TextSource::openArea() {
    const std::streambuf& buffer = *stream.rdbuf();
    at = GetArea::begin(buffer);
    areaEnd = at + std::min(GetArea::end(buffer) - at, GetArea::mostAtOnce);
}

void TextSource::giveBack() {
    if (!at) return;
    std::streambuf& buffer = *stream.rdbuf();
    GetArea::take(buffer, static_cast<int>(at - GetArea::begin(buffer)));
    at = areaEnd = nullptr;
}

int TextSource::take() {
    const int character = peek();
    if (character != endOfInput) drop();
    else fail();
    return character;
}

bool TextSource::readNumber(double& number) {
    if (skipWhiteSpace() == endOfInput) return false;
    if (readPlainDecimal(number)) return true;

    collectNumberCharacters(peek());
    if (token.empty()) return false;
    const auto result = textToNumber(token);
    if (result.outOfRange) stream.clear();
    if (result.end != token.data() + token.size())
        throw std::invalid_argument("Invalid number format");
    number = result.number;
    return true;
}

bool TextSource::readPlainDecimal(double& number) {
    if (areaEnd - at <= PlainDecimal::mostCharacters) return readPlainDecimalInBuffer(number);
    MemoryCursor cursor{at};
    const auto decimal = PlainDecimal::take(cursor);
    const char* const begin = std::exchange(at, cursor.at);
    if (decimal.isExact() && !isNumberCode(cursor.current())) {
        number = decimal.value();
        return true;
    }
    token.assign(begin, at);
    return false;
}

bool TextSource::readPlainDecimalInBuffer(double& number) {
    giveBack();
    std::array<char, PlainDecimal::mostCharacters> taken;
    BufferCursor cursor{*stream.rdbuf(), taken.data()};
    PlainDecimal decimal;
    try {
        decimal = PlainDecimal::take(cursor);
    } catch (...) {
        broken();
    }
    if (cursor.current() == endOfInput) ended();
    if (decimal.isExact() && !isNumberCode(cursor.current())) {
        number = decimal.value();
        return true;
    }
    token.assign(taken.data(), cursor.takenEnd);
    return false;
}

std::string_view TextSource::readDigits() {
    token.clear();
    collectNumberCharacters(skipWhiteSpace());
    return token;
}

void TextSource::collectNumberCharacters(int character) {
    for (; isNumberCode(character); character = next()) token += static_cast<char>(character);
}

bool TextSource::takeInfinityMark() {
    constexpr std::string_view mark = "#INF";
    constexpr std::string_view otherCase = "#inf";
    if (peek() != '#') return false;
    giveBack();  // the buffer takes back by itself what is no mark
    std::streambuf& buffer = *stream.rdbuf();
    std::size_t matched = 0;
    try {
        for (; matched < mark.size(); ++matched) {
            const int character = buffer.sgetc();
            if (character != mark[matched] && character != otherCase[matched]) break;
            buffer.sbumpc();
        }
    } catch (...) {
        broken();
    }
    if (matched == mark.size()) return true;
    for (; matched > 0; --matched)
        if (buffer.sungetc() == endOfInput) stream.setstate(std::ios::badbit);
    return false;
}

std::string_view TextSource::takeStringCharacters() {
    const char* const begin = at;
    while (at != areaEnd && *at != '"' && *at != '\\') ++at;
    return {begin, static_cast<std::size_t>(at - begin)};
}

std::optional<std::string> TextSource::readWord() {
    if (skipWhiteSpace() != endOfInput) {
        const char* end = at;
        while (end != areaEnd && !isWhiteSpace(*end)) ++end;
        if (end != areaEnd) return std::string(std::exchange(at, end), end);
    }
    std::optional<std::string> word;
    getStream() >> word;
    return word;
}

std::string TextSource::readAttributeWord() {
    std::string word;
    for (int c = skipWhiteSpace(); c != endOfInput && c != ' ' && c != '"'; c = next())
        word += static_cast<char>(c);
    return word;
}

int TextSource::ended() {
    stream.setstate(std::ios::eofbit);
    return endOfInput;
}

int TextSource::broken() {
    takeAsBad(stream);
    return endOfInput;
}

}  // namespace QOR::AttributeContainer
