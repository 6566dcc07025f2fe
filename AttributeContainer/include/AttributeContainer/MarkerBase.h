// A marker: a point with an identity and a direction.
#pragma once

#include <AttributeContainer/Point3d.h>

#include <QOR/Uuid.h>

namespace QOR::AttributeContainer {

/// A marker: a point with an identity of its own and directions. The keys are lower case, as the
/// streams have them. A copy keeps `id`; the host gives `scanHalf` its meaning.
class QOR_API MarkerBase : public ContainerClass<MarkerBase, Point3d, "MarkerBase"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(8, uuids::uuid, id);
    QOR_ATTRIBUTE(9, int, scanHalf);
    QOR_ATTRIBUTE(10, Vec3d<double>, normal);
    QOR_ATTRIBUTE(11, Vec3d<double>, orientation);
};

}  // namespace QOR::AttributeContainer
