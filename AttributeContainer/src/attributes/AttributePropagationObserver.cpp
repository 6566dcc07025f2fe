#include <AttributeContainer/AttributePropagationObserver.h>

#include <AttributeContainer/Attribute.h>

#include <utility>

namespace QOR::AttributeContainer {

AttributePropagationObserver::AttributePropagationObserver(
    std::weak_ptr<Attribute> attribute,
    const std::optional<std::reference_wrapper<const Observer>>& source)
    : Observer(source), attribute(std::move(attribute)) {}

AttributePropagationObserver::~AttributePropagationObserver() = default;

std::string AttributePropagationObserver::getName() const { return "AttributePropagationObserver"; }

}  // namespace QOR::AttributeContainer
