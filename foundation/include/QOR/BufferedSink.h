// A stream buffer for writers that flush often.
#pragma once

#include <QOR/Export.h>

#include <cstddef>
#include <memory>
#include <streambuf>

namespace QOR {

/// Collects what is written and passes it on in large pieces. A model stream is flushed behind every
/// line, and each flush of a file is a call of the system; here it waits for `finish`.
///
///     std::ofstream file("room.model", std::ios::binary);
///     QOR::BufferedSink sink(*file.rdbuf());
///     std::ostream stream(&sink);
///     auto error = root->writeTo(stream, context);
///     const bool isStored = sink.finish();
///
/// Other targets than stream buffers: derive and override `pass`, and call `finish`.
class QOR_API BufferedSink : public std::streambuf {
public:
    static constexpr std::size_t defaultCapacity = std::size_t{1} << 18;

    /// \param target outlives the sink
    /// \param capacity bytes of a piece, at least 1
    explicit BufferedSink(std::streambuf& target, std::size_t capacity = defaultCapacity);
    BufferedSink(const BufferedSink&) = delete;
    BufferedSink& operator=(const BufferedSink&) = delete;
    /// Passes nothing on: who does not call `finish` does not want what is left.
    ~BufferedSink() override;

    /// Passes on what is left, and flushes the target. More may be written behind it.
    /// \return false where this or anything before it could not be passed on; what could not is lost,
    /// and so is all that is written later.
    bool finish();
    /// Whether everything so far could be passed on.
    bool isGood() const { return good; }

protected:
    /// For a derived class with a target of its own.
    explicit BufferedSink(std::size_t capacity = defaultCapacity);

    /// Passes a piece on. \return false where not all of it could be.
    virtual bool pass(const char* data, std::size_t size);
    /// Flushes the target, behind the last piece.
    virtual bool flushTarget();

    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* data, std::streamsize size) override;
    /// Waits: success while everything could be passed on.
    int sync() override { return good ? 0 : -1; }

private:
    bool passOn(const char* data, std::size_t size);
    bool passPiece();

    std::streambuf* target = nullptr;
    std::size_t capacity;
    std::unique_ptr<char[]> piece;
    bool good = true;
};

}  // namespace QOR
