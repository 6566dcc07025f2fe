// The bodies of the typed attributes that read and write a stream block.
#pragma once

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelOutFormat.h>
#include <AttributeContainer/WriteContext.h>

#include "attributes/SameValue.h"
#include "persistence/TextLines.h"

#include <utility>

namespace QOR::AttributeContainer {

namespace detail {
/// Whether a value goes into the stream. The export form has every value; else a default is left
/// out, and an empty string also where defaults are asked for.
template <class T>
bool isWritten(const T& value, const WriteContextBase& context) {
    if (context.getFormat() == ModelFormat::XmlV1) return true;
    if constexpr (std::same_as<T, std::string>) {
        return !value.empty();
    } else {
        return context.writeDefaultValues() || !isDefaultValue(value);
    }
}
}  // namespace detail

template <AttrValue T>
ErrorPtr Attr<T>::writeTo(std::ostream& stream,
                          std::shared_ptr<const WriteContextBase> context) const {
    if (!context) return QOR_ERROR(ContextMissing, "Attr::writeTo");
    const T& current = get();
    if (detail::isWritten(current, *context)) {
        const int format = context->getFormat();
        if (format == ModelFormat::XmlV1) {
            DataOutFormat<T>(stream, format).put(current);
        } else if (format == ModelFormat::Text) {
            TextLines::putValue(stream, current);
        } else {
            ModelOutFormat mof(stream);
            mof.setFormat(format);
            mof.startValue("Value");
            DataOutFormat<T>(stream, format).put(current);
            mof.endValue();
        }
    }
    if (!stream.good()) return QOR_ERROR(StreamFailed, "Attr::writeTo");
    return Attribute::writeTo(stream, std::move(context));
}

template <AttrValue T>
ErrorPtr Attr<T>::readFrom(std::istream& stream, std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "Attr::readFrom");
    bool wasValueSeen = false;
    auto error = readBlock(stream, context, wasValueSeen);
    if (error && !error->isWarning()) return error;
    if (!wasValueSeen) set(T{});  // the writer leaves a default out
    return error;
}

}  // namespace QOR::AttributeContainer
