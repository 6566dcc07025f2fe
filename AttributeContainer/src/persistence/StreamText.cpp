#include "persistence/StreamText.h"

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelOutFormat.h>

#include <locale>
#include <typeinfo>

namespace QOR::AttributeContainer {

namespace {

// Whether the locale's numbers are those of the classic one, which is so for many that are named
// otherwise, as "C.UTF-8".
bool hasClassicNumbers(const std::locale& locale) {
    if (locale == std::locale::classic()) return true;
    const auto& characters = std::use_facet<std::ctype<char>>(locale);
    const auto& writer = std::use_facet<std::num_put<char>>(locale);
    const auto& marks = std::use_facet<std::numpunct<char>>(locale);
    // A class derived from a facet may do anything with its characters.
    return typeid(characters) == typeid(std::ctype<char>) &&
           typeid(writer) == typeid(std::num_put<char>) && marks.decimal_point() == '.' &&
           marks.grouping().empty();
}

bool formatsAsUsual(const std::ostream& stream) {
    using std::ios_base;
    const auto flags = stream.flags();
    const auto base = flags & ios_base::basefield;
    constexpr auto unusual =
        ios_base::floatfield | ios_base::showpos | ios_base::showpoint | ios_base::uppercase;
    return (flags & unusual) == ios_base::fmtflags{} &&
           (base == ios_base::dec || base == ios_base::fmtflags{}) && stream.width() == 0 &&
           hasClassicNumbers(stream.getloc());
}

}  // namespace

StreamText::StreamText(std::ostream& target, int targetFormat)
    : stream(target), format(targetFormat), usual(formatsAsUsual(target)) {}

void StreamText::text(std::string_view piece) {
    if (!usual) {
        stream << piece;
    } else if (piece.size() <= buffer.size()) {
        end = std::copy(piece.begin(), piece.end(), room(piece.size()));
    } else {
        handOver();
        stream.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    }
}

void StreamText::fixedText(std::string_view piece) {
    if (!usual) stream.width(0);
    text(piece);
}

void StreamText::standingNumber(double number) {
    const auto precision = stream.precision();
    if (!usual || precision < 0 || precision > 17) {
        finish();
        stream << number;
        return;
    }
    end = numberToText(room(maxNumberText), number, static_cast<int>(precision));
}

void StreamText::string(const std::string& value) {
    const char quote = format == ModelFormat::XmlV2 ? '\'' : '"';
    character(quote);
    if (!value.empty()) {
        std::string escaped = value;
        controlsToEsc(escaped, true);
        if (format == ModelFormat::Text) {
            text(escaped);
        } else {
            finish();
            ModelOutFormat::encodeXMLEntities(stream, escaped);
        }
    }
    character(quote);
}

void StreamText::handOver() {
    const char* const begin = buffer.data();
    const auto size = end - begin;
    end = buffer.data();
    stream.write(begin, size);
}

void StreamText::numbersByStream(const double* numbers, std::size_t size, int precision) {
    struct ResetPrecision {  // also when the stream throws
        StreamText& text;
        ~ResetPrecision() { text.resetPrecision(); }
    } const reset{*this};
    stream.precision(precision);
    for (std::size_t i = 0; i < size; ++i) {
        if (i > 0) stream << ' ';
        stream << numbers[i];
    }
}

}  // namespace QOR::AttributeContainer
