// The scan project of the example, in the two versions that are to become one.
#pragma once

#include <AttributeContainer/ContainerClass.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/Vec.h>

#include <cstdint>
#include <memory>
#include <string>

namespace example {

namespace model = QOR::AttributeContainer;

/// How well a scan fits to the others.
class Registration
    : public model::ContainerClass<Registration, model::AttrContainer, "Registration"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, double, Deviation);  // metres
    QOR_ATTRIBUTE(2, int, NumTargets);
};

/// One scan. Comparers and mergers walk through fields, so a scan is a field of its project; the
/// children of an object are a tree of their own.
class Scan : public model::ContainerClass<Scan, model::AttrContainer, "Scan"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, std::string, Operator);
    QOR_ATTRIBUTE(2, QOR::Vec3d<double>, Position);  // metres
    QOR_ATTRIBUTE(3, std::uint64_t, NumPoints);
    QOR_FIELD(0, example::Registration, Registration);
};

using Project = std::shared_ptr<model::AttrContainer>;

/// The version in the office: three scans, one of them a test, with a remark.
Project makeOfficeVersion();

/// The version that came back from the field: other values, another scan, the weather.
Project makeFieldVersion();

}  // namespace example
