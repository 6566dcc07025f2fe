#include "io/SourceBuffer.h"

#include <algorithm>

namespace qormodel {

namespace {
constexpr std::size_t chunkSize = std::size_t{1} << 18;

std::uint64_t countLines(const char* begin, const char* end) {
    return static_cast<std::uint64_t>(std::count(begin, end, '\n'));
}
}  // namespace

SourceBuffer::SourceBuffer(const SourceFile& source, std::uint64_t offset, std::uint64_t line,
                           Progress& progress)
    : source(source), progress(progress), chunk(chunkSize), chunkEnd(offset), chunkLine(line) {
    setg(chunk.data(), chunk.data(), chunk.data());
}

std::uint64_t SourceBuffer::getOffset() const {
    return chunkEnd - static_cast<std::uint64_t>(egptr() - gptr());
}

std::uint64_t SourceBuffer::getLine() const {
    return chunkLine + countLines(eback(), gptr());
}

SourceBuffer::int_type SourceBuffer::underflow() {
    if (gptr() != egptr()) return traits_type::to_int_type(*gptr());
    chunkLine += countLines(eback(), egptr());
    const std::size_t got = source.readAt(chunkEnd, chunk.data(), chunk.size());
    setg(chunk.data(), chunk.data(), chunk.data() + got);
    chunkEnd += got;
    progress.show(chunkEnd);
    return got == 0 ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

}  // namespace qormodel
