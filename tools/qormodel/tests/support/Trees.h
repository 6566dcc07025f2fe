// Small trees that tests build by hand.
#pragma once

#include "model/Document.h"

#include <cstdint>
#include <memory>
#include <string>

namespace qormodel::testing {

/// A document that was made here, with a root of that name.
Document makeDocument(const std::string& name = "Project");

/// Adds an object. \param id the last digits of its identifier; 0 for none
std::shared_ptr<ac::Object> addObject(ac::Object& parent, const std::string& name, int id = 0);

/// Adds a field that is no object.
std::shared_ptr<ac::AttrContainer> addField(ac::AttrContainer& holder, const std::string& name);

/// Adds or changes a number or a text.
void put(ac::AttrContainer& container, const std::string& name, int value);
void put(ac::AttrContainer& container, const std::string& name, const std::string& value);

/// The text of the project without its relation.
std::string textWithoutRelation();

/// A text with an object "/r" of an unknown class that holds this word.
std::string textWithUnknown(const std::string& word);

/// How many relations the count of the project has.
std::uint64_t numRelations(const Document& document);

/// The value at a path as text; "none" where there is no attribute.
std::string valueAt(const Document& document, const std::string& path);

/// The paths of all objects and fields, each on a line.
std::string pathsOf(const Document& document);

}  // namespace qormodel::testing
