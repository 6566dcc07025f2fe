// Whole documents as JSON, of any size.
#pragma once

#include "model/Document.h"
#include "model/Elements.h"

#include <ostream>
#include <streambuf>
#include <string>

namespace qormodel {

/// Writes one versioned object with a list of files, each with its elements, their attributes and
/// values. Needs memory for one value of a list, whatever the size of the documents.
class ContentJson {
public:
    /// Begins the object. The target outlives this object.
    ContentJson(std::streambuf& target, const std::string& command);

    /// \param onlyMarked leaves out attributes that are not marked, and elements without any.
    void add(const Document& document, bool onlyMarked);
    /// Ends the object.
    void finish();

private:
    void addElement(const Element& element, bool onlyMarked);

    std::ostream stream;
    bool hasFiles = false;
    bool hasElements = false;
};

}  // namespace qormodel
