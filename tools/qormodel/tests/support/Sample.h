// Small model files that the tests look at.
#pragma once

#include "support/TemporaryFile.h"

#include "model/Document.h"

#include <string>

namespace qormodel::testing {

/// A document with two objects, a field, a relation to the root and points, in canonical text.
extern const std::string projectText;
/// The rows that every object has beside its name, as they are written where nothing set them.
extern const std::string unsetObjectRows;

/// Header and version of a model file, ahead of `body`.
std::string modelText(const std::string& body);

/// A document whose root holds, besides its own, one attribute of that type word with that text
/// behind "Value".
std::string valueModel(const std::string& type, const std::string& value);

/// A document that was read from a text, with the file that it came from.
struct LoadedText {
    explicit LoadedText(const std::string& text) : file(text), document(load()) {}

    TemporaryFile file;
    Document document;

private:
    Document load() const { return loadDocument(file.getName()); }
};

}  // namespace qormodel::testing
