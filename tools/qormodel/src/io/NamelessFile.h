// A temporary file that nobody else sees.
#pragma once

#include <string>

namespace qormodel {

/// A file without a name, in the folder that TMPDIR names, else in /tmp. It goes with this object,
/// however the program ends.
class NamelessFile {
public:
    /// \throws Failure where none can be made
    NamelessFile();
    NamelessFile(const NamelessFile&) = delete;
    NamelessFile& operator=(const NamelessFile&) = delete;
    ~NamelessFile();

    int getDescriptor() const { return descriptor; }
    /// Gives the descriptor away: the caller closes it.
    int release();
    /// Under this name the process can open it.
    std::string getName() const { return "/proc/self/fd/" + std::to_string(descriptor); }

private:
    int descriptor = -1;
};

}  // namespace qormodel
