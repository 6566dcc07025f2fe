// The standard output of commands that print whole documents.
#pragma once

#include "io/NamelessFile.h"
#include "io/TargetBuffer.h"

#include <streambuf>

namespace qormodel {

/// Keeps what is written to it in a file without a name, since it may be larger than the memory,
/// and gives it to the standard output at the end: a command that fails has printed nothing.
class SpooledOutput {
public:
    /// \throws Failure where no file can be made
    SpooledOutput();

    std::streambuf& getBuffer() { return buffer; }
    /// Prints all that was written. \throws Failure
    void finish();

private:
    NamelessFile file;
    TargetBuffer buffer;
};

}  // namespace qormodel
