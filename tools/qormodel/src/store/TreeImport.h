// From a container tree into a key store.
#pragma once

#include "model/Document.h"
#include "store/KeyPlan.h"
#include "store/StoreFile.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qormodel {

/// What a tree became in a store.
struct ImportResult {
    std::uint64_t numKeys = 0;
    std::uint64_t numValues = 0;
    std::vector<KeyProblem> problems;    ///< what is not in the store, or not as it was
    std::vector<std::string> longPaths;  ///< values that are too long for programs that read with
                                         ///< the library's own visitor
};

/// Brings a container with its fields and children below the key `key`: each container is a key,
/// each attribute a value with the text of its value, of the type "expand". Whatever else is there
/// stays. \param title the header text of the model file. \throws Failure
ImportResult importTree(const StoreFile& store, const std::wstring& key, const Element& start,
                        const std::string& title);

}  // namespace qormodel
