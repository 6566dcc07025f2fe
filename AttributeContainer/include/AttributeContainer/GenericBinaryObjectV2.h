// The description of a binary payload that is kept outside the model stream.
#pragma once

#include <AttributeContainer/Transform.h>

#include <optional>
#include <string>

namespace QOR::AttributeContainer {

/// Describes a binary payload that the host keeps outside the model stream. The library stores the
/// description and gives it no meaning.
///
/// A new object and a copy are both named "Folder" until they are told otherwise.
class QOR_API GenericBinaryObjectV2
    : public ContainerClass<GenericBinaryObjectV2, Transform, "GenericBinaryObjectV2"> {
    friend Block;

public:
    using Block::Block;

    QOR_ATTRIBUTE(7, std::string, MimeType);
    QOR_ATTRIBUTE(8, std::string, Context);
    QOR_ATTRIBUTE(9, std::string, Id);
    QOR_ATTRIBUTE(10, bool, Load);
    QOR_ATTRIBUTE(11, bool, InScan);
    QOR_ATTRIBUTE(12, std::string, CurrentStream);
    QOR_ATTRIBUTE(13, std::string, FileName);

    /// The name under which the host stores the payload: the text of `CurrentStream`, an empty one
    /// as well.
    std::optional<std::string> getSaveBinaryDataStreamName() const;

protected:
    void init(CreateType type, Source source);
};

}  // namespace QOR::AttributeContainer
