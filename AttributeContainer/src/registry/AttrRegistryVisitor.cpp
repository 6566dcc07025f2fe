#include <AttributeContainer/AttrRegistryVisitor.h>

#include <AttributeContainer/AttrDefinition.h>
#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <utility>

namespace QOR::AttributeContainer {

AttrRegistryVisitor::AttrRegistryVisitor(const RegKeysArray& array, bool writing, unsigned first,
                                         unsigned last)
    : AttributeVisitor(first, last), writing(writing) {
    for (const auto& key : array.keys) {
        auto own = key ? key->createFrom(writing) : nullptr;
        if (!own) continue;
        basePrefixes.push_back(own->getPrefix());
        keys.push_back(std::move(own));
    }
}

AttrRegistryVisitor::~AttrRegistryVisitor() = default;

bool AttrRegistryVisitor::isStored(const Attribute& attribute) {
    const auto location = attribute.getLocation();
    return !location ||
           (location->get().getAttrCategory(attribute) & AttrDefinition::notPersistent) == 0;
}

bool AttrRegistryVisitor::updateKeys() {
    if (keys.empty()) return false;
    std::string path;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        if (i > 1) path += '\\';
        if (frames[i].name) path += *frames[i].name;
    }
    bool areMade = true;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::string prefix = basePrefixes[i] + path;
        keys[i]->setPrefix(prefix);
        if (writing && !prefix.empty()) areMade = keys[i]->createKey("", false) && areMade;
    }
    return areMade;
}

VisitorCore::VisitResult AttrRegistryVisitor::visit(AttrContainer& container) {
    std::optional<std::string> name;
    if (!frames.empty()) {
        LevelFrame& parent = frames.back();
        name = parent.container.getFieldRegistryPrefix(container);
        if (name && !parent.usedNames.insert(*name).second) return Skip;
    }
    frames.push_back({std::move(name), container, {}});
    if (updateKeys()) return Continue;
    // The walk tells nobody that it leaves a container which it did not enter.
    frames.pop_back();
    updateKeys();
    return Prune;
}

VisitorCore::VisitResult AttrRegistryVisitor::visitDone(AttrContainer&) {
    if (!frames.empty()) frames.pop_back();
    return updateKeys() ? Continue : Prune;
}

}  // namespace QOR::AttributeContainer
