// An object with a transformation.
#pragma once

#include <AttributeContainer/Object.h>

namespace QOR::AttributeContainer {

/// An object with a transformation, the identity at first. The library stores it and does no
/// geometry with it.
class QOR_API Transform : public ContainerClass<Transform, Object, "Transform"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(6, Mat4d<double>, Transformation, Mat4d<double>::identity());
};

}  // namespace QOR::AttributeContainer
