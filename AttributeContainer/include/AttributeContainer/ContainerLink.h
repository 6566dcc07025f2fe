// The link from an attribute to the container that holds it.
#pragma once

#include <AttributeContainer/Attribute.h>

#include <memory>

namespace QOR::AttributeContainer {

/// Leads to a container for as long as that lives; an attribute may outlive its container.
class QOR_API ContainerLink {
public:
    ContainerLink() = default;
    explicit ContainerLink(const AttrContainer& container);

    void set(const Attribute::Location& location);
    /// The container; null when there is none or it has gone.
    const AttrContainer* get() const;
    Attribute::Location getLocation() const;

private:
    const AttrContainer* container = nullptr;
    std::weak_ptr<const ObservingObject> guard;
};

}  // namespace QOR::AttributeContainer
