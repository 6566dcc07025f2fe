// When two values of an attribute are the same, and when one is the default of its type.
#pragma once

#include <AttributeContainer/ValueTypes.h>

#include <algorithm>
#include <concepts>
#include <cstddef>

namespace QOR::AttributeContainer {

/// A value of a fixed number of components, whatever its class.
template <class T>
concept Components = requires(const T& value) {
    typename T::value_type;
    value[std::size_t{0}];
    { value.size() } -> std::convertible_to<std::size_t>;
} && !requires(const T& value) { value.begin(); };

template <class T>
bool sameValue(const T& a, const T& b);

template <class Position>
bool sameValue(const ScanPtColor<Position>& a, const ScanPtColor<Position>& b) {
    return sameValue(a.position, b.position) && a.color == b.color;
}

template <class Element>
bool sameValue(const std::vector<Element>& a, const std::vector<Element>& b) {
    return &a == &b || std::equal(a.begin(), a.end(), b.begin(), b.end(),
                                  [](const Element& x, const Element& y) { return sameValue(x, y); });
}

/// Whether two values are the same, with no tolerance.
template <class T>
bool sameValue(const T& a, const T& b) {
    if constexpr (std::floating_point<T>) {
        return !(a < b) && !(a > b);  // so a NaN is the same as anything; stored documents rely on it
    } else if constexpr (Components<T>) {
        for (std::size_t i = 0; i < a.size(); ++i)
            if (!sameValue(a[i], b[i])) return false;
        return true;
    } else {
        return a == b;
    }
}

/// Whether a value is the one that a stream leaves out. A NaN is not, although it compares equal.
template <class T>
bool isDefaultValue(const T& value) {
    if constexpr (std::floating_point<T>) {
        return value == 0;
    } else if constexpr (Components<T>) {
        for (std::size_t i = 0; i < value.size(); ++i)
            if (!isDefaultValue(value[i])) return false;
        return true;
    } else if constexpr (requires { value.empty(); }) {
        return value.empty();
    } else {
        return value == T{};
    }
}

}  // namespace QOR::AttributeContainer
