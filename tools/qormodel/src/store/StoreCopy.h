// A store that may only be read, as a copy: opening one writes into its file and beside it.
#pragma once

#include <memory>
#include <string>

namespace qormodel {

/// A copy of a store's file, with what its log has, in a folder of its own that goes with this.
class StoreCopy {
public:
    /// A copy of a store that cannot be opened where it is, since its file or its folder may not be
    /// written. Null for any other. \throws Failure where it cannot be read, or where other
    /// programs do not stop changing it
    static std::unique_ptr<StoreCopy> inqFor(const std::string& file);
    StoreCopy(const StoreCopy&) = delete;
    StoreCopy& operator=(const StoreCopy&) = delete;
    ~StoreCopy();

    const std::string& getName() const { return name; }

private:
    explicit StoreCopy(const std::string& file);

    std::string folder;
    std::string name;
};

}  // namespace qormodel
