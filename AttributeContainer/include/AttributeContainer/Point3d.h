// A point in space.
#pragma once

#include <AttributeContainer/Object3d.h>

namespace QOR::AttributeContainer {

/// A point in space, with the deviation of its position.
class QOR_API Point3d : public ContainerClass<Point3d, Object3d, "Point3d"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(7, double, PositionDeviation);
};

}  // namespace QOR::AttributeContainer
