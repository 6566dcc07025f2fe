// A stream buffer onto a file descriptor, made for the model stream.
#pragma once

#include <QOR/BufferedSink.h>

#include <cstdint>
#include <string>

namespace qormodel {

/// Collects what is written and passes it on in large pieces. Nothing is written in the destructor:
/// `finish` does it.
class TargetBuffer : public QOR::BufferedSink {
public:
    /// \param name for messages. The descriptor stays open and outlives the buffer.
    TargetBuffer(int descriptor, std::string name);

    /// Writes what is left. \throws Failure where it, or an earlier piece, could not be written,
    /// `ReaderLeft` where nobody reads the standard output any more.
    void finish();
    std::uint64_t getNumWritten() const { return numWritten; }

protected:
    bool pass(const char* data, std::size_t size) override;

private:
    int descriptor;
    std::string name;
    int failure = 0;  // errno of the first write that failed
    std::uint64_t numWritten = 0;
};

}  // namespace qormodel
