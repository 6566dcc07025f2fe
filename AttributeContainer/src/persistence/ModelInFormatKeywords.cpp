// How a keyword is taken from the stream, in each of the forms that are read.
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>
#include <QOR/Text.h>

#include "persistence/GetArea.h"

#include <algorithm>
#include <istream>
#include <streambuf>
#include <string_view>

namespace QOR::AttributeContainer {

namespace {

using Traits = std::char_traits<char>;

// The closing root tag without its brackets.
constexpr auto rootName = "ZELK";

bool isEnd(int character) { return Traits::eq_int_type(character, Traits::eof()); }

bool isWhiteSpaceOf(int character) { return isWhiteSpace(Traits::to_char_type(character)); }

bool isBrace(int character) {
    return character == ModelFormat::START_OF_BLOCK || character == ModelFormat::END_OF_BLOCK;
}

// Reads one keyword into the empty `word`, past the buffer's own position only. Braces stand alone
// where a word would begin. \return what becomes of the stream
std::ios_base::iostate readWord(std::streambuf& buffer, std::string& word) {
    int next = buffer.sgetc();
    while (!isEnd(next) && isWhiteSpaceOf(next)) next = buffer.snextc();
    if (isEnd(next)) return std::ios_base::eofbit | std::ios_base::failbit;
    if (isBrace(next)) {
        word.push_back(Traits::to_char_type(buffer.sbumpc()));
        return std::ios_base::goodbit;
    }
    do {
        word.push_back(Traits::to_char_type(next));
        next = buffer.snextc();
    } while (!isEnd(next) && !isWhiteSpaceOf(next));
    return isEnd(next) ? std::ios_base::eofbit : std::ios_base::goodbit;
}

// True for nearly all characters of words, and for no white space.
bool isAboveBlank(char character) { return static_cast<unsigned char>(character) > ' '; }

// Takes one keyword that lies in the buffer's get area with the white space behind it; empty, with
// nothing taken, where there is none.
std::string_view takeWordOfArea(std::streambuf& buffer) {
    const char* const begin = GetArea::begin(buffer);
    const char* const end = begin + std::min(GetArea::end(buffer) - begin, GetArea::mostAtOnce);
    const char* word = begin;
    while (word != end && !isAboveBlank(*word) && isWhiteSpace(*word)) ++word;
    if (word == end) return {};
    const char* wordEnd = word + 1;
    if (!isBrace(static_cast<unsigned char>(*word))) {
        while (wordEnd != end && (isAboveBlank(*wordEnd) || !isWhiteSpace(*wordEnd))) ++wordEnd;
        if (wordEnd == end) return {};
    }
    GetArea::take(buffer, static_cast<int>(wordEnd - begin));
    return {word, static_cast<std::size_t>(wordEnd - word)};
}

}  // namespace

// Straight from the buffer: every word of a model passes here, and the stream's own way looks at
// each character more than once.
bool ModelInFormat::readTextKeyword() {
    if (stream.good() && !stream.tie()) {
        *keyword = takeWordOfArea(*stream.rdbuf());
        if (!keyword->empty()) return true;
    }
    const std::istream::sentry ready(stream, true);
    if (!ready) return false;
    auto state = std::ios_base::goodbit;
    try {
        state = readWord(*stream.rdbuf(), *keyword);
    } catch (...) {
        takeAsBad(stream);
        return false;
    }
    if (state != std::ios_base::goodbit) stream.setstate(state);
    return !keyword->empty();
}

// \return false where the closing root tag ends the keywords
bool ModelInFormat::readXmlKeyword() {
    for (;;) {  // once, and again after each value that has ended
        eatWS(stream);
        const int character = stream.get();
        if (character == '<') return readXmlTag();
        if (character == '>') *keyword = ModelFormat::START_OF_BLOCK_STR;
        if (character != '"') return true;

        eatWS(stream);
        const int behindValue = stream.get();
        if (behindValue == '>') *keyword = ModelFormat::START_OF_BLOCK_STR;
        if (behindValue != '/') return true;
        stream.get();
    }
}

bool ModelInFormat::readXmlTag() {
    const int first = stream.get();
    if (first == '/') {
        std::string closed;
        std::getline(stream, closed, '>');
        if (closed == rootName) {
            cleanPropagateKeyword();
            return false;
        }
        *keyword = ModelFormat::END_OF_BLOCK_STR;
        return true;
    }

    *keyword = Traits::to_char_type(first);
    int next = stream.peek();
    while (stream.good() && next != ' ' && next != '>') {
        keyword->push_back(Traits::to_char_type(stream.get()));
        next = stream.peek();
    }
    if (next != ' ') return true;

    eatWS(stream);
    std::string attribute;
    std::getline(stream, attribute, '"');
    std::erase(attribute, ' ');
    if (attribute == "value=") return true;
    if (attribute != "type=") {
        keyword->clear();
        return true;
    }
    std::string type;
    std::getline(stream, type, '"');
    *keyword += '<' + type + '>';
    return true;
}

}  // namespace QOR::AttributeContainer
