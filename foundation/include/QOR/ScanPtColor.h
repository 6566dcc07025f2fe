// A coloured scan point.
#pragma once

#include <array>
#include <cstdint>

namespace QOR {

/// A position `P` and a colour of four bytes.
template <class P> struct ScanPtColor {
    P position{};
    std::array<std::uint8_t, 4> color{};

    constexpr bool operator==(const ScanPtColor&) const = default;
};

}  // namespace QOR
