#include "persistence/StreamText.h"

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelOutFormat.h>
#include <QOR/TextEscapes.h>

#include <cstring>
#include <locale>
#include <streambuf>
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

bool formatsNumbersAsUsual(const std::ostream& stream) {
    using std::ios_base;
    const auto flags = stream.flags();
    const auto base = flags & ios_base::basefield;
    constexpr auto unusual =
        ios_base::floatfield | ios_base::showpos | ios_base::showpoint | ios_base::uppercase;
    return (flags & unusual) == ios_base::fmtflags{} &&
           (base == ios_base::dec || base == ios_base::fmtflags{}) &&
           hasClassicNumbers(stream.getloc());
}

// Whether an operation on the stream would be one on its buffer and no more.
bool isReady(const std::ostream& stream) {
    return stream.good() && !stream.tie() && (stream.flags() & std::ios_base::unitbuf) == 0;
}

// The put area of any buffer. Only derived classes may name these members, which are called on the
// buffer as what it is.
struct PutArea : std::streambuf {
    static bool take(std::streambuf& buffer, const char* piece, std::ptrdiff_t size) {
        char* const to = (buffer.*&PutArea::pptr)();
        if ((buffer.*&PutArea::epptr)() - to < size) return false;
        std::memcpy(to, piece, static_cast<std::size_t>(size));
        (buffer.*&PutArea::pbump)(static_cast<int>(size));
        return true;
    }
};

void flush(std::ostream& stream) {
    if (!isReady(stream)) return void(stream.flush());
    try {
        if (stream.rdbuf()->pubsync() == -1) stream.setstate(std::ios_base::badbit);
    } catch (...) {
        takeAsBad(stream);
    }
}

}  // namespace

void StreamText::lookAtNumbers() {
    isNumberSeen = true;
    if (!gathers || formatsNumbersAsUsual(stream)) return;
    finish();
    gathers = false;
}

void StreamText::notGathered(std::string_view piece) {
    if (!gathers) return void(stream << piece);
    finish();
    stream.write(piece.data(), static_cast<std::streamsize>(piece.size()));
}

void StreamText::fixedText(std::string_view piece) {
    if (!gathers) stream.width(0);
    text(piece);
}

void StreamText::endLine() {
    if (!gathers) return void(stream << std::endl);
    character(stream.widen('\n'));
    finish();
    flush(stream);
}

void StreamText::standingNumber(double number) {
    const auto precision = stream.precision();
    if (!isUsual() || precision < 0 || precision > 17) {
        finish();
        stream << number;
        return;
    }
    end = numberToText(room(maxNumberText), number, static_cast<int>(precision));
}

void StreamText::string(const std::string& value) {
    const char quote = format == ModelFormat::XmlV2 ? '\'' : '"';
    character(quote);
    if (needsEscapes(value)) {
        std::string escaped = value;
        controlsToEsc(escaped, true);
        stringContent(escaped);
    } else if (!value.empty()) {
        stringContent(value);
    }
    character(quote);
}

void StreamText::stringContent(std::string_view content) {
    if (format == ModelFormat::Text) return text(content);
    finish();
    ModelOutFormat::encodeXMLEntities(stream, content);
}

void StreamText::handOver() {
    const auto size = end - buffer.data();
    end = buffer.data();
    if (isReady(stream) && PutArea::take(*stream.rdbuf(), buffer.data(), size)) return;
    stream.write(buffer.data(), size);
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
