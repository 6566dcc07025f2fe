// Stream buffers over a text in memory that tell how far they are.
#pragma once

#include "Progress.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <streambuf>
#include <string>
#include <string_view>

namespace example {

/// Collects what is written. The model stream is flushed behind every line, which costs nothing
/// here, where a file would get a system call each time.
class OutputBuffer : public std::streambuf {
public:
    /// \param expectedSize how many bytes will come, for the progress; 0 where nobody knows.
    OutputBuffer(const std::string& label, std::uint64_t expectedSize);

    /// All that was written, which leaves this buffer.
    std::string take();

protected:
    int_type overflow(int_type character) override;

private:
    void emptyChunk();

    Progress progress;
    std::string text;
    std::array<char, 1 << 16> chunk;
};

/// Gives out a text that lives at least as long as the buffer.
class InputBuffer : public std::streambuf {
public:
    InputBuffer(const std::string& label, std::string_view text);

protected:
    int_type underflow() override;

private:
    Progress progress;
    std::string_view text;
};

}  // namespace example
