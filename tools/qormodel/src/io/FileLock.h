// Keeps a second run of the program from changing the same file at the same time.
#pragma once

#include <string>

namespace qormodel {

/// Held from ahead of the reading of a file until it was replaced: another run that changes the
/// file waits, and then reads what this one wrote. The lock lies on the file itself, so that
/// nothing is left behind, and ends with the process at the latest. Programs that do not ask for
/// it are not kept out.
class FileLock {
public:
    /// Holds nothing.
    FileLock() = default;
    /// Waits for other runs, and tells so after a second. Holds nothing where there is no regular
    /// file that may be written, or where the file system has no locks.
    explicit FileLock(const std::string& file);
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&&) = delete;
    ~FileLock();

    bool isHeld() const { return descriptor >= 0; }

private:
    void release();

    int descriptor = -1;
};

}  // namespace qormodel
