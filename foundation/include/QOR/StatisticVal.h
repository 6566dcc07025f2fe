// Statistics of a measured quantity, alone and with limits.
#pragma once

#include <QOR/Export.h>

#include <QOR/Vec.h>

namespace QOR {

/// Four statistics of one quantity.
template <class T> struct QOR_API StatisticVal {
    using value_type = T;

    T a{};
    T b{};
    T c{};
    T d{};

    constexpr bool operator==(const StatisticVal&) const = default;
};

/// Four statistics, and two sets of limits of two pairs each: `p` with `q`, and `r` with `s`.
/// Limits that are known as one pair stand in both pairs of their set.
template <class T> struct QOR_API StatisticValLimits : StatisticVal<T> {
    SVec2d<double> p;
    SVec2d<double> q;
    SVec2d<double> r;
    SVec2d<double> s;

    constexpr bool operator==(const StatisticValLimits&) const = default;
};

/// The form that makes use of both pairs of each set. It holds the same numbers: `q` and `s` have
/// their place in the plain form too, so that either can be read from a stream of the other.
template <class T> struct QOR_API StatisticValLimitsEx : StatisticValLimits<T> {
    constexpr bool operator==(const StatisticValLimitsEx&) const = default;
};

}  // namespace QOR
