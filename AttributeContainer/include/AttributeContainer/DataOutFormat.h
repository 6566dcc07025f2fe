// The writing half of the value codecs: one value as text in a stream.
#pragma once

#include <AttributeContainer/CodecTypes.h>
#include <AttributeContainer/Export.h>

#include <cstdint>
#include <iosfwd>

namespace QOR::AttributeContainer {

/// Writes values of one type into a stream that must outlive it. `DataInFormat<T>` reads them back;
/// `docs/stream.md` shows the text of each type.
///
/// A value ends with its last character, with no line feed. Numbers come out as the stream formats
/// them, by its flags and its locale, with eight digits below 1 and otherwise with nine more than
/// their decimal logarithm, rounded up; an infinity or NaN is written as 0. Strings are quoted and
/// escaped. A stream that fails gets its state bits and no more characters.
///
/// Costs no allocation but for a copy of each string. Lists are written a few thousand characters
/// at a time where the stream formats in the usual way, that is with default flags and no locale of
/// its own, and piece by piece otherwise.
template <CodecValue T> class QOR_API DataOutFormat {
public:
    /// Sets the stream's precision to 8, the standing precision of all numbers of the model.
    /// \param targetFormat a value of `ModelFormat::Format`.
    DataOutFormat(std::ostream& target, int targetFormat);

    /// Writes one value. After a floating-point number the stream's precision is 8.
    void put(const T& value);

private:
    std::ostream& stream;
    std::int32_t format;
};

// The instances stand in the library.
#define QOR_DECLARE_CODEC(...) extern template class QOR_API DataOutFormat<__VA_ARGS__>;
QOR_CODEC_TYPES(QOR_DECLARE_CODEC)
#undef QOR_DECLARE_CODEC

}  // namespace QOR::AttributeContainer
