#include "io/SourceFile.h"

#include "Failure.h"
#include "io/NamelessFile.h"

#include <cerrno>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qormodel {

namespace {
constexpr std::size_t chunkSize = std::size_t{1} << 18;

[[noreturn]] void fail(const std::string& file, const std::string& what) {
    throw Failure(Place{file}, what + ": " + std::strerror(errno));
}

void writeAll(int descriptor, const char* data, std::size_t count, const std::string& name) {
    while (count > 0) {
        const ::ssize_t written = ::write(descriptor, data, count);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) fail(name, "cannot be copied to a temporary file");
        data += written;
        count -= static_cast<std::size_t>(written);
    }
}
}  // namespace

SourceFile::SourceFile(const std::string& file) : name(file == "-" ? "stdin" : file) {
    descriptor = file == "-" ? ::dup(STDIN_FILENO) : ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) fail(name, "cannot be read");
    struct ::stat status {};
    try {
        if (::fstat(descriptor, &status) != 0) fail(name, "cannot be read");
        if (S_ISDIR(status.st_mode)) throw Failure(Place{name}, "is a folder");
        version = versionOf(status);
        if (S_ISREG(status.st_mode) && ::lseek(descriptor, 0, SEEK_CUR) == 0) {
            size = static_cast<std::uint64_t>(status.st_size);
        } else {
            spool();
        }
    } catch (...) {
        ::close(descriptor);
        throw;
    }
}

SourceFile::~SourceFile() {
    ::close(descriptor);
}

bool SourceFile::hasChanged() const {
    struct ::stat status {};
    return version && ::fstat(descriptor, &status) == 0 && versionOf(status) != version;
}

std::size_t SourceFile::readAt(std::uint64_t offset, char* target, std::size_t count) const {
    std::size_t done = 0;
    while (done < count) {
        const ::ssize_t got = ::pread(descriptor, target + done, count - done,
                                      static_cast<::off_t>(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail(name, "cannot be read");
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

std::string SourceFile::slice(std::uint64_t begin, std::uint64_t end) const {
    std::string text(static_cast<std::size_t>(end - begin), '\0');
    text.resize(readAt(begin, text.data(), text.size()));
    return text;
}

// Replaces what can be read once by a copy.
void SourceFile::spool() {
    NamelessFile copy;
    std::vector<char> chunk(chunkSize);
    while (true) {
        const ::ssize_t got = ::read(descriptor, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail(name, "cannot be read");
        if (got == 0) break;
        writeAll(copy.getDescriptor(), chunk.data(), static_cast<std::size_t>(got), name);
        size += static_cast<std::uint64_t>(got);
    }
    ::close(descriptor);
    descriptor = copy.release();
    version.reset();  // of no concern to the copy
}

}  // namespace qormodel
