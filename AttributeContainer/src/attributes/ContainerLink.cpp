#include <AttributeContainer/ContainerLink.h>

#include <AttributeContainer/kVAttrContainer.h>

namespace QOR::AttributeContainer {

ContainerLink::ContainerLink(const AttrContainer& container)
    : container(&container), guard(container.weak_from_this()) {}

void ContainerLink::set(const Attribute::Location& location) {
    *this = location ? ContainerLink(location->get()) : ContainerLink();
}

const AttrContainer* ContainerLink::get() const {
    return guard.expired() ? nullptr : container;
}

Attribute::Location ContainerLink::getLocation() const {
    if (const AttrContainer* const living = get()) return *living;
    return std::nullopt;
}

}  // namespace QOR::AttributeContainer
