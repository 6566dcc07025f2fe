// What lies ready in a stream's buffer.
#pragma once

#include <cstddef>
#include <limits>
#include <streambuf>

namespace QOR::AttributeContainer {

/// The get area of any buffer. Only derived classes may name these members, which are called on the
/// buffer as what it is.
struct GetArea : std::streambuf {
    static const char* begin(const std::streambuf& buffer) { return (buffer.*&GetArea::gptr)(); }
    static const char* end(const std::streambuf& buffer) { return (buffer.*&GetArea::egptr)(); }
    static void take(std::streambuf& buffer, int size) { (buffer.*&GetArea::gbump)(size); }
    static constexpr std::ptrdiff_t mostAtOnce = std::numeric_limits<int>::max();
};

}  // namespace QOR::AttributeContainer
