// Keys and values of a store that begin as a user has typed them.
#pragma once

#include "store/StoreFile.h"

#include <string>
#include <vector>

namespace qormodel {

/// Whether a file is a key store, told by its first bytes: opening would make one of an empty file.
bool isStoreFile(const std::string& file);

/// The paths of keys that go on from `prefix`, with a "\\" behind each, in the order of the store.
/// They begin as the prefix does. Names with control characters are left out.
std::vector<std::string> completeKeys(const StoreFile& store, const std::string& prefix);

/// The names of the values of a key that begin so; neither the default value nor names with control
/// characters are among them.
std::vector<std::string> completeValues(const StoreFile& store, const std::string& key,
                                        const std::string& prefix);

}  // namespace qormodel
