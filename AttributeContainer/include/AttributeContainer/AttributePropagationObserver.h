// The companion through which an attribute takes part as an observer.
#pragma once

#include <AttributeContainer/Observer.h>

#include <memory>
#include <string>

namespace QOR::AttributeContainer {

class Attribute;

/// Stands for an attribute where an observer is wanted: the target of a propagation. Holds its
/// attribute weakly and is held by it.
class QOR_API AttributePropagationObserver : public Observer {
public:
    AttributePropagationObserver(
        std::weak_ptr<Attribute> attribute,
        const std::optional<std::reference_wrapper<const Observer>>& source);
    ~AttributePropagationObserver() override;

    std::string getName() const override;
    /// The attribute; empty when it has gone.
    std::shared_ptr<Attribute> getAttribute() const { return attribute.lock(); }

private:
    std::weak_ptr<Attribute> attribute;
};

}  // namespace QOR::AttributeContainer
