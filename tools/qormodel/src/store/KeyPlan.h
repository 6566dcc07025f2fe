// Which key of a store stands for which container of a tree.
#pragma once

#include "model/Elements.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qormodel {

/// A container with its key.
struct KeyPlace {
    Element element;
    std::wstring key;
};

/// What stands against a tree in a key store.
struct KeyProblem {
    std::string path;  ///< in the model
    std::string text;
};

/// The keys of a tree whose uppermost container has the key `key`: fields stand under the names
/// that their holders give them, children under their own. Containers come ahead of what they hold.
/// Of names that a store cannot hold, or cannot tell apart, only the first has a place.
/// \param problems gets what has none
std::vector<KeyPlace> planKeys(const Element& start, const std::wstring& key,
                               std::vector<KeyProblem>& problems);

}  // namespace qormodel
