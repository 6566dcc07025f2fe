// Stream buffers of a host that keeps its documents in memory; a flush costs nothing there.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>

namespace bench {

/// Collects what is written.
class MemorySink : public std::streambuf {
public:
    MemorySink() { grow(1 << 16); }
    /// The text so far. The sink is of no use afterwards.
    std::string take() {
        text.resize(numWritten());
        return std::move(text);
    }

protected:
    int_type overflow(int_type c) override {
        grow(2 * text.size());
        return traits_type::eq_int_type(c, traits_type::eof())
                   ? traits_type::not_eof(c)
                   : sputc(traits_type::to_char_type(c));
    }
    std::streamsize xsputn(const char* from, std::streamsize count) override {
        const auto size = static_cast<std::size_t>(count);
        if (epptr() - pptr() < count) grow(std::max(2 * text.size(), numWritten() + size));
        std::memcpy(pptr(), from, size);
        advance(size);
        return count;
    }

private:
    std::size_t numWritten() const { return static_cast<std::size_t>(pptr() - pbase()); }
    void grow(std::size_t size) {
        const std::size_t written = numWritten();
        text.resize(size);
        setp(text.data(), text.data() + text.size());
        advance(written);
    }
    void advance(std::size_t count) {  // pbump takes an int
        constexpr std::size_t most = std::numeric_limits<int>::max();
        for (; count > most; count -= most) pbump(std::numeric_limits<int>::max());
        pbump(static_cast<int>(count));
    }

    std::string text;
};

/// Gives out a text, which outlives the source.
class MemorySource : public std::streambuf {
public:
    explicit MemorySource(std::string_view text) {
        char* const start = const_cast<char*>(text.data());  // nothing writes to a get area
        setg(start, start, start + text.size());
    }
};

}  // namespace bench
