// A file that lives as long as a test needs it.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

namespace qormodel::testing {

/// A file of some content in a folder of its own, which goes with this object.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& content) {
        std::string pattern = (std::filesystem::temp_directory_path() / "qormodelXXXXXX").string();
        folder = ::mkdtemp(pattern.data());
        std::ofstream(getName(), std::ios::binary) << content;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    std::string getName() const { return (folder / "file.model").string(); }
    const std::filesystem::path& getFolder() const { return folder; }

private:
    std::filesystem::path folder;
};

}  // namespace qormodel::testing
