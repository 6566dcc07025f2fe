#include "persistence/ValueText.h"

#include "persistence/ListWriter.h"
#include "persistence/PlainText.h"

namespace QOR::AttributeContainer {

template <CodecValue T> std::string valueText(const T& value) {
    if constexpr (std::same_as<T, std::string>) {
        return value;
    } else {
        std::string result;
        PlainText text(result);
        ValueWriter<T>::put(text, value);
        return result;
    }
}

#define QOR_MAKE_TEXT(...) template std::string valueText(const __VA_ARGS__&);
QOR_CODEC_TYPES(QOR_MAKE_TEXT)

}  // namespace QOR::AttributeContainer
