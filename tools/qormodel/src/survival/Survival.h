// What of a document would not come back if it were written now.
#pragma once

#include "model/Document.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qormodel {

/// One thing that the file holds and a written copy would not.
struct Loss {
    std::string path;  ///< of the attribute, or of the element whose part it is
    std::uint64_t line = 0;
    std::string before;
    std::string after;  ///< empty where nothing would stand there
    std::string reason;
};

/// The survival report: writes the document to a temporary file and holds the text of that against
/// the text of its source, value by value. A value that is only spelled in another way comes back.
/// \throws Failure
std::vector<Loss> findLosses(const Document& document);

/// One line of a report.
std::string describe(const Loss& loss);

}  // namespace qormodel
