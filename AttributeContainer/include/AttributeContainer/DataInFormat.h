// The reading half of the value codecs: one value from the text in a stream.
#pragma once

#include <AttributeContainer/CodecTypes.h>
#include <AttributeContainer/Export.h>

#include <cstdint>
#include <iosfwd>

namespace QOR::AttributeContainer {

/// Reads values of one type, as `DataOutFormat<T>` writes them, from a stream that must outlive it.
///
/// Leading white space is skipped, and the stream then stands behind the value's last character.
/// Numbers are read with a point whatever the locale of the program or of the stream is, but for
/// `Time`, `ScanPtColor` and the pairs of `int` and `unsigned int`, which the stream's own
/// operators read. A `float` below its smallest normal number, as 0 and all negative ones are, is
/// read as that number. Strings read as empty in `ModelFormat::XmlV2`.
///
/// Memory is taken for what was read, whatever a count in the stream says.
template <CodecValue T> class QOR_API DataInFormat {
public:
    /// \param sourceFormat a value of `ModelFormat::Format`.
    DataInFormat(std::istream& source, int sourceFormat);

    /// Reads one value. Bad input leaves a default or the former value, or what a list has so far;
    /// a list also sets the stream's fail bit where an element takes no character.
    /// \return the value, which lasts as long as this object and until the next call.
    /// \throws std::invalid_argument with "Invalid number format" where the characters in place of
    /// a floating-point number are those of a number but make none; they are taken then.
    const T& get();

private:
    std::istream& stream;
    T value{};
    std::int32_t format;
};

// The instances stand in the library.
#define QOR_DECLARE_CODEC(...) extern template class QOR_API DataInFormat<__VA_ARGS__>;
QOR_CODEC_TYPES(QOR_DECLARE_CODEC)
#undef QOR_DECLARE_CODEC

}  // namespace QOR::AttributeContainer
