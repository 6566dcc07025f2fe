#include "Document.h"

#include "ErrorText.h"

#include <AttributeContainer/ActionToken.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace example {

using model::AddFlags;
using model::AttrContainer;
using model::Object;

namespace {

// The priority of our observers among those of one attribute; greater ones come first.
constexpr short priority = 10;

// Adds an attribute that the class does not declare. Its type must be one of `model::ValueTypes`.
template <class T>
std::shared_ptr<model::Attr<T>> addValue(AttrContainer& container, const std::string& name,
                                         const T& value) {
    const auto attribute = std::make_shared<model::CustAttr<T>>(std::nullopt);
    attribute->set(value);
    if (container.addAttribute(attribute, name).expired())
        throw std::logic_error("\"" + name + "\" is taken in " + container.getName());
    return attribute;
}

void setName(AttrContainer& container, const std::string& name) {
    if (const auto error = container.setName(name)) throw ModelFailure("naming " + name, *error);
}

std::shared_ptr<Object> addChild(Object& parent, const std::string& name) {
    const auto child = Object::create();
    setName(*child, name);
    if (!parent.addChild(child, 0)) throw std::logic_error("\"" + name + "\" cannot be added");
    return child;
}

// A container that belongs to the scan without being an object of the tree: a field.
void addBoundingBox(Object& object, const std::vector<Point>& points) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Point min{infinity, infinity, infinity};
    Point max{-infinity, -infinity, -infinity};
    for (const Point& point : points) {
        for (std::size_t axis = 0; axis < Point::size(); ++axis) {
            min[axis] = std::min(min[axis], point[axis]);
            max[axis] = std::max(max[axis], point[axis]);
        }
    }
    const auto box = AttrContainer::create();
    setName(*box, "BoundingBox");
    addValue(*box, "Min", min);
    addValue(*box, "Max", max);
    if (!object.addField(box, box->getName(), 0))
        throw std::logic_error("the bounding box cannot be added");
}

}  // namespace

Document::Document()
    : root(Object::create()),
      printer(std::make_shared<ChangePrinter>()),
      guard(std::make_shared<NameGuard>()) {
    setName(*root, "Project");
    scans = addChild(*root, "Scans");
    numScans = addValue<std::uint64_t>(*scans, "NumScans", 0);
    numPoints = addValue<std::uint64_t>(*scans, "NumPoints", 0);
    // A post-observer is told behind each change. "Temporary" relations are not part of the stream.
    numPoints->addObserver(*printer, priority, model::ActionToken::Notify, true);
    root->getUuid();  // the first call makes and stores one
}

std::shared_ptr<Object> Document::addScan(const Scan& scan) {
    const auto object = Object::create();
    setName(*object, "Scan");
    // A pre-observer is asked ahead of each change and may refuse it.
    object->Attr_Name().addPreObserver(*guard, priority, model::ActionToken::PreNotify, true);

    std::string name = scan.name;
    if (AttrContainer::makeNameValid(name)) object->name(name);  // where refused it stays "Scan"
    addValue<std::uint64_t>(*object, "NumPoints", scan.points.size());
    addValue(*object, "Points", scan.points);
    if (!scan.normals.empty()) addValue(*object, "Normals", scan.normals);
    addBoundingBox(*object, scan.points);
    object->getUuid();
    if (!scans->addChild(object, AddFlags::MakeNameUnique))
        throw std::logic_error("the scan \"" + name + "\" cannot be added");

    numScans->set(numScans->get() + 1);
    numPoints->set(numPoints->get() + scan.points.size());
    return object;
}

}  // namespace example
