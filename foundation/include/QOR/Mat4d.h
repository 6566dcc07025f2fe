// A matrix of four rows and four columns, copied by value.
#pragma once

#include <QOR/Export.h>

#include <array>
#include <cstddef>

namespace QOR {

/// Sixteen numbers, kept row after row; all zero at first. Indices must be below 4, and below 16
/// for the one-dimensional access.
template <class T> class QOR_API Mat4d {
public:
    using value_type = T;

    constexpr Mat4d() = default;

    /// The matrix with these numbers, row after row.
    constexpr explicit Mat4d(const std::array<T, 16>& newNumbers) : numbers(newNumbers) {}

    static constexpr Mat4d identity() {
        Mat4d result;
        for (std::size_t i = 0; i < 4; ++i) result(i, i) = T{1};
        return result;
    }

    static constexpr std::size_t size() { return 16; }

    constexpr T& operator()(std::size_t row, std::size_t column) {
        return numbers[row * 4 + column];
    }
    constexpr const T& operator()(std::size_t row, std::size_t column) const {
        return numbers[row * 4 + column];
    }
    constexpr T& operator[](std::size_t index) { return numbers[index]; }
    constexpr const T& operator[](std::size_t index) const { return numbers[index]; }

    constexpr bool operator==(const Mat4d&) const = default;

private:
    std::array<T, 16> numbers{};
};

}  // namespace QOR
