#include <QOR/TextEscapes.h>

#include <QOR/Text.h>

#include "HexDigits.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace QOR {

namespace {

bool needsEscape(char character, bool quotes) {
    return QOR::needsEscape(character) && (quotes || character != '"');
}

void appendEscape(std::string& text, char character) {
    text += '\\';
    switch (character) {
        case '\n': text += 'n'; return;
        case '\r': text += 'r'; return;
        case '\t': text += 't'; return;
        case '\\':
        case '"': text += character; return;
        default:
            text += 'x';
            text += hexDigits[static_cast<unsigned char>(character) >> 4];
            text += hexDigits[character & 0x0f];
    }
}

// What stands at a place of the text: a character, and how many characters spell it.
struct Spelling {
    char character;
    std::size_t length;
};

Spelling readSpelling(const std::string& text, std::size_t position, bool quotes) {
    const Spelling plain{text[position], 1};
    if (text[position] != '\\' || position + 1 == text.size()) return plain;
    switch (text[position + 1]) {
        case 'n': return {'\n', 2};
        case 'r': return {'\r', 2};
        case 't': return {'\t', 2};
        case '\\': return {'\\', 2};
        case '"': return quotes ? Spelling{'"', 2} : plain;
        case 'x': break;
        default: return plain;
    }
    if (position + 3 >= text.size()) return plain;
    const int high = hexValue(text[position + 2]);
    const int low = hexValue(text[position + 3]);
    if (high < 0 || low < 0) return plain;
    return {static_cast<char>(high * 16 + low), 4};
}

}  // namespace

void controlsToEsc(std::string& text, bool quotes) {
    const auto isSpecial = [quotes](char character) { return needsEscape(character, quotes); };
    const auto first = std::find_if(text.begin(), text.end(), isSpecial);
    if (first == text.end()) return;

    std::string result(text.begin(), first);
    for (auto character = first; character != text.end(); ++character) {
        if (isSpecial(*character)) {
            appendEscape(result, *character);
        } else {
            result += *character;
        }
    }
    text = std::move(result);
}

int escToControls(std::string& text, bool quotes) {
    auto read = text.find('\\');
    if (read == std::string::npos) return 0;

    int conversions = 0;
    auto write = read;  // never ahead of `read`: a character is shorter than its spelling
    while (read < text.size()) {
        const auto [character, length] = readSpelling(text, read, quotes);
        text[write++] = character;
        read += length;
        if (length > 1) ++conversions;
    }
    text.resize(write);
    return conversions;
}

}  // namespace QOR
