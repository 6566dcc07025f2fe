#include <AttributeContainer/AttrRegistryVisitor.h>
#include <AttributeContainer/Attribute.h>

#include <stdexcept>
#include <utility>

namespace QOR::AttributeContainer {

namespace {

// Switches the walks of an attribute off for a scope, if they are on.
class Silence {
public:
    Silence(Attribute& attribute, bool wanted)
        : attribute(attribute), isOn(wanted && attribute.isNotifyEnabled()) {
        if (isOn) attribute.setNotifyEnabled(false);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() {
        if (isOn) attribute.setNotifyEnabled(true);
    }

private:
    Attribute& attribute;
    bool isOn;
};

}  // namespace

AttrReadRegistry::AttrReadRegistry(const RegKeysArray& keys, bool notify, unsigned int first,
                                   unsigned int last)
    : AttrRegistryVisitor(keys, false, first, last), notify(notify) {}

AttrReadRegistry::AttrReadRegistry(std::shared_ptr<const RegKeys> key, bool notify,
                                   unsigned int first, unsigned int last)
    : AttrReadRegistry(RegKeysArray{{std::move(key)}}, notify, first, last) {}

AttrReadRegistry::~AttrReadRegistry() = default;

VisitorCore::VisitResult AttrReadRegistry::visit(Attribute& attribute) {
    if (!isStored(attribute)) return Continue;
    const std::string name = attribute.getName();
    std::string text;
    for (const auto& key : getKeys())
        if (auto stored = key->queryKey(name); !stored.empty()) text = std::move(stored);
    if (text.empty()) return Continue;

    const Silence silence(attribute, !notify);
    try {
        attribute.assignFrom(text);
        ++numRead;
    } catch (const std::invalid_argument&) {
        // A text that lost its last character may be no number any more, such as that of -1: one
        // value is no reason to end the load of the others.
    }
    return Continue;
}

}  // namespace QOR::AttributeContainer
