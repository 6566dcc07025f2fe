// An object with a position.
#pragma once

#include <AttributeContainer/Object.h>

namespace QOR::AttributeContainer {

/// An object with a position. The position has three components, as the streams of this class have
/// always held it.
class QOR_API Object2d : public ContainerClass<Object2d, Object, "Object2d"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(6, Vec3d<double>, Position);
};

}  // namespace QOR::AttributeContainer
