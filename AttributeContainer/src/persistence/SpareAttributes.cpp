#include "persistence/SpareAttributes.h"

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/AttrDefinition.h>
#include <AttributeContainer/ThreadWord.h>

#include <cstddef>
#include <type_traits>
#include <utility>

namespace QOR::AttributeContainer {

namespace {

QOR_THREAD_WORD SpareAttributes* ofThread = nullptr;

constexpr AttrType textType = attrTypeOf<std::string>;
constexpr std::size_t longText = 1000;  // characters; one with more gives them back at once

// The types with values of a fixed size, and text.
constexpr auto isKept = [] {
    std::array<bool, numAttrTypes> table{};
    ValueTypes::forEach([&]<class Row>() {
        using T = typename Row::Value;
        table[static_cast<std::size_t>(Row::token)] =
            std::is_trivially_destructible_v<T> || std::is_same_v<T, std::string>;
    });
    return table;
}();

// Whether a read into the attribute finds what it finds in a new one.
bool isAsNew(const std::shared_ptr<Attribute>& attribute) {
    return attribute.use_count() == 1 && attribute->getFlags() == Attribute::nullFlags &&
           attribute->getNumPreObservers() == 0 && attribute->getNumPostObservers() == 0 &&
           attribute->isNotifyEnabled();
}

}  // namespace

SpareAttributes::Scope::Scope() {
    if (ofThread) return;
    own = std::make_unique<SpareAttributes>();
    ofThread = own.get();
}

SpareAttributes::Scope::~Scope() {
    if (own) ofThread = nullptr;
}

std::shared_ptr<Attribute> SpareAttributes::take(AttrType type) {
    const auto index = static_cast<std::size_t>(type);
    if (ofThread && index < isKept.size() && ofThread->spares[index])
        return std::move(ofThread->spares[index]);
    return AttrDefinition{0, {}, type, 0}.createAttr(CreateDeep, std::nullopt, std::nullopt);
}

void SpareAttributes::giveBack(AttrType type, std::shared_ptr<Attribute> attribute) {
    const auto index = static_cast<std::size_t>(type);
    if (!ofThread || index >= isKept.size() || !isKept[index] || !attribute || !isAsNew(attribute))
        return;
    if (type == textType &&
        static_cast<const Attr<std::string>&>(*attribute).get().size() > longText)
        return;
    ofThread->spares[index] = std::move(attribute);
}

}  // namespace QOR::AttributeContainer
