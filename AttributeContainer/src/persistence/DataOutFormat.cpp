#include <AttributeContainer/DataOutFormat.h>

#include <AttributeContainer/ModelFormat.h>

#include "persistence/ListWriter.h"
#include "persistence/StreamText.h"
#include "persistence/TextLines.h"

namespace QOR::AttributeContainer {

template <CodecValue T>
DataOutFormat<T>::DataOutFormat(std::ostream& target, int targetFormat)
    : stream(target), format(targetFormat) {
    stream.precision(StreamText::standingPrecision);
}

template <CodecValue T> void DataOutFormat<T>::put(const T& value) {
    StreamText text(stream, format);
    ValueWriter<T>::put(text, value);
    text.finish();
}

template <CodecValue T> void TextLines::putValue(std::ostream& stream, const T& value) {
    stream.precision(StreamText::standingPrecision);
    StreamText text(stream, ModelFormat::Text);
    text.endLine();
    text.text("Value");
    text.character(' ');
    ValueWriter<T>::put(text, value);
    text.finish();
}

#define QOR_MAKE_CODEC(...)                    \
    template class DataOutFormat<__VA_ARGS__>; \
    template void TextLines::putValue(std::ostream&, const __VA_ARGS__&);
QOR_CODEC_TYPES(QOR_MAKE_CODEC)

}  // namespace QOR::AttributeContainer
