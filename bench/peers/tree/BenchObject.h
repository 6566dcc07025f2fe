// The class of the tree workload: an object with eight values more.
#pragma once

#include <AttributeContainer/AttributeContainer.h>

#include <string>

namespace bench::tree {

/// Its text is what the floor writes by hand.
class BenchObject
    : public QOR::AttributeContainer::ContainerClass<BenchObject, QOR::AttributeContainer::Object,
                                                     "BenchObject"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(6, int, Count);
    QOR_ATTRIBUTE(7, double, Gain);
    QOR_ATTRIBUTE(8, std::string, Comment);
    QOR_ATTRIBUTE(9, bool, Visible);
    QOR_ATTRIBUTE(10, QOR::Vec3d<double>, Position);
    QOR_ATTRIBUTE(11, QOR::Mat4d<double>, Transformation);
    QOR_ATTRIBUTE(12, std::string, Reference);
    QOR_ATTRIBUTE(13, std::string, Label);
};

}  // namespace bench::tree
