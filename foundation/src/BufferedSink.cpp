#include <QOR/BufferedSink.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace QOR {

namespace {
// What a buffer's position can be moved by in one step.
constexpr std::size_t mostAtOnce = std::numeric_limits<int>::max();
}  // namespace

BufferedSink::BufferedSink(std::streambuf& target, std::size_t capacity) : BufferedSink(capacity) {
    this->target = &target;
}

BufferedSink::BufferedSink(std::size_t capacity)
    : capacity(std::clamp(capacity, std::size_t{1}, mostAtOnce)),
      piece(std::make_unique<char[]>(this->capacity)) {
    setp(piece.get(), piece.get() + this->capacity);
}

BufferedSink::~BufferedSink() = default;

bool BufferedSink::finish() {
    passPiece();
    if (!good) return false;
    good = false;
    good = flushTarget();
    return good;
}

bool BufferedSink::pass(const char* data, std::size_t size) {
    const auto count = static_cast<std::streamsize>(size);
    return target && target->sputn(data, count) == count;
}

bool BufferedSink::flushTarget() {
    return !target || target->pubsync() == 0;
}

BufferedSink::int_type BufferedSink::overflow(int_type character) {
    if (!passPiece()) return traits_type::eof();
    if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
    return sputc(traits_type::to_char_type(character));
}

std::streamsize BufferedSink::xsputn(const char* data, std::streamsize size) {
    const auto count = static_cast<std::size_t>(size);
    if (size <= epptr() - pptr()) {
        std::memcpy(pptr(), data, count);
        pbump(static_cast<int>(size));
        return size;
    }
    if (!passPiece()) return 0;
    if (count >= capacity) return passOn(data, count) ? size : 0;  // a piece by itself
    std::memcpy(pptr(), data, count);
    pbump(static_cast<int>(size));
    return size;
}

bool BufferedSink::passPiece() {
    const auto size = static_cast<std::size_t>(pptr() - pbase());
    setp(piece.get(), piece.get() + capacity);
    return passOn(piece.get(), size);
}

bool BufferedSink::passOn(const char* data, std::size_t size) {
    if (!good || size == 0) return good;
    good = false;  // where the target throws
    good = pass(data, size);
    return good;
}

}  // namespace QOR
