#include "model/ScanTree.h"

#include "Failure.h"
#include "model/ErrorText.h"

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/Container.h>
#include <AttributeContainer/Transform.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

namespace qormodel {

namespace {
using points::Point;

template <class T> void addValue(ac::AttrContainer& container, const std::string& name, T value) {
    const auto attribute = std::make_shared<ac::CustAttr<T>>(std::nullopt);
    attribute->set(std::move(value));
    if (container.addAttribute(attribute, name).expired())
        throw Failure("the attribute " + name + " cannot be added");
}

template <class T> void raise(ac::AttrContainer& container, const std::string& name, T by) {
    const auto attribute =
        std::dynamic_pointer_cast<ac::Attr<T>>(container.getAttribute(name).lock());
    if (attribute) attribute->set(attribute->get() + by);
}

// Adds a child under a name that comes from outside.
void addNamed(ac::Object& parent, const std::shared_ptr<ac::Object>& child, std::string name) {
    if (ac::AttrContainer::makeNameValid(name)) child->name(name);  // else the class gives the name
    child->getUuid();  // the first call makes and stores one
    if (!parent.addChild(child, ac::AddFlags::MakeNameUnique))
        throw Failure("the object " + name + " cannot be added");
}

void addBoundingBox(ac::Object& object, const std::vector<Point>& points) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Point min{infinity, infinity, infinity};
    Point max{-infinity, -infinity, -infinity};
    for (const Point& point : points) {
        for (std::size_t axis = 0; axis < Point::size(); ++axis) {
            min[axis] = std::min(min[axis], point[axis]);
            max[axis] = std::max(max[axis], point[axis]);
        }
    }
    const auto box = ac::AttrContainer::create();
    box->name("BoundingBox");
    addValue(*box, "Min", min);
    addValue(*box, "Max", max);
    if (!object.addField(box, box->getName(), 0)) throw Failure("the bounding box cannot be added");
}

std::string pathOf(const ac::Object& object) {
    return object.inqObjPath().value_or(object.getName());
}
}  // namespace

ScanTree::ScanTree(const std::string& name)
    : root(ac::Object::create()), scans(ac::Container::create()) {
    if (root->setName(name)) throw Failure(textOfNoName(name));
    root->getUuid();
    addValue<std::uint64_t>(*scans, "NumScans", 0);
    addValue<std::uint64_t>(*scans, "NumPoints", 0);
    addNamed(*root, scans, "Scans");
}

std::string ScanTree::addScan(points::Scan scan) {
    const auto object = ac::Transform::create();
    const std::uint64_t numPoints = scan.points.size();
    addBoundingBox(*object, scan.points);
    addValue(*object, "NumPoints", numPoints);
    addValue(*object, "Points", std::move(scan.points));
    if (!scan.normals.empty()) addValue(*object, "Normals", std::move(scan.normals));
    addNamed(*scans, object, scan.name);
    raise<std::uint64_t>(*scans, "NumScans", 1);
    raise(*scans, "NumPoints", numPoints);
    return pathOf(*object);
}

std::string ScanTree::addTrack(const points::Track& track) {
    const auto poses = ac::Container::create();
    addValue<std::uint64_t>(*poses, "NumPoses", track.poses.size());
    for (std::size_t i = 0; i < track.poses.size(); ++i) {
        const auto pose = ac::Transform::create();
        pose->Transformation(track.poses[i]);
        addNamed(*poses, pose, "Pose" + std::to_string(i));
    }
    addNamed(*root, poses, track.name);
    return pathOf(*poses);
}

}  // namespace qormodel
