// Splits the text of a model stream into words, strings and braces.
#pragma once

#include "io/SourceFile.h"
#include "terminal/Progress.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qormodel {

/// One piece of a model stream.
struct Token {
    enum class Kind { Word, String, Open, Close, End };

    Kind kind = Kind::End;
    std::string text;         ///< of a word; of a string what stands between the quotes
    std::uint64_t begin = 0;  ///< offset of its first byte
    std::uint64_t end = 0;    ///< offset behind its last byte
    std::uint64_t line = 0;   ///< where it begins, counted from 1
    bool isCut = false;       ///< a string whose closing quote is missing
};

/// Reads tokens by the rules of the library's own reader: a brace or a quote counts only where a
/// word would begin, unless `setBracesEndWords` says otherwise. Needs memory for one token, whatever
/// the size of the source.
class Scanner {
public:
    /// \param progress is told how far the scanner is, where there is one. It and the source
    /// outlive the scanner.
    explicit Scanner(const SourceFile& source, Progress* progress = nullptr);
    /// Over a part of the source: the bytes from `begin` to `end`, the first of them in `line`.
    Scanner(const SourceFile& source, std::uint64_t begin, std::uint64_t end, std::uint64_t line);

    /// The next token; it lasts until the next call.
    const Token& next();
    /// Behind an `Open`: passes everything up to and with the brace that closes it, at a fraction
    /// of the cost of its tokens. \return the `Close`, or `End` where there is none.
    const Token& skipBlock();

    /// The same behind the `Open` of a list of words, which ends at the first brace that closes and
    /// at which a word would begin.
    const Token& skipWordList();

    std::uint64_t getOffset() const { return chunkBegin + at; }

    /// Whether braces count within words too, as they do behind the number of a value.
    void setBracesEndWords(bool value) { bracesEndWords = value; }

    /// Whether quotes and opening braces are letters, as they are in a list of words.
    void setWordsOnly(bool value) { wordsOnly = value; }

private:
    bool fill();
    bool isAtEnd() { return at == got && !fill(); }
    void skipSpace();
    void skipWord();
    bool isWordEnd(char character) const;
    bool skipPlainChunk();
    bool skipString();
    void start(Token::Kind kind);
    void readWord();
    void readString();

    const SourceFile& source;
    std::vector<char> chunk;
    std::uint64_t chunkBegin;
    std::uint64_t stop;  // nothing is read from here on
    std::size_t at = 0;
    std::size_t got = 0;
    bool isFresh = false;  // nobody has looked yet whether the chunk is plain
    std::uint64_t line;
    Progress* progress = nullptr;
    bool bracesEndWords = false;
    bool wordsOnly = false;
    Token token;
};

}  // namespace qormodel
