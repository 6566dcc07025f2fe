// From a key store into a container tree.
#pragma once

#include "model/Document.h"
#include "model/Edit.h"
#include "store/KeyPlan.h"
#include "store/StoreFile.h"

#include <string>
#include <vector>

namespace qormodel {

/// A document with the containers and attributes that a key and those below it stand for, all with
/// their default values. Where no structure is kept, a key is a container of no class of its own,
/// and a value an attribute: a text, a number, a list of texts, or its bytes as text.
/// \param problems gets what has no place in a model
/// \throws Failure where there is no such key
Document makeTree(const StoreFile& store, const std::wstring& key,
                  std::vector<KeyProblem>& problems);

/// Sets the attributes of a container, its fields and children to the values that stand below a
/// key; those without a value stay as they are. Observers may refuse, and the result tells. \throws
/// Failure for a value that is none of the attribute's type
/// \param left gets the values below the key that no attribute has taken
std::vector<EditResult> readValues(const StoreFile& store, const std::wstring& key,
                                   const Element& start, std::vector<std::wstring>* left = nullptr);

}  // namespace qormodel
