// The pieces of a value at the end of a string, for people and for other types to take.
#pragma once

#include "persistence/NumberText.h"

#include <QOR/Text.h>

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

namespace QOR::AttributeContainer {

/// Appends pieces as StreamText writes them in `ModelFormat::Text`, but for the numbers: those have
/// the six digits that a stream has by default, and infinities and NaNs show as what they are.
class PlainText {
public:
    explicit PlainText(std::string& to) : target(to) {}

    static constexpr bool good() { return true; }
    void character(char character) { target += character; }
    void text(std::string_view piece) { target += piece; }
    void fixedText(std::string_view piece) { target += piece; }

    template <std::integral Integer> void integer(Integer number) {
        std::array<char, 21> digits;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        target.append(digits.data(), end);
    }

    template <std::floating_point Number, std::size_t size>
    void numbers(const std::array<Number, size>& values) {
        for (std::size_t i = 0; i < size; ++i) {
            if (i > 0) target += ' ';
            standingNumber(values[i]);
        }
    }

    void standingNumber(double number) {
        constexpr int defaultPrecision = 6;
        std::array<char, maxNumberText> digits;
        target.append(digits.data(), numberToText(digits.data(), number, defaultPrecision));
    }

    void string(const std::string& value) {
        std::string escaped = value;
        controlsToEsc(escaped, true);
        target.append(1, '"').append(escaped).append(1, '"');
    }

    static void resetPrecision() {}

private:
    std::string& target;
};

}  // namespace QOR::AttributeContainer
