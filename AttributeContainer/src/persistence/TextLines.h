// The lines of an attribute in the text form, each written in one piece.
#pragma once

#include <AttributeContainer/CodecTypes.h>

#include <iosfwd>
#include <string>

namespace QOR::AttributeContainer::TextLines {

/// Begins the block of an attribute and writes its name: what `ModelOutFormat` and the codec of
/// strings write for it in steps.
void startAttribute(std::ostream& stream, const std::string& className, const std::string& name);

/// Writes the line of a value. The instances stand with the codecs.
template <CodecValue T> void putValue(std::ostream& stream, const T& value);

}  // namespace QOR::AttributeContainer::TextLines
