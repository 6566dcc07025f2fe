#include "io/TargetBuffer.h"

#include "Failure.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <unistd.h>

namespace qormodel {

TargetBuffer::TargetBuffer(int descriptor, std::string name)
    : descriptor(descriptor), name(std::move(name)) {}

void TargetBuffer::finish() {
    BufferedSink::finish();
    if (failure == EPIPE && descriptor == STDOUT_FILENO) throw ReaderLeft();
    if (failure != 0)
        throw Failure(Place{name}, std::string("cannot be written: ") + std::strerror(failure));
}

bool TargetBuffer::pass(const char* data, std::size_t size) {
    while (size > 0) {
        const ::ssize_t written = ::write(descriptor, data, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            failure = errno;
            return false;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
        numWritten += static_cast<std::uint64_t>(written);
    }
    return true;
}

}  // namespace qormodel
