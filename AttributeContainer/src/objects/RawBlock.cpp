#include "objects/RawBlock.h"

#include <AttributeContainer/ModelFormat.h>

#include <QOR/Text.h>

#include "persistence/TextSource.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
bool isContainerWord(const std::string& text, std::size_t begin) {
    static const std::string word{"AttrContainer"};
    return text.size() - begin == word.size() && compareIgnoreCase(text.substr(begin), word) == 0;
}

bool isBrace(int character) {
    return character == ModelFormat::START_OF_BLOCK || character == ModelFormat::END_OF_BLOCK;
}

// Follows a quoted text from its opening quote on. A quote behind a backslash does not end it,
// unless that backslash is itself an escaped one.
class QuotedText {
public:
    bool endsAt(int character) {
        const bool isEnd = character == getStringEnd<char>() && !isEscaped;
        isEscaped = !isEscaped && character == '\\';
        return isEnd;
    }

private:
    bool isEscaped = true;  // the opening quote ends nothing
};

// Takes what is left of a quoted text.
void takeQuoted(TextSource& source, QuotedText quoted, std::string& text) {
    for (int character = source.peek(); character != TextSource::endOfInput;
         character = source.next()) {
        text += static_cast<char>(character);
        if (quoted.endsAt(character)) return source.drop();
    }
}

// Takes the rest of a quoted text that begins the block: the word that was taken of it ends at the
// first white space.
void takeQuotedRest(TextSource& source, std::string& text) {
    if (!text.starts_with(getStringEnd<char>())) return;
    QuotedText quoted;
    if (std::ranges::none_of(text, [&](char each) { return quoted.endsAt(each); }))
        takeQuoted(source, quoted, text);
}

// Takes the characters from `character` on that are all white space, or all none.
void takeRun(TextSource& source, int character, std::string& text) {
    const bool isBlank = isWhiteSpace(static_cast<char>(character));
    while (character != TextSource::endOfInput && !isBrace(character) &&
           isWhiteSpace(static_cast<char>(character)) == isBlank) {
        text += static_cast<char>(character);
        character = source.next();
    }
}
}  // namespace

RawBlock RawBlock::read(std::string beginning, std::istream& stream) {
    TextSource source(stream, ModelFormat::Text);
    RawBlock block;
    block.text = std::move(beginning);
    if (isContainerWord(block.text, 0)) block.containerBegin = 0;
    std::uint64_t depth = block.text == ModelFormat::START_OF_BLOCK_STR ? 2 : 1;
    takeQuotedRest(source, block.text);
    for (int character = source.peek(); character != TextSource::endOfInput;
         character = source.peek()) {
        const std::size_t begin = block.text.size();
        if (isBrace(character)) {
            source.drop();
            depth = character == ModelFormat::START_OF_BLOCK ? depth + 1 : depth - 1;
            if (depth == 0) {
                block.isEnded = true;
                break;
            }
            block.text += static_cast<char>(character);
        } else if (character == getStringEnd<char>()) {
            takeQuoted(source, {}, block.text);
        } else {
            takeRun(source, character, block.text);
        }
        // Inside another block the word is no container of this object: to make that one its own
        // would leave the braces around it behind.
        if (depth == 1 && block.containerBegin == noContainer && isContainerWord(block.text, begin))
            block.containerBegin = begin;
    }
    return block;
}

}  // namespace QOR::AttributeContainer
