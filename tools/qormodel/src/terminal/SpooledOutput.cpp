#include "terminal/SpooledOutput.h"

#include "Failure.h"

#include <cerrno>
#include <vector>

#include <unistd.h>

namespace qormodel {

namespace {
constexpr std::size_t chunkSize = std::size_t{1} << 18;
}  // namespace

SpooledOutput::SpooledOutput()
    : buffer(file.getDescriptor(), "the temporary file") {}

void SpooledOutput::finish() {
    buffer.finish();
    TargetBuffer output(STDOUT_FILENO, "standard output");
    std::vector<char> chunk(chunkSize);
    for (::off_t offset = 0;;) {
        const ::ssize_t got = ::pread(file.getDescriptor(), chunk.data(), chunk.size(), offset);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw Failure("the temporary file cannot be read");
        if (got == 0) break;
        output.sputn(chunk.data(), got);
        offset += got;
    }
    output.finish();
}

}  // namespace qormodel
