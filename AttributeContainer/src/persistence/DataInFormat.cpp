#include <AttributeContainer/DataInFormat.h>

#include "persistence/ListReader.h"
#include "persistence/TextSource.h"

#include <cerrno>

namespace QOR::AttributeContainer {

namespace {

// Conversions and the reading of files set errno, which is the caller's.
class KeepErrno {
public:
    KeepErrno() = default;
    KeepErrno(const KeepErrno&) = delete;
    KeepErrno& operator=(const KeepErrno&) = delete;
    ~KeepErrno() { errno = saved; }

private:
    const int saved = errno;
};

}  // namespace

template <CodecValue T>
DataInFormat<T>::DataInFormat(std::istream& source, int sourceFormat)
    : stream(source), format(sourceFormat) {}

template <CodecValue T> const T& DataInFormat<T>::get() {
    const KeepErrno keepErrno;
    TextSource source(stream, format);
    ValueReader<T>::get(source, value);
    return value;
}

#define QOR_MAKE_CODEC(...) template class DataInFormat<__VA_ARGS__>;
QOR_CODEC_TYPES(QOR_MAKE_CODEC)

}  // namespace QOR::AttributeContainer
