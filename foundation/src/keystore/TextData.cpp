#include <QOR/KeyStore.h>
#include <QOR/KeyTreeStore.h>

#include <cstdint>

namespace QOR::keystore {

namespace {

unsigned char* putUnit(unsigned char* place, std::uint32_t unit) {
    *place++ = static_cast<unsigned char>(unit & 0xff);
    *place++ = static_cast<unsigned char>(unit >> 8 & 0xff);
    return place;
}

}  // namespace

std::vector<unsigned char> textToData(std::wstring_view text) {
    std::vector<unsigned char> data(2 * lengthOf(text));
    unsigned char* place = data.data();
    for (const wchar_t character : text) {
        const std::uint32_t code = character;
        if (code <= 0xffff) {
            place = putUnit(place, code);
        } else {
            place = putUnit(place, 0xd800 + ((code - 0x10000) >> 10 & 0x3ff));
            place = putUnit(place, 0xdc00 + ((code - 0x10000) & 0x3ff));
        }
    }
    return data;
}

std::wstring dataToText(const unsigned char* data, std::size_t size) {
    std::wstring text(size / 2, L'\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<wchar_t>(data[2 * i] | data[2 * i + 1] << 8);
    return text;
}

}  // namespace QOR::keystore
