// Powers of ten that are exact in binary, and where a number lies between them.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace QOR::AttributeContainer {

/// 10^0 to 10^19.
inline constexpr auto wholePowersOfTen = [] {
    std::array<std::uint64_t, 20> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

/// 10^-4 to 10^22. Those of 10^0 and above are exact; the others are the nearest numbers and lie
/// above the true powers, so that a number is below one exactly if it is below the other.
inline constexpr std::array<double, 27> powersOfTen{
    1e-4, 1e-3, 1e-2, 1e-1, 1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// 10^exponent for -4 to 22.
constexpr double powerOfTen(int exponent) {
    return powersOfTen[static_cast<std::size_t>(exponent + 4)];
}

/// The decimal exponent of a number from 1e-4 to below 1e22: 0 for 1 to below 10.
constexpr int decimalExponent(double magnitude) {
    // 1233 / 4096 is the decimal logarithm of 2, closely enough for a guess that is right or one
    // too small in this range.
    const int binaryExponent =
        static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52) - 1023;
    const int guess = (binaryExponent * 1233) >> 12;
    return guess + (magnitude >= powerOfTen(guess + 1));
}

}  // namespace QOR::AttributeContainer
