// The reading of single values, by families of types.
#pragma once

#include <AttributeContainer/VersionNum.h>
#include <QOR/JsonValue.h>
#include <QOR/Mat4d.h>
#include <QOR/ScanPtColor.h>
#include <QOR/StatisticVal.h>
#include <QOR/StringText.h>
#include <QOR/Time.h>
#include <QOR/Uuid.h>

#include "persistence/CodecFamilies.h"
#include "persistence/NumberText.h"
#include "persistence/TextSource.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

/// `get(source, value)` reads a value and returns whether it took any character but white space;
/// otherwise the value stays, and a list in which it was to be the next element ends. Bad text that
/// was taken leaves the value, or what could not be read of it. One specialisation a family.
template <class T> struct ValueReader;

template <std::integral T> struct ValueReader<T> {
    static bool get(TextSource& source, T& value) {
        const auto digits = source.readDigits();
        if constexpr (std::signed_integral<T>) store(textToSigned(digits), value);
        else store(textToUnsigned(digits), value);
        return !digits.empty();
    }

private:
    template <class Widest> static void store(std::optional<Widest> number, T& value) {
        using Limits = std::numeric_limits<T>;
        if (number)
            value = static_cast<T>(std::clamp<Widest>(*number, Limits::min(), Limits::max()));
    }
};

template <ByteInteger T> struct ValueReader<T> {
    static bool get(TextSource& source, T& value) {
        auto word = source.readWord();
        if (word) *word >> value;
        return word.has_value();
    }
};

template <std::floating_point T> struct ValueReader<T> {
    static bool get(TextSource& source, T& value) {
        double number = 0;
        if (!source.readNumber(number)) return false;
        value = stored(number);
        // "1.#INF" was once the text of an infinity.
        if ((value == T{1} || value == T{-1}) && source.takeInfinityMark())
            value *= std::numeric_limits<T>::infinity();
        return true;
    }

private:
    // A float is held between its smallest normal number and its largest one. Zero and negative
    // numbers end at the smallest too: stored documents rely on it.
    static T stored(double number) {
        using Limits = std::numeric_limits<T>;
        if constexpr (std::same_as<T, float>) {
            if (number < double{Limits::min()}) return Limits::min();
            if (number > double{Limits::max()}) return Limits::max();
        }
        return static_cast<T>(number);
    }
};

template <> struct ValueReader<bool> { static bool get(TextSource& source, bool& value); };

template <> struct ValueReader<std::string> {
    static bool get(TextSource& source, std::string& value);
};

template <> struct ValueReader<JsonValue> {
    static bool get(TextSource& source, JsonValue& value) {
        return ValueReader<std::string>::get(source, value.text);
    }
};

template <> struct ValueReader<uuids::uuid> {
    static bool get(TextSource& source, uuids::uuid& value);
};

template <> struct ValueReader<Time> { static bool get(TextSource& source, Time& value); };

template <> struct ValueReader<VersionNum> {
    static bool get(TextSource& source, VersionNum& value);
};

template <SmallVector T> struct ValueReader<T> {
    static bool get(TextSource& source, T& value) {
        bool any = false;
        for (std::size_t i = 0; i < T::size(); ++i)
            any |= ValueReader<typename T::value_type>::get(source, value[i]);
        return any;
    }
};

/// Reads numbers, and characters between them, by the stream's own operators.
/// \return whether there was a character that can begin a number.
template <class... Pieces> bool getByStream(TextSource& source, Pieces&... pieces) {
    const int first = source.skipWhiteSpace();
    (source.getStream() >> ... >> pieces);
    return first != TextSource::endOfInput && first != 'e' && first != 'E' &&
           isValidNumberChar(static_cast<char>(first));
}

template <ReadByStream T> struct ValueReader<T> {
    static bool get(TextSource& source, T& value) { return getByStream(source, value.x, value.y); }
};

template <> struct ValueReader<Vec4d<unsigned char>> {
    static bool get(TextSource& source, Vec4d<unsigned char>& value);
};

template <class Number> struct ValueReader<Mat4d<Number>> {
    static bool get(TextSource& source, Mat4d<Number>& value) {
        bool any = false;
        for (std::size_t i = 0; i < value.size(); ++i)
            any |= ValueReader<Number>::get(source, value[i]);
        return any;
    }
};

template <> struct ValueReader<ScanPtColor<Vec3d<float>>> {
    static bool get(TextSource& source, ScanPtColor<Vec3d<float>>& value);
};

template <> struct ValueReader<StatisticVal<double>> {
    static bool get(TextSource& source, StatisticVal<double>& value);
};

template <> struct ValueReader<StatisticValLimits<double>> {
    static bool get(TextSource& source, StatisticValLimits<double>& value);
};

}  // namespace QOR::AttributeContainer
