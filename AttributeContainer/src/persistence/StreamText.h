// The road of a value's pieces into a stream: one formatted piece after the other, or many at once.
#pragma once

#include "persistence/NumberText.h"

#include <QOR/Text.h>

#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <ostream>
#include <string>
#include <string_view>

namespace QOR::AttributeContainer {

/// Writes the pieces of one value in the form of the model stream: numbers under the digit rule, 0
/// in place of a number that is not finite, strings between the quotes of the format.
///
/// The bytes are those that `stream << piece` gives for each piece. Where the stream formats in the
/// usual way, they are made here, gathered and handed over in large parts, without the stream's
/// preparations for each where these would do nothing; otherwise the stream makes them.
/// Afterwards `finish` must be called. Nothing is allocated but for strings.
class StreamText {
public:
    StreamText(std::ostream& target, int targetFormat)
        : stream(target), format(targetFormat), gathers(target.width() == 0) {}
    StreamText(const StreamText&) = delete;
    StreamText& operator=(const StreamText&) = delete;

    /// False when the stream takes no more, so that a long list can end early.
    bool good() const { return stream.good(); }

    void character(char character) {
        if (!gathers) return void(stream << character);
        *room(1) = character;
        ++end;
    }

    void text(std::string_view piece) {
        if (!gathers || piece.size() > buffer.size()) return notGathered(piece);
        std::memcpy(room(piece.size()), piece.data(), piece.size());
        end += piece.size();
    }

    /// A uuid or another text of fixed form, which no width of the stream pads.
    void fixedText(std::string_view piece);

    /// A line feed, behind which the stream is flushed.
    void endLine();

    template <std::integral Integer> void integer(Integer number) {
        constexpr std::size_t mostDigits = 21;
        if (!isUsual()) return void(stream << number);
        char* const to = room(mostDigits);
        end = std::to_chars(to, to + mostDigits, number).ptr;
    }

    /// Numbers with a blank between them, all under the digit rule of the largest one.
    template <std::floating_point Number, std::size_t size>
    void numbers(const std::array<Number, size>& values) {
        std::array<double, size> finite;
        double largest = 0;
        for (std::size_t i = 0; i < size; ++i) {
            finite[i] = std::isfinite(values[i]) ? static_cast<double>(values[i]) : 0.0;
            largest = std::max(largest, std::fabs(finite[i]));
        }
        const int precision = digitRule(largest);
        if (!isUsual()) return numbersByStream(finite.data(), size, precision);

        char* to = room(size * (maxNumberText + 1));
        for (std::size_t i = 0; i < size; ++i) {
            if (i > 0) *to++ = ' ';
            to = numberToText(to, finite[i], precision);
        }
        end = to;
        stream.precision(standingPrecision);
    }

    /// A number at the precision that the stream has, whatever the number is.
    void standingNumber(double number);

    /// A string value between its quotes, escaped.
    void string(const std::string& value);

    /// Sets the stream to the precision that numbers of the model have by default.
    void resetPrecision() { stream.precision(standingPrecision); }

    /// Hands over what is gathered. A stream that does not take it all gets its bad bit.
    void finish() {
        if (end != buffer.data()) handOver();
    }

    static constexpr std::streamsize standingPrecision = 8;

private:
    char* room(std::size_t size) {
        if (static_cast<std::size_t>(buffer.data() + buffer.size() - end) < size) handOver();
        return end;
    }
    // Numbers of the usual form are made here. Asked for with the first one, since the stream's
    // locale takes time to look at and many values have no number.
    bool isUsual() {
        if (!isNumberSeen) lookAtNumbers();
        return gathers;
    }
    void lookAtNumbers();
    void stringContent(std::string_view content);
    void notGathered(std::string_view piece);
    void handOver();
    void numbersByStream(const double* numbers, std::size_t size, int precision);

    std::ostream& stream;
    const int format;
    bool gathers;  // every piece comes out as in a new stream of the classic locale
    bool isNumberSeen = false;
    std::array<char, 8192> buffer;
    char* end = buffer.data();
};

}  // namespace QOR::AttributeContainer
