// Universally unique identifiers.
#pragma once

#include <QOR/Export.h>

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace QOR::uuids {

/// Sixteen bytes that identify something. A plain value; at first nil, that is all zero.
class QOR_API uuid {
public:
    using Bytes = std::array<std::uint8_t, 16>;

    constexpr uuid() = default;
    constexpr explicit uuid(const Bytes& bytes) : content(bytes) {}

    /// A fresh random identifier (version 4), never nil. Can be called from any thread; costs no
    /// system call but for the first one of a thread.
    static uuid generate();

    /// Reads 32 hexadecimal digits of either case, with '-' anywhere between them and optionally
    /// one pair of braces around all.
    /// \return empty for any other text.
    static std::optional<uuid> parse(const std::string& text);

    /// The textual form, as in "01234567-89ab-cdef-0123-456789abcdef".
    std::string toString() const;

    constexpr bool is_nil() const { return content == Bytes{}; }

    constexpr const Bytes& bytes() const { return content; }

    /// Compares byte by byte, the first byte counting most.
    constexpr auto operator<=>(const uuid&) const = default;

private:
    Bytes content{};
};

}  // namespace QOR::uuids
