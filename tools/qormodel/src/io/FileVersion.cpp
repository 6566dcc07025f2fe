#include "io/FileVersion.h"

namespace qormodel {

std::optional<FileVersion> versionOf(const struct ::stat& status) {
    if (!S_ISREG(status.st_mode)) return std::nullopt;
    return FileVersion{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                       status.st_mtim.tv_nsec};
}

std::optional<FileVersion> inqFileVersion(const std::string& file) {
    struct ::stat status {};
    if (::stat(file.c_str(), &status) != 0) return std::nullopt;
    return versionOf(status);
}

}  // namespace qormodel
