#include "MemoryStream.h"

#include <algorithm>
#include <utility>

namespace example {

// Writing ----------------------------------------------------------------------------------------

OutputBuffer::OutputBuffer(const std::string& label, std::uint64_t expectedSize)
    : progress(label, expectedSize) {
    text.reserve(expectedSize);
    setp(chunk.data(), chunk.data() + chunk.size());
}

void OutputBuffer::emptyChunk() {
    text.append(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(chunk.data(), chunk.data() + chunk.size());
}

OutputBuffer::int_type OutputBuffer::overflow(int_type character) {
    emptyChunk();
    progress.show(text.size());
    if (!traits_type::eq_int_type(character, traits_type::eof()))
        sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

std::string OutputBuffer::take() {
    emptyChunk();
    return std::exchange(text, {});
}

// Reading ----------------------------------------------------------------------------------------

InputBuffer::InputBuffer(const std::string& label, std::string_view text)
    : progress(label, text.size()), text(text) {
    // A reader asks for characters and never writes into them.
    char* const begin = const_cast<char*>(text.data());
    setg(begin, begin, begin);
}

InputBuffer::int_type InputBuffer::underflow() {
    constexpr std::size_t chunkSize = 1 << 16;
    const auto done = static_cast<std::size_t>(egptr() - eback());
    if (done == text.size()) return traits_type::eof();
    progress.show(done);
    // The text in front stays in reach, so that characters can be put back.
    setg(eback(), gptr(), eback() + std::min(done + chunkSize, text.size()));
    return traits_type::to_int_type(*gptr());
}

}  // namespace example
