// The bytes of an input, wherever they come from.
#pragma once

#include "io/FileVersion.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace qormodel {

/// A file that is open for reading at any place. What cannot be read twice, a pipe for one, is
/// first copied to a file without a name.
class SourceFile {
public:
    /// \param file a path, or "-" for the standard input. \throws Failure
    explicit SourceFile(const std::string& file);
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;
    ~SourceFile();

    /// The name for messages.
    const std::string& getName() const { return name; }
    std::uint64_t getSize() const { return size; }
    /// What stood under the name when it was opened; nothing for what is no regular file.
    const std::optional<FileVersion>& getVersion() const { return version; }
    /// Whether somebody has written into it since, so that pieces read now go with no earlier ones.
    /// A file that was put in its place changes nothing here.
    bool hasChanged() const;
    /// Reads up to `count` bytes, fewer only at the end. \throws Failure
    std::size_t readAt(std::uint64_t offset, char* target, std::size_t count) const;
    /// The bytes from `begin` to `end`. \throws Failure
    std::string slice(std::uint64_t begin, std::uint64_t end) const;

private:
    void spool();

    std::string name;
    int descriptor = -1;
    std::uint64_t size = 0;
    std::optional<FileVersion> version;
};

}  // namespace qormodel
