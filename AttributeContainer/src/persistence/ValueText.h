// The text of a value alone, as attributes show it and take it from each other.
#pragma once

#include <AttributeContainer/CodecTypes.h>
#include <AttributeContainer/Export.h>

#include <string>

namespace QOR::AttributeContainer {

/// The text of the value in the form of `ModelFormat::Text`, so that `DataInFormat<T>` can read it,
/// with two differences: all numbers have the six digits that a stream has by default, with "inf"
/// and "nan" for those that are not finite, and a string stands bare, with no quotes and nothing
/// escaped. The locale plays no part.
template <CodecValue T> QOR_API std::string valueText(const T& value);

// The instances stand in the library; they are exported for the tests only.
#define QOR_DECLARE_TEXT(...) extern template QOR_API std::string valueText(const __VA_ARGS__&);
QOR_CODEC_TYPES(QOR_DECLARE_TEXT)
#undef QOR_DECLARE_TEXT

}  // namespace QOR::AttributeContainer
