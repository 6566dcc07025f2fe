#include "persistence/TextSource.h"

#include "persistence/NumberText.h"
#include "persistence/PlainDecimal.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <typeinfo>
#include <utility>

namespace QOR::AttributeContainer {

namespace {

bool isNumberCode(int character) {
    return character != TextSource::endOfInput && isValidNumberChar(static_cast<char>(character));
}

}  // namespace

TextSource::TextSource(std::istream& source, int sourceFormat)
    : stream(source), format(sourceFormat) {
    // As every operation of the stream begins: a stream tied to this one is flushed.
    if (stream.good()) const std::istream::sentry ready(stream, true);
}

void TextSource::readAhead() {
    if (sizeAhead > 0 || !stream.good()) return;
    // Only of these it is sure that in_avail counts characters of the get area, so that as many
    // can be given back.
    const std::streambuf& buffer = *stream.rdbuf();
    constexpr std::size_t sizeAtFirst = 64;  // short lists shall not pay for long ones
    if (typeid(buffer) == typeid(std::stringbuf) || typeid(buffer) == typeid(std::filebuf))
        sizeAhead = sizeAtFirst;
}

int TextSource::peekInBuffer() {
    int character;
    try {
        character = stream.rdbuf()->sgetc();
        if (sizeAhead > 0 && character != endOfInput) takeAhead();
    } catch (...) {
        return broken();
    }
    return character != endOfInput ? character : ended();
}

void TextSource::dropInBuffer() {
    try {
        stream.rdbuf()->sbumpc();
    } catch (...) {
        broken();
    }
}

int TextSource::skipWhiteSpaceInBuffer() {
    int character;
    try {
        auto& buffer = *stream.rdbuf();
        character = buffer.sgetc();
        while (character != endOfInput && isWhiteSpace(static_cast<char>(character)))
            character = buffer.snextc();
        if (sizeAhead > 0 && character != endOfInput) takeAhead();
    } catch (...) {
        return broken();
    }
    return character != endOfInput ? character : ended();
}

void TextSource::takeAhead() {
    const auto size = std::min(stream.rdbuf()->in_avail(), static_cast<std::streamsize>(sizeAhead));
    at = ahead.data();
    aheadEnd = at + stream.rdbuf()->sgetn(ahead.data(), size);
    sizeAhead = std::min(sizeAhead * 2, ahead.size());
}

void TextSource::giveBack() {
    for (; aheadEnd != at; --aheadEnd) stream.rdbuf()->sungetc();
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
    if (aheadEnd - at <= PlainDecimal::mostCharacters) return readPlainDecimalInBuffer(number);
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
    if (peek() != '#') return false;
    giveBack();
    sizeAhead = 0;  // from here on all characters can be put back by the buffer itself
    constexpr std::string_view mark = "#INF";
    constexpr std::string_view otherCase = "#inf";
    std::size_t matched = 0;
    for (; matched < mark.size(); ++matched) {
        const int character = peek();
        if (character != mark[matched] && character != otherCase[matched]) break;
        drop();
    }
    if (matched == mark.size()) return true;

    // The end of the input is again as far away as before.
    stream.clear(stream.rdstate() & ~std::ios::eofbit);
    for (; matched > 0; --matched)
        if (stream.rdbuf()->sungetc() == endOfInput) stream.setstate(std::ios::badbit);
    return false;
}

std::optional<std::string> TextSource::readWord() {
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
    try {
        stream.setstate(std::ios::badbit);
    } catch (const std::ios::failure&) {
        // What the buffer threw says more.
    }
    if ((stream.exceptions() & std::ios::badbit) != 0) throw;
    return endOfInput;
}

}  // namespace QOR::AttributeContainer
