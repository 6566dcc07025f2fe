#include "io/TargetBuffer.h"

#include "Failure.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <unistd.h>

namespace qormodel {

namespace {
constexpr std::size_t chunkSize = std::size_t{1} << 18;
}  // namespace

TargetBuffer::TargetBuffer(int descriptor, std::string name)
    : descriptor(descriptor), name(std::move(name)), chunk(chunkSize) {
    setp(chunk.data(), chunk.data() + chunk.size());
}

void TargetBuffer::finish() {
    putChunk();
    if (failure == EPIPE && descriptor == STDOUT_FILENO) throw ReaderLeft();
    if (failure != 0)
        throw Failure(Place{name}, std::string("cannot be written: ") + std::strerror(failure));
}

TargetBuffer::int_type TargetBuffer::overflow(int_type character) {
    if (!putChunk()) return traits_type::eof();
    if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
    return sputc(traits_type::to_char_type(character));
}

std::streamsize TargetBuffer::xsputn(const char* data, std::streamsize count) {
    if (count > epptr() - pptr() && !putChunk()) return 0;
    const auto size = static_cast<std::size_t>(count);
    if (size > chunk.size()) return put(data, size) ? count : 0;
    std::memcpy(pptr(), data, size);
    pbump(static_cast<int>(count));
    return count;
}

bool TargetBuffer::putChunk() {
    const auto count = static_cast<std::size_t>(pptr() - pbase());
    setp(chunk.data(), chunk.data() + chunk.size());
    return put(chunk.data(), count);
}

bool TargetBuffer::put(const char* data, std::size_t count) {
    while (failure == 0 && count > 0) {
        const ::ssize_t written = ::write(descriptor, data, count);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            failure = errno;
            break;
        }
        data += written;
        count -= static_cast<std::size_t>(written);
        numWritten += static_cast<std::uint64_t>(written);
    }
    return failure == 0;
}

}  // namespace qormodel
