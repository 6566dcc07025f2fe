#include "terminal/SpooledOutput.h"

#include "Failure.h"

#include <cerrno>
#include <vector>

#include <unistd.h>

namespace qormodel {

namespace {
constexpr std::size_t chunkSize = std::size_t{1} << 18;

std::unique_ptr<std::FILE, int (*)(std::FILE*)> makeFile() {
    std::FILE* const file = std::tmpfile();
    if (!file) throw Failure("no temporary file can be made");
    return {file, &std::fclose};
}
}  // namespace

SpooledOutput::SpooledOutput()
    : file(makeFile()), buffer(::fileno(file.get()), "the temporary file") {}

void SpooledOutput::finish() {
    buffer.finish();
    TargetBuffer output(STDOUT_FILENO, "standard output");
    std::vector<char> chunk(chunkSize);
    for (::off_t offset = 0;;) {
        const ::ssize_t got = ::pread(::fileno(file.get()), chunk.data(), chunk.size(), offset);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw Failure("the temporary file cannot be read");
        if (got == 0) break;
        output.sputn(chunk.data(), got);
        offset += got;
    }
    output.finish();
}

}  // namespace qormodel
