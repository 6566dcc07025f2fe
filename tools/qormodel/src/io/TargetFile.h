// A file that is replaced as a whole or not at all.
#pragma once

#include "io/FileVersion.h"

#include <optional>
#include <string>

namespace qormodel {

/// The new content of a file, in a temporary file beside it until `replace`. Whenever the program
/// ends, the old file or the new one is there whole; without `replace` it is the old one.
class TargetFile {
public:
    /// Follows symbolic links, so that the link stays. A device or a pipe is not replaced: the
    /// content goes into it at once. \throws Failure, also for a file that the user may not write,
    /// although its folder would let it be replaced
    explicit TargetFile(const std::string& file);
    TargetFile(const TargetFile&) = delete;
    TargetFile& operator=(const TargetFile&) = delete;
    ~TargetFile();

    int getDescriptor() const { return descriptor; }
    /// Where the new content stands until `replace`; empty for a device or a pipe.
    const std::string& getTemporaryName() const { return temporary; }
    /// Brings the content to the disk and puts it into the place of the old file, which stays as
    /// `FILE~` if `keepBackup`.
    /// \param seen the old file as it was read, where the new content is made of it: if it is not
    /// that any more, somebody else's change would be lost, and it stays. \throws Failure
    void replace(bool keepBackup, const std::optional<FileVersion>& seen = std::nullopt);

private:
    void checkWritable() const;
    void close();

    std::string name;    // as the user has it
    std::string target;  // where that leads
    std::string temporary;
    int descriptor = -1;
};

}  // namespace qormodel
