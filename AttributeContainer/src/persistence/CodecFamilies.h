// The families of value types that writing and reading tell apart.
#pragma once

#include <QOR/Vec.h>

#include <array>
#include <concepts>
#include <cstddef>

namespace QOR::AttributeContainer {

template <class T> inline constexpr bool isSmallVector = false;
template <class Component> inline constexpr bool isSmallVector<SVec2d<Component>> = true;
template <class Component> inline constexpr bool isSmallVector<SVec3d<Component>> = true;
template <class Component> inline constexpr bool isSmallVector<Vec3d<Component>> = true;
template <class Component> inline constexpr bool isSmallVector<Vec4d<Component>> = true;

/// Two to four components, which know their number and type.
template <class T> concept SmallVector = isSmallVector<T>;

template <class T>
concept NumberVector = SmallVector<T> && std::floating_point<typename T::value_type>;

/// Vec4d<unsigned char> is none: its components are characters.
template <class T>
concept IntegerVector = SmallVector<T> && std::integral<typename T::value_type> &&
    !std::same_as<typename T::value_type, unsigned char>;

/// Vectors of integers with a blank behind every component, the last one too.
template <class T>
concept EndsInBlank = IntegerVector<T> &&
    (std::same_as<T, SVec2d<int>> || std::same_as<T, SVec2d<unsigned int>> ||
     std::same_as<T, SVec3d<unsigned int>>);

/// Vectors of integers that the stream's own operators read.
template <class T>
concept ReadByStream = IntegerVector<T> &&
    (std::same_as<T, SVec2d<int>> || std::same_as<T, SVec2d<unsigned int>>);

/// The integers of one byte, whose own operators on streams would make characters of them.
template <class T>
concept ByteInteger = std::integral<T> &&
    (std::same_as<T, signed char> || std::same_as<T, unsigned char>);

template <SmallVector T> constexpr auto componentsOf(const T& value) {
    std::array<typename T::value_type, T::size()> components{};
    for (std::size_t i = 0; i < T::size(); ++i) components[i] = value[i];
    return components;
}

}  // namespace QOR::AttributeContainer
