// A document as it would be stored, in a file without a name.
#pragma once

#include "model/Document.h"

#include <cstdio>
#include <memory>
#include <string>

namespace qormodel {

/// A written copy of a document, which goes with this object.
class WrittenCopy {
public:
    /// \throws Failure
    explicit WrittenCopy(const Document& document);

    /// Under this name the process can open it.
    std::string getName() const;

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
};

}  // namespace qormodel
