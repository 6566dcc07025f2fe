// A coloured scan point.
#pragma once

#include <QOR/Export.h>

#include <array>
#include <cstdint>

namespace QOR {

/// A position `P` and a colour of four bytes.
template <class P> struct QOR_API ScanPtColor {
    P position{};
    std::array<std::uint8_t, 4> color{};

    constexpr bool operator==(const ScanPtColor&) const = default;
};

}  // namespace QOR
