// A document as it would be stored, in a file without a name.
#pragma once

#include "io/NamelessFile.h"
#include "model/Document.h"

#include <string>

namespace qormodel {

/// A written copy of a document, which goes with this object.
class WrittenCopy {
public:
    /// \throws Failure
    explicit WrittenCopy(const Document& document);

    /// Under this name the process can open it.
    std::string getName() const { return file.getName(); }

private:
    NamelessFile file;
};

}  // namespace qormodel
