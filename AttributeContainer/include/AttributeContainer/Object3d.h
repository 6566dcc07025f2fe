// An object with a position in space.
#pragma once

#include <AttributeContainer/Object2d.h>

namespace QOR::AttributeContainer {

/// An object with a position in space. It has no attribute of its own: it is there to have its own
/// class name in streams.
class QOR_API Object3d : public ContainerClass<Object3d, Object2d, "Object3d"> {
public:
    using Block::Block;
};

}  // namespace QOR::AttributeContainer
