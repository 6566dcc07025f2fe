// Changes of a document by path.
#pragma once

#include "model/Document.h"
#include "model/Relations.h"

#include <optional>
#include <string>
#include <vector>

namespace qormodel {

/// What a change did, or why it was not made.
struct EditResult {
    std::string path;
    std::string before;
    std::string after;
    bool isAdded = false;                ///< the attribute is new
    std::optional<std::string> refusal;  ///< who or what stood against it
};

/// Sets an attribute from text as any program sets it: its observers are asked and may refuse.
/// \param addType the type word, as in "double" or "Attr<double>" in any case, of an attribute that
/// is to be added where there is none; empty for none. \throws Failure for a path or a text that is no value
EditResult setValue(const Document& document, const std::string& path, const std::string& text,
                    const std::string& addType);

/// The relations of what stands elsewhere that lead to what is at and below a path: they end with
/// it.
std::vector<Relation> listRelationsTo(const Document& document, const std::string& path);

/// Removes a custom attribute, a field, or a child with all below it.
/// \throws Failure where there is none, or where the class declares the attribute
EditResult removeElement(const Document& document, const std::string& path);

/// Whether the value at each path is the same once the document was written and read; else reports
/// the first that is not. \throws Failure
std::optional<std::string> findRounded(const Document& document,
                                       const std::vector<EditResult>& edits);

}  // namespace qormodel
