#include "Document.h"

#include "Adding.h"
#include "ScanParts.h"

#include <AttributeContainer/ActionToken.h>

#include <cstddef>
#include <stdexcept>

namespace example {

using model::AddFlags;
using model::AttrContainer;
using model::Container;
using model::Object;
using model::Transform;

namespace {
// The priority of our observers among those of one attribute; greater ones come first.
constexpr short priority = 10;
}  // namespace

Document::Document()
    : root(Container::create()),
      printer(std::make_shared<ChangePrinter>()),
      guard(std::make_shared<NameGuard>()) {
    setName(*root, "Project");
    scans = addChild<Container>(*root, "Scans");
    numScans = addValue<std::uint64_t>(*scans, "NumScans", 0);
    numPoints = addValue<std::uint64_t>(*scans, "NumPoints", 0);
    // A post-observer is told behind each change. "Temporary" relations are not part of the stream.
    numPoints->addObserver(*printer, priority, model::ActionToken::Notify, true);
    root->getUuid();  // the first call makes and stores one
}

std::shared_ptr<Object> Document::addScan(const Scan& scan) {
    const auto object = Transform::create();  // the instrument stands at the origin, upright
    setName(*object, "Scan");
    // A pre-observer is asked ahead of each change and may refuse it.
    object->Attr_Name().addPreObserver(*guard, priority, model::ActionToken::PreNotify, true);

    std::string name = scan.name;
    if (AttrContainer::makeNameValid(name)) object->name(name);  // where refused it stays "Scan"
    addScanParts(*object, scan);
    object->getUuid();
    if (!scans->addChild(object, AddFlags::MakeNameUnique))
        throw std::logic_error("the scan \"" + name + "\" cannot be added");

    numScans->set(numScans->get() + 1);
    numPoints->set(numPoints->get() + scan.points.size());
    return object;
}

std::shared_ptr<Object> Document::addTrack(const Track& track) {
    const auto poses = Container::create();
    setName(*poses, "Track");
    std::string name = track.name;
    if (AttrContainer::makeNameValid(name)) poses->name(name);
    for (std::size_t i = 0; i < track.poses.size(); ++i)
        addChild<Transform>(*poses, "Pose" + std::to_string(i))->Transformation(track.poses[i]);
    if (!root->addChild(poses, AddFlags::MakeNameUnique))
        throw std::logic_error("the track \"" + name + "\" cannot be added");
    return poses;
}

}  // namespace example
