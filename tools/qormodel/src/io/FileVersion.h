// Which state of a file was seen.
#pragma once

#include <optional>
#include <string>

#include <sys/stat.h>
#include <sys/types.h>

namespace qormodel {

/// Two states of a file differ in this where the file was written or replaced between them.
struct FileVersion {
    ::dev_t device = 0;
    ::ino_t inode = 0;
    ::off_t size = 0;
    ::time_t seconds = 0;  ///< of the last write
    long nanoseconds = 0;

    bool operator==(const FileVersion&) const = default;
    bool isSameFile(const FileVersion& other) const {
        return device == other.device && inode == other.inode;
    }
};

/// The version by the status of a file; nothing for what is no regular file.
std::optional<FileVersion> versionOf(const struct ::stat& status);
/// The version of what stands under a name now, where links lead; nothing where there is no
/// regular file.
std::optional<FileVersion> inqFileVersion(const std::string& file);

}  // namespace qormodel
