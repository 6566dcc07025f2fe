#include "io/TargetFile.h"

#include "Failure.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qormodel {

namespace {
[[noreturn]] void fail(const std::string& file, const std::string& what) {
    throw Failure(Place{file}, what + ": " + std::strerror(errno));
}

// What a new file may be used for: as the old one, or as the user's mask says.
::mode_t modeOf(const std::string& file) {
    struct ::stat status {};
    if (::stat(file.c_str(), &status) == 0) return status.st_mode & 07777;
    const ::mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

void syncFolder(const std::string& file) {
    const auto folder = std::filesystem::path(file).parent_path();
    const int descriptor =
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

// The backup is a second name of the old file, so that at no moment there is no file.
void keep(const std::string& file) {
    const std::string backup = file + '~';
    const std::string fresh = backup + std::to_string(::getpid());
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return;
    if (::link(file.c_str(), fresh.c_str()) != 0) {
        std::filesystem::copy_file(file, fresh, std::filesystem::copy_options::overwrite_existing,
                                   error);
        if (error) throw Failure(Place{fresh}, "cannot be written: " + error.message());
    }
    const int reason = ::rename(fresh.c_str(), backup.c_str()) == 0 ? 0 : errno;
    ::unlink(fresh.c_str());  // still there too where both are names of one file already
    errno = reason;
    if (reason != 0) fail(backup, "cannot be written");
}
}  // namespace

TargetFile::TargetFile(const std::string& file) : name(file), target(file) {
    std::error_code error;
    const auto real = std::filesystem::canonical(file, error);
    if (!error) target = real.string();
    if (std::filesystem::is_directory(target, error)) throw Failure(Place{file}, "is a folder");
    if (std::filesystem::is_other(target, error)) {
        descriptor = ::open(target.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor < 0) fail(file, "cannot be written");
        return;
    }
    checkWritable();
    temporary = target + ".XXXXXX";
    descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) fail(file, "cannot be written");
    ::fchmod(descriptor, modeOf(target));
}

TargetFile::~TargetFile() {
    close();
    if (!temporary.empty()) ::unlink(temporary.c_str());
}

// To replace a file takes the rights of its folder alone; its own ones are to count as well.
void TargetFile::checkWritable() const {
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT)
        fail(name, "cannot be written");
}

void TargetFile::replace(bool keepBackup, const std::optional<FileVersion>& seen) {
    if (temporary.empty()) return close();
    if (::fsync(descriptor) != 0) fail(name, "cannot be written");
    close();
    if (seen && inqFileVersion(target) != seen)
        throw Failure(Place{name}, "has changed since it was read: nothing is written");
    if (keepBackup) keep(target);
    if (::rename(temporary.c_str(), target.c_str()) != 0) fail(name, "cannot be written");
    temporary.clear();
    syncFolder(target);
}

void TargetFile::close() {
    if (descriptor >= 0) ::close(descriptor);
    descriptor = -1;
}

}  // namespace qormodel
