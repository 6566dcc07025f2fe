// A model file with all that is in it.
#pragma once

#include "Failure.h"
#include "io/SourceFile.h"
#include "outline/Outline.h"

#include <AttributeContainer/Object.h>

#include <QOR/ErrorCode.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

/// What the library said of a place while it read on.
struct Warning {
    Place place;
    std::string text;
    ac::ErrorCode code = ac::ErrorCode::ElementSkipped;
};

/// A model file as it was read: its text in outline, and the tree that the library made of it.
struct Document {
    std::string file;                      ///< as the user named it
    std::unique_ptr<SourceFile> source;    ///< null for a document that was made here
    Outline outline;
    std::shared_ptr<ac::Object> root;      ///< relations are resolved as far as they can be
    std::vector<Warning> warnings;

    bool isNewerThanLibrary() const;
    Place placeOf(std::size_t element, std::uint64_t line) const;
};

/// Whether a format version, such as "9.1.0.0", is newer than that of the library.
bool isNewerThanLibrary(const std::string& version);

/// Reads a document whole. \throws Failure with line, path and what was expected, when the file is
/// unreadable, broken, or no model file
Document loadDocument(const std::string& file);
/// The same from a source that is open already.
Document loadDocument(const std::string& file, std::unique_ptr<SourceFile> source);

/// How a document is written.
struct WriteOptions {
    int format = 0;           ///< a value of `ModelFormat::Format`
    bool onlyMarked = false;  ///< marked attributes, and what holds some
};

/// Writes title, version and tree in the canonical form: instance numbers count from 1.
/// \throws Failure, with `name` in it, when the library cannot write it
void writeDocument(const Document& document, std::streambuf& target, const std::string& name,
                   const WriteOptions& options = {});

/// Writes the XML export of the root with its fields, without its children.
/// \throws Failure, with `name` in it, when the library cannot write it
void exportDocument(const Document& document, std::streambuf& target, const std::string& name,
                    bool onlyMarked);

}  // namespace qormodel
