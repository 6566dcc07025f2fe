#include <AttributeContainer/AttrRegistryVisitor.h>
#include <AttributeContainer/Attribute.h>

#include <utility>

namespace QOR::AttributeContainer {

AttrWriteRegistry::AttrWriteRegistry(const RegKeysArray& keys, unsigned int first,
                                     unsigned int last)
    : AttrRegistryVisitor(keys, true, first, last) {}

AttrWriteRegistry::AttrWriteRegistry(std::shared_ptr<const RegKeys> key, unsigned int first,
                                     unsigned int last)
    : AttrWriteRegistry(RegKeysArray{{std::move(key)}}, first, last) {}

AttrWriteRegistry::~AttrWriteRegistry() = default;

VisitorCore::VisitResult AttrWriteRegistry::visit(Attribute& attribute) {
    if (!isStored(attribute)) return Continue;
    const std::string name = attribute.getName();
    const std::string text = attribute.getValueString();
    // A value that one of the keys refuses is no reason to end: the others may have taken it.
    for (const auto& key : getKeys()) key->setKey(name, text);
    return getKeys().empty() ? Skip : Continue;
}

}  // namespace QOR::AttributeContainer
