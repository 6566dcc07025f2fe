// A stream buffer over a source that knows its place.
#pragma once

#include "io/SourceFile.h"
#include "terminal/Progress.h"

#include <cstdint>
#include <streambuf>
#include <vector>

namespace qormodel {

/// Gives out the bytes of a source from some place on, and counts the lines.
class SourceBuffer : public std::streambuf {
public:
    /// \param line the number of the line in which `offset` lies. The source outlives this buffer.
    SourceBuffer(const SourceFile& source, std::uint64_t offset, std::uint64_t line,
                 Progress& progress);

    /// The offset of the next character.
    std::uint64_t getOffset() const;
    /// The line of the next character, counted from 1.
    std::uint64_t getLine() const;

protected:
    int_type underflow() override;

private:
    const SourceFile& source;
    Progress& progress;
    std::vector<char> chunk;
    std::uint64_t chunkEnd;   // offset behind the chunk
    std::uint64_t chunkLine;  // of its first character
};

}  // namespace qormodel
