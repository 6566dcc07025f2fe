// An array of fields.
#pragma once

#include <AttributeContainer/ContainerClass.h>

namespace QOR::AttributeContainer {

/// A container whose fields are the elements of an array.
class QOR_API ArrayContainer : public ContainerClass<ArrayContainer, AttrContainer, "ArrayContainer"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, std::string, contentType, std::string{});
    QOR_ATTRIBUTE(2, std::string, selectedElement, std::string{});
};

}  // namespace QOR::AttributeContainer
