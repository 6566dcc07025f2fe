#include "io/FileLock.h"

#include "Failure.h"
#include "io/FileVersion.h"
#include "terminal/Output.h"

#include <cerrno>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace qormodel {

namespace {
constexpr int numTries = 100;
constexpr int numReplaced = 10'000;  // more is a file system without lasting numbers
constexpr unsigned pauseMicroseconds = 10'000;

std::optional<FileVersion> versionOfOpen(int descriptor) {
    struct ::stat status {};
    if (::fstat(descriptor, &status) != 0) return std::nullopt;
    return versionOf(status);
}

// A lock of the open file, not of the process, and of another kind than that of the program flock,
// under which a script may run this one.
bool lock(int descriptor, int how) {
    struct ::flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    int result = -1;
    do result = ::fcntl(descriptor, how, &whole);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

bool waitForLock(int descriptor, const std::string& file) {
    for (int i = 0; i < numTries; ++i) {
        if (lock(descriptor, F_OFD_SETLK)) return true;
        if (errno != EAGAIN && errno != EACCES) return false;
        ::usleep(pauseMicroseconds);
    }
    printNote(describe(Place{file}, "is being changed by another qormodel: waiting for its end"));
    return lock(descriptor, F_OFD_SETLKW);
}
}  // namespace

// Whoever waited may hold the lock of a file that was replaced; then it is that of the new one.
FileLock::FileLock(const std::string& file) {
    for (int i = 0; i < numReplaced && inqFileVersion(file); ++i) {
        descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        if (descriptor < 0) return;
        if (!waitForLock(descriptor, file)) break;
        const auto locked = versionOfOpen(descriptor);
        const auto present = inqFileVersion(file);
        if (locked && present && locked->isSameFile(*present)) return;
        release();
    }
    release();
}

FileLock::FileLock(FileLock&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}

FileLock::~FileLock() {
    release();
}

void FileLock::release() {
    if (descriptor >= 0) ::close(descriptor);
    descriptor = -1;
}

}  // namespace qormodel
