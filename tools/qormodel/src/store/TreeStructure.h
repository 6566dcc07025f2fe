// What a key store has to know of a container tree beside its values.
#pragma once

#include "model/Elements.h"
#include "store/StoreText.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qormodel {

/// The value that holds the structure, in each key of a tree. No attribute can have that name.
inline constexpr std::wstring_view structureName = L"/Structure";

/// A container without its values: class, types, and what belongs to it, in order.
struct TreeStructure {
    std::string title;  ///< the header text of the model file; empty but for the uppermost key
    std::string className;
    std::vector<std::pair<std::string, std::string>> attributes;  ///< type word and name
    std::vector<std::string> fields;                              ///< names of keys
    std::vector<std::string> children;                            ///< names of keys
};

/// The structure as a list of texts: "class Object", "attribute Attr<int> Count", "field Box",
/// "child First", "title Test".
StoredValue structureValue(const TreeStructure& structure);
/// The reverse. What is no list of such texts gives nothing; words of other programs are passed
/// over.
std::optional<TreeStructure> inqStructure(const StoreKey& key);

}  // namespace qormodel
