// Small vectors of numbers, copied by value.
#pragma once

#include <QOR/Export.h>

#include <cstddef>

namespace QOR {

/// Two components, usable as a plain pair; zero at first. The index must be below size().
template <class T> struct QOR_API SVec2d {
    using value_type = T;

    T x{};
    T y{};

    constexpr SVec2d() = default;
    constexpr SVec2d(T newX, T newY) : x(newX), y(newY) {}

    static constexpr std::size_t size() { return 2; }
    constexpr T& operator[](std::size_t index) { return index == 0 ? x : y; }
    constexpr const T& operator[](std::size_t index) const { return index == 0 ? x : y; }
    constexpr bool operator==(const SVec2d&) const = default;
};

/// Three components; zero at first. The index must be below size().
template <class T> struct QOR_API SVec3d {
    using value_type = T;

    T x{};
    T y{};
    T z{};

    constexpr SVec3d() = default;
    constexpr SVec3d(T newX, T newY, T newZ) : x(newX), y(newY), z(newZ) {}

    static constexpr std::size_t size() { return 3; }
    constexpr T& operator[](std::size_t index) { return index == 0 ? x : index == 1 ? y : z; }
    constexpr const T& operator[](std::size_t index) const {
        return index == 0 ? x : index == 1 ? y : z;
    }
    constexpr bool operator==(const SVec3d&) const = default;
};

/// Three components of a position or a direction; zero at first. The index must be below size().
template <class T> struct QOR_API Vec3d {
    using value_type = T;

    T x{};
    T y{};
    T z{};

    constexpr Vec3d() = default;
    constexpr Vec3d(T newX, T newY, T newZ) : x(newX), y(newY), z(newZ) {}

    static constexpr std::size_t size() { return 3; }
    constexpr T& operator[](std::size_t index) { return index == 0 ? x : index == 1 ? y : z; }
    constexpr const T& operator[](std::size_t index) const {
        return index == 0 ? x : index == 1 ? y : z;
    }
    constexpr bool operator==(const Vec3d&) const = default;
};

/// Four components; zero at first. The index must be below size().
template <class T> struct QOR_API Vec4d {
    using value_type = T;

    T x{};
    T y{};
    T z{};
    T w{};

    constexpr Vec4d() = default;
    constexpr Vec4d(T newX, T newY, T newZ, T newW) : x(newX), y(newY), z(newZ), w(newW) {}

    static constexpr std::size_t size() { return 4; }
    constexpr T& operator[](std::size_t index) {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }
    constexpr const T& operator[](std::size_t index) const {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }
    constexpr bool operator==(const Vec4d&) const = default;
};

}  // namespace QOR
