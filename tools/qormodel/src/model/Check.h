// Looks for what is wrong with a document that can be read.
#pragma once

#include "model/Document.h"

#include <string>
#include <vector>

namespace qormodel {

/// One thing that somebody should look at.
struct Finding {
    enum class Severity { Warning, Problem };

    Severity severity = Severity::Problem;
    std::string kind;  ///< a word: name, type, class, relation, reference, version, survival, read
    Place place;
    std::string text;
};

/// Names, types, classes, relations, references and versions, in the order of the file, then what
/// would not come back. \throws Failure
std::vector<Finding> checkDocument(const Document& document);

}  // namespace qormodel
