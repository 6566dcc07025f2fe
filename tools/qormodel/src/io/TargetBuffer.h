// A stream buffer onto a file descriptor, made for the model stream.
#pragma once

#include <cstdint>
#include <streambuf>
#include <string>
#include <vector>

namespace qormodel {

/// Collects what is written and passes it on in large pieces. The model stream is flushed behind
/// every line, which costs nothing here. Nothing is written in the destructor: `finish` does it.
class TargetBuffer : public std::streambuf {
public:
    /// \param name for messages. The descriptor stays open and outlives the buffer.
    TargetBuffer(int descriptor, std::string name);

    /// Writes what is left. \throws Failure where it, or an earlier piece, could not be written,
    /// `ReaderLeft` where nobody reads the standard output any more.
    void finish();
    std::uint64_t getNumWritten() const { return numWritten; }

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* data, std::streamsize count) override;
    int sync() override { return 0; }

private:
    bool put(const char* data, std::size_t count);
    bool putChunk();

    int descriptor;
    std::string name;
    int failure = 0;  // errno of the first write that failed
    std::uint64_t numWritten = 0;
    std::vector<char> chunk;
};

}  // namespace qormodel
