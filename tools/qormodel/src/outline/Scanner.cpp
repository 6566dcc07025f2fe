#include "outline/Scanner.h"

#include <algorithm>
#include <cstring>

namespace qormodel {

namespace {
constexpr std::size_t chunkSize = std::size_t{1} << 18;

constexpr bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}
}  // namespace

Scanner::Scanner(const SourceFile& source, Progress* newProgress)
    : Scanner(source, 0, source.getSize(), 1) {
    progress = newProgress;
}

Scanner::Scanner(const SourceFile& source, std::uint64_t begin, std::uint64_t end,
                 std::uint64_t line)
    : source(source), chunk(std::min<std::uint64_t>(chunkSize, end - begin)), chunkBegin(begin),
      stop(end), line(line) {}

const Token& Scanner::next() {
    skipSpace();
    if (isAtEnd()) {
        start(Token::Kind::End);
        return token;
    }
    switch (wordsOnly && chunk[at] != '}' ? ' ' : chunk[at]) {
        case '{':
        case '}':
            start(chunk[at] == '{' ? Token::Kind::Open : Token::Kind::Close);
            ++at;
            break;
        case '"':
            start(Token::Kind::String);
            readString();
            break;
        default:
            start(Token::Kind::Word);
            readWord();
    }
    token.end = getOffset();
    return token;
}

const Token& Scanner::skipBlock() {
    for (std::uint64_t depth = 1;;) {
        if (skipPlainChunk()) continue;
        skipSpace();
        if (isAtEnd()) {
            start(Token::Kind::End);
            return token;
        }
        const char character = chunk[at];
        if (character == '"') {
            ++at;
            skipString();
        } else if (character == '{') {
            ++depth;
            ++at;
        } else if (character == '}') {
            if (--depth == 0) return next();
            ++at;
        } else {
            skipWord();
        }
    }
}

const Token& Scanner::skipWordList() {
    while (true) {
        skipSpace();
        if (isAtEnd() || chunk[at] == '}') return next();
        skipWord();
    }
}

bool Scanner::fill() {
    chunkBegin += got;
    at = 0;
    isFresh = true;
    if (progress) progress->show(chunkBegin);
    const std::uint64_t left = stop - chunkBegin;
    got = source.readAt(chunkBegin, chunk.data(), std::min<std::uint64_t>(chunk.size(), left));
    return got != 0;
}

void Scanner::skipSpace() {
    while (!isAtEnd() && isSpace(chunk[at])) line += chunk[at++] == '\n' ? 1 : 0;
}

void Scanner::skipWord() {
    while (!isAtEnd() && !isWordEnd(chunk[at])) ++at;
}

bool Scanner::isWordEnd(char character) const {
    return isSpace(character) || (bracesEndWords && (character == '{' || character == '}'));
}

// Passes a chunk in which no brace and no quote is, as nearly all of a long list are.
bool Scanner::skipPlainChunk() {
    if (!isFresh) return false;
    isFresh = false;
    const char* const begin = chunk.data() + at;
    const std::size_t size = got - at;
    if (size == 0) return false;
    for (const char character : {'{', '}', '"'})
        if (std::memchr(begin, character, size)) return false;
    line += static_cast<std::uint64_t>(std::count(begin, begin + size, '\n'));
    at = got;
    if (!isSpace(chunk[got - 1])) skipWord();
    return true;
}

// Passes the rest of a string. False where the source ends inside.
bool Scanner::skipString() {
    for (bool isEscaped = false; !isAtEnd();) {
        const char character = chunk[at++];
        if (character == '\n') ++line;
        if (character == '"' && !isEscaped) return true;
        isEscaped = character == '\\' && !isEscaped;
    }
    return false;
}

void Scanner::start(Token::Kind kind) {
    token.kind = kind;
    token.text.clear();
    token.begin = token.end = getOffset();
    token.line = line;
    token.isCut = false;
}

// The arrow of a map's entry is a word of its own: the value behind it is a string, which may hold
// blanks and braces.
void Scanner::readWord() {
    while (!isAtEnd() && !isWordEnd(chunk[at])) {
        if (chunk[at] == '"' && token.text == "=>") return;
        token.text += chunk[at++];
    }
}

void Scanner::readString() {
    ++at;
    for (bool isEscaped = false; !isAtEnd();) {
        const char character = chunk[at++];
        if (character == '\n') ++line;
        if (character == '"' && !isEscaped) return;
        token.text += character;
        isEscaped = character == '\\' && !isEscaped;
    }
    token.isCut = true;
}

}  // namespace qormodel
