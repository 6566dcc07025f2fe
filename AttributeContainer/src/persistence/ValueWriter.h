// The text of single values, by families of types.
#pragma once

#include <AttributeContainer/VersionNum.h>
#include <QOR/JsonValue.h>
#include <QOR/Mat4d.h>
#include <QOR/ScanPtColor.h>
#include <QOR/StatisticVal.h>
#include <QOR/Time.h>
#include <QOR/Uuid.h>

#include "persistence/CodecFamilies.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <string>

namespace QOR::AttributeContainer {

/// `put(text, value)` writes the pieces of a value; `text` makes their characters (StreamText for
/// the model stream, PlainText for a value alone). One specialisation a family.
template <class T> struct ValueWriter;

template <std::integral T> struct ValueWriter<T> {
    static void put(auto& text, T value) {
        if constexpr (ByteInteger<T>) text.integer(static_cast<int>(value));
        else text.integer(value);
    }
};

template <std::floating_point T> struct ValueWriter<T> {
    static void put(auto& text, T value) { text.numbers(std::array{value}); }
};

template <> struct ValueWriter<bool> {
    static void put(auto& text, bool value) { text.text(value ? "true" : "false"); }
};

template <> struct ValueWriter<std::string> {
    static void put(auto& text, const std::string& value) { text.string(value); }
};

template <> struct ValueWriter<JsonValue> {
    static void put(auto& text, const JsonValue& value) {
        text.resetPrecision();
        text.string(value.text);
    }
};

template <> struct ValueWriter<uuids::uuid> {
    static void put(auto& text, const uuids::uuid& value) {
        constexpr char digits[] = "0123456789abcdef";
        std::array<char, 36> piece;
        char* to = piece.data();
        for (std::size_t i = 0; i < value.bytes().size(); ++i) {
            if (i == 4 || i == 6 || i == 8 || i == 10) *to++ = '-';
            *to++ = digits[value.bytes()[i] >> 4];
            *to++ = digits[value.bytes()[i] & 15];
        }
        text.fixedText({piece.data(), piece.size()});
    }
};

template <> struct ValueWriter<Time> {
    static void put(auto& text, const Time& value) {
        text.integer(value.getDay());
        text.character('.');
        text.integer(value.getMonth());
        text.character('.');
        text.integer(value.getYear());
        text.character(' ');
        text.integer(value.getHour());
        text.character(':');
        text.integer(value.getMin());
        text.character(':');
        text.integer(value.getSec());
    }
};

template <> struct ValueWriter<VersionNum> {
    static void put(auto& text, const VersionNum& value) {
        text.string(value.getName());
        text.character(' ');
        text.text(value.getReleaseNumbers());
    }
};

template <NumberVector T> struct ValueWriter<T> {
    static void put(auto& text, const T& value) { text.numbers(componentsOf(value)); }
};

template <IntegerVector T> struct ValueWriter<T> {
    static void put(auto& text, const T& value) {
        for (std::size_t i = 0; i < T::size(); ++i) {
            if (i > 0) text.character(' ');
            text.integer(value[i]);
        }
        if constexpr (EndsInBlank<T>) text.character(' ');
    }
};

template <> struct ValueWriter<Vec4d<unsigned char>> {
    static void put(auto& text, const Vec4d<unsigned char>& value) {
        for (std::size_t i = 0; i < value.size(); ++i) {
            if (i > 0) text.character(' ');
            text.character(static_cast<char>(value[i]));
        }
    }
};

template <class Number> struct ValueWriter<Mat4d<Number>> {
    static void put(auto& text, const Mat4d<Number>& value) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                text.numbers(std::array{value(row, column)});
                text.character(' ');
            }
            text.character(' ');
        }
    }
};

template <> struct ValueWriter<ScanPtColor<Vec3d<float>>> {
    static void put(auto& text, const ScanPtColor<Vec3d<float>>& value) {
        for (std::size_t i = 0; i < value.position.size(); ++i) {
            text.standingNumber(value.position[i]);
            text.character(' ');
        }
        for (std::size_t i = 0; i < value.color.size(); ++i) {
            if (i > 0) text.character(' ');
            text.integer(static_cast<int>(value.color[i]));
        }
    }
};

template <> struct ValueWriter<StatisticVal<double>> {
    static void put(auto& text, const StatisticVal<double>& value) {
        text.text("StatisticVal ");
        putStatistics(text, value);
    }
    static void putStatistics(auto& text, const StatisticVal<double>& value) {
        text.numbers(std::array{value.a});
        text.character('[');
        text.numbers(std::array{value.b});
        text.character(',');
        text.numbers(std::array{value.c});
        text.character(']');
        text.numbers(std::array{value.d});
    }
};

template <> struct ValueWriter<StatisticValLimits<double>> {
    static void put(auto& text, const StatisticValLimits<double>& value) {
        // Both pairs of each set are written, so the word is that of the extended form.
        text.text("StatisticValLimitsEx ");
        ValueWriter<StatisticVal<double>>::putStatistics(text, value);
        text.text(" Limits [");
        text.numbers(componentsOf(value.p));
        text.character(',');
        text.numbers(componentsOf(value.q));
        text.text("] [");
        text.numbers(componentsOf(value.r));
        text.character(',');
        text.numbers(componentsOf(value.s));
        text.character(']');
    }
};

}  // namespace QOR::AttributeContainer
