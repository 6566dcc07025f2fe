// What attributes know of their place, whatever the type of their value.
#include <AttributeContainer/Attr.h>
#include <AttributeContainer/AttrDefinition.h>
#include <AttributeContainer/kVAttrContainer.h>

namespace QOR::AttributeContainer {

namespace {
constexpr std::uint64_t noToken = ~std::uint64_t{0};

std::string nameIn(const AttrContainer* container, const Attribute& attribute) {
    if (!container) return {};
    auto name = container->getAttrName(container->getAttrToken(attribute));
    return name ? std::move(*name) : std::string{};
}

std::uint64_t tokenIn(const AttrContainer* container, const Attribute& attribute) {
    return container ? container->getAttrToken(attribute) : noToken;
}
}  // namespace

HardCodedAttribute::HardCodedAttribute(const AttrContainer& container)
    : place(new Place{ContainerLink(container)}) {}

HardCodedAttribute::~HardCodedAttribute() {
    if (!place->isShared) delete place;
}

std::string HardCodedAttribute::getName(const Attribute& attribute) const {
    return nameIn(container().get(), attribute);
}

std::uint64_t HardCodedAttribute::getToken(const Attribute& attribute) const {
    return tokenIn(container().get(), attribute);
}

const AttrDefinition* HardCodedAttribute::getDefinition(const Attribute& attribute) const {
    const AttrContainer* const living = container().get();
    return living ? living->getAttrDefinition(attribute) : nullptr;
}

std::string CustomAttribute::getName(const Attribute& attribute) const {
    return nameIn(location.get(), attribute);
}

std::uint64_t CustomAttribute::getToken(const Attribute& attribute) const {
    return tokenIn(location.get(), attribute);
}

}  // namespace QOR::AttributeContainer
