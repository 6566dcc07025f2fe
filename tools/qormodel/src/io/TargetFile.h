// A file that is replaced as a whole or not at all.
#pragma once

#include <string>

namespace qormodel {

/// The new content of a file, in a temporary file beside it until `replace`. Whenever the program
/// ends, the old file or the new one is there whole; without `replace` it is the old one.
class TargetFile {
public:
    /// Follows symbolic links, so that the link stays. A device or a pipe is not replaced: the
    /// content goes into it at once. \throws Failure
    explicit TargetFile(const std::string& file);
    TargetFile(const TargetFile&) = delete;
    TargetFile& operator=(const TargetFile&) = delete;
    ~TargetFile();

    int getDescriptor() const { return descriptor; }
    /// Where the new content stands until `replace`; empty for a device or a pipe.
    const std::string& getTemporaryName() const { return temporary; }
    /// Brings the content to the disk and puts it into the place of the old file, which stays as
    /// `FILE~` if `keepBackup`. \throws Failure
    void replace(bool keepBackup);

private:
    void close();

    std::string target;
    std::string temporary;
    int descriptor = -1;
};

}  // namespace qormodel
