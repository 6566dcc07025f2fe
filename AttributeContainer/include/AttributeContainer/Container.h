// An object that holds others together.
#pragma once

#include <AttributeContainer/Transform.h>

namespace QOR::AttributeContainer {

/// An object that holds others together. The host gives the two numbers their meaning.
class QOR_API Container : public ContainerClass<Container, Transform, "Container"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(7, int, ContainerType, 10);
    QOR_ATTRIBUTE(8, int, Quality, 2);
};

}  // namespace QOR::AttributeContainer
