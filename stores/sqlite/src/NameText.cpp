#include "NameText.h"

#include <QOR/KeyTreeStore.h>

#include <cstdint>

namespace QOR::keystore {

namespace {

constexpr bool hasPairs = sizeof(wchar_t) == 2;

void append(std::string& text, std::uint32_t code) {
    const auto byte = [&text](std::uint32_t bits) { text += static_cast<char>(bits); };
    if (code < 0x80) return byte(code);
    if (code < 0x800) {
        byte(0xc0 | code >> 6);
    } else {
        if (code < 0x10000) {
            byte(0xe0 | code >> 12);
        } else {
            byte(0xf0 | (code >> 18 & 0x07));
            byte(0x80 | (code >> 12 & 0x3f));
        }
        byte(0x80 | (code >> 6 & 0x3f));
    }
    byte(0x80 | (code & 0x3f));
}

bool isPair(std::wstring_view name, std::size_t at) {
    return hasPairs && at + 1 < name.size() && (name[at] & 0xfc00) == 0xd800 &&
           (name[at + 1] & 0xfc00) == 0xdc00;
}

template <class Change> std::string textOf(std::wstring_view name, Change change) {
    std::string text;
    text.reserve(name.size());
    for (std::size_t i = 0; i < name.size(); ++i) {
        auto code = static_cast<std::uint32_t>(change(name[i]));
        if (isPair(name, i)) {
            const auto low = static_cast<std::uint32_t>(name[++i]);
            code = 0x10000 + ((code & 0x3ff) << 10) + (low & 0x3ff);
        }
        append(text, code);
    }
    return text;
}

}  // namespace

std::string textOfName(std::wstring_view name) {
    return textOf(name, [](wchar_t character) { return character; });
}

std::string foldedTextOfName(std::wstring_view name) { return textOf(name, foldCharacter); }

std::wstring nameOfText(std::string_view text) {
    std::wstring name;
    name.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const int numMore = lead < 0xc0 ? 0 : lead < 0xe0 ? 1 : lead < 0xf0 ? 2 : 3;
        std::uint32_t code = numMore == 0 ? lead : lead & (0x3fu >> numMore);
        ++i;
        for (int more = 0; more < numMore && i < text.size(); ++more, ++i)
            code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3f);
        if (hasPairs && code > 0xffff) {
            name += static_cast<wchar_t>(0xd800 + ((code - 0x10000) >> 10));
            code = 0xdc00 + ((code - 0x10000) & 0x3ff);
        }
        name += static_cast<wchar_t>(code);
    }
    return name;
}

}  // namespace QOR::keystore
