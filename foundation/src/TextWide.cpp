#include <QOR/Text.h>

#include <cstddef>
#include <ostream>

namespace QOR {

namespace {

constexpr char32_t replacementCharacter = 0xfffd;
constexpr char32_t lastCharacter = 0x10ffff;

bool isHighSurrogate(char32_t unit) { return unit >= 0xd800 && unit <= 0xdbff; }

bool isLowSurrogate(char32_t unit) { return unit >= 0xdc00 && unit <= 0xdfff; }

void appendUtf8(std::string& text, char32_t character) {
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) return append(character);
    if (character < 0x800) {
        append(0xc0 | character >> 6);
    } else {
        if (character < 0x10000) {
            append(0xe0 | character >> 12);
        } else {
            append(0xf0 | character >> 18);
            append(0x80 | (character >> 12 & 0x3f));
        }
        append(0x80 | (character >> 6 & 0x3f));
    }
    append(0x80 | (character & 0x3f));
}

void appendWide(std::wstring& text, char32_t character) {
    if (sizeof(wchar_t) > 2 || character < 0x10000) {
        text += static_cast<wchar_t>(character);
        return;
    }
    text += static_cast<wchar_t>(0xd800 + ((character - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xdc00 + ((character - 0x10000) & 0x3ff));
}

// A character and the number of bytes that it takes.
struct Decoded {
    char32_t character;
    std::size_t length;
};

Decoded decodeUtf8(const std::string& text, std::size_t position) {
    constexpr Decoded invalid{replacementCharacter, 1};
    const auto byteAt = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const char32_t lead = byteAt(position);
    if (lead < 0x80) return {lead, 1};
    if (lead < 0xc0 || lead >= 0xf8) return invalid;

    const std::size_t length = lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    if (text.size() - position < length) return invalid;
    char32_t character = lead & (0xff >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const char32_t byte = byteAt(position + i);
        if ((byte & 0xc0) != 0x80) return invalid;
        character = character << 6 | (byte & 0x3f);
    }

    // A longer form than the character needs is refused: one text must not have two spellings.
    constexpr char32_t smallest[] = {0x80, 0x800, 0x10000};
    if (character < smallest[length - 2] || character > lastCharacter) return invalid;
    if (isHighSurrogate(character) || isLowSurrogate(character)) return invalid;
    return {character, length};
}

}  // namespace

std::string narrow(const std::wstring& text, char replacement) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto character = static_cast<char32_t>(text[i]);
        if (isHighSurrogate(character) && i + 1 < text.size() &&
            isLowSurrogate(static_cast<char32_t>(text[i + 1]))) {
            const auto low = static_cast<char32_t>(text[++i]);
            character = 0x10000 + ((character - 0xd800) << 10) + (low - 0xdc00);
        }
        const bool lone = isHighSurrogate(character) || isLowSurrogate(character);
        if (lone || character > lastCharacter) {
            result += replacement;
        } else {
            appendUtf8(result, character);
        }
    }
    return result;
}

std::wstring wide(const std::string& text) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (static_cast<unsigned char>(text[i]) < 0x80) {
            result.push_back(static_cast<wchar_t>(text[i++]));
            continue;
        }
        const auto [character, length] = decodeUtf8(text, i);
        appendWide(result, character);
        i += length;
    }
    return result;
}

std::ostream& operator<<(std::ostream& stream, const wchar_t* text) {
    if (!text) return stream;
    const auto bytes = narrow(text, '?');
    return stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace QOR
