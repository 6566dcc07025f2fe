#include <AttributeContainer/ReferenceDictionary.h>

#include <AttributeContainer/Object.h>

#include <algorithm>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
// A place in the walk over what a target holds.
struct TargetWalk {
    explicit TargetWalk(const AttrContainer& at) : container(&at) {
        for (std::uint64_t token = 0; token < at.getNumFields(); ++token)
            if (const auto field = at.getField(token).lock()) partsLeft.push_back(field.get());
        if (const auto* const object = dynamic_cast<const Object*>(&at))
            for (const auto& child : object->getChildren())
                if (child) partsLeft.push_back(child.get());
    }

    const AttrContainer* container;
    std::vector<const AttrContainer*> partsLeft;
    unsigned height = 0;  // as far as the parts have been seen, as is the next
    std::uint64_t extent = 1;

    void addPart(unsigned partHeight, std::uint64_t partExtent) {
        height = std::max(height, partHeight + 1);
        extent = std::min(extent + partExtent, ReferenceDictionary::maxReferredContainers + 1);
    }
};
}  // namespace

const std::string& ReferenceDictionary::getStaticClassName() {
    static const std::string className = "ReferenceDictionary";
    return className;
}

const std::string& ReferenceDictionary::getClassName() const { return getStaticClassName(); }

ReferenceDictionary::ReferenceDictionary() = default;
ReferenceDictionary::~ReferenceDictionary() = default;

ReferenceDictionary::Entry* ReferenceDictionary::find(std::uint64_t key) {
    const auto found = std::ranges::lower_bound(entries, key, {}, &Entry::key);
    return found != entries.end() && found->key == key ? &*found : nullptr;
}

std::shared_ptr<AttrContainer> ReferenceDictionary::resolveReference(std::uint64_t key) {
    const auto* entry = find(key);
    return entry ? entry->container : nullptr;
}

bool ReferenceDictionary::registerReference(std::uint64_t key,
                                            std::shared_ptr<AttrContainer> container) {
    if (!container) return false;
    auto* entry = find(key);
    if (!entry) return false;
    if (entry->container && entry->container != container) return false;
    entry->container = std::move(container);
    return true;
}

bool ReferenceDictionary::unregisterReference(std::uint64_t key) {
    auto* entry = find(key);
    if (!entry) return false;
    entry->container.reset();
    return true;
}

void ReferenceDictionary::initializeFromVector(std::vector<std::uint64_t>& keys) {
    targetParts.clear();
    referredContainers = 0;
    std::ranges::sort(keys);
    entries.clear();
    entries.reserve(keys.size());
    for (const auto key : keys) entries.push_back({key, nullptr});
}

bool ReferenceDictionary::noteTarget(const AttrContainer& target) {
    if (inqTargetPart(target)) return false;
    std::vector<TargetWalk> walk;  // the containers from the target down, the innermost last
    const auto enter = [&](const AttrContainer& container) {
        targetParts[&container] = {container.weak_from_this(), 0};
        walk.emplace_back(container);
    };
    enter(target);
    while (!walk.empty()) {
        TargetWalk& place = walk.back();
        if (!place.partsLeft.empty()) {
            const AttrContainer& part = *place.partsLeft.back();
            place.partsLeft.pop_back();
            const TargetPart* const noted = inqTargetPart(part);
            if (noted) place.addPart(noted->height, noted->extent);
            else enter(part);
            continue;
        }
        TargetPart& seen = targetParts[place.container];
        seen.height = place.height;
        seen.extent = place.extent;
        walk.pop_back();
        if (!walk.empty()) walk.back().addPart(seen.height, seen.extent);
    }
    return true;
}

bool ReferenceDictionary::takeIn(const TargetPart& target) {
    if (target.extent > maxReferredContainers - referredContainers) return false;
    referredContainers += target.extent;
    return true;
}

const ReferenceDictionary::TargetPart* ReferenceDictionary::inqTargetPart(
    const AttrContainer& container) const {
    const auto found = targetParts.find(&container);
    const bool isNoted = found != targetParts.end() && !found->second.container.expired();
    return isNoted ? &found->second : nullptr;
}

ErrorPtr ReferenceDictionary::writeTo(std::ostream&, std::shared_ptr<const WriteContextBase>) {
    return nullptr;
}

ErrorPtr ReferenceDictionary::readFrom(std::istream&, std::shared_ptr<const ReadContextBase>) {
    return QOR_ERROR(ReadNotSupported, "ReferenceDictionary::readFrom");
}

}  // namespace QOR::AttributeContainer
