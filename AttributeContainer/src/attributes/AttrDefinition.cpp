#include <AttributeContainer/AttrDefinition.h>

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "attributes/AttributeBlock.h"
#include "attributes/MakeAttribute.h"

#include <array>

namespace QOR::AttributeContainer {

namespace {
using Source = std::optional<std::reference_wrapper<const Attribute>>;

struct Maker {
    std::shared_ptr<Attribute> (*make)(const Source&, const Attribute::Location&) = nullptr;
    // For tables; null and nothing for a type that none can have.
    std::shared_ptr<Attribute> (*makeIn)(const Source&, AttributeBlock&) = nullptr;
    std::size_t room = 0;
};

template <class T>
std::shared_ptr<Attribute> make(const Source& source, const Attribute::Location& location) {
    if (location) return std::make_shared<HardCodedAttr<T>>(location->get(), source);
    return std::make_shared<CustAttr<T>>(source);
}

template <class T>
std::shared_ptr<Attribute> makeIn(const Source& source, AttributeBlock& block) {
    return block.create<T>(source);
}

constexpr auto makers = [] {
    std::array<Maker, numAttrTypes> table{};
    ValueTypes::forEach([&]<class Row>() {
        using T = typename Row::Value;
        Maker& maker = table[static_cast<std::size_t>(Row::token)];
        maker.make = make<T>;
        if constexpr (Row::isCreated) {
            maker.makeIn = makeIn<T>;
            maker.room = AttributeBlock::roomFor<T>();
        }
    });
    return table;
}();

const Maker* tableMaker(AttrType type) {
    const auto index = static_cast<std::size_t>(type);
    return index < makers.size() && makers[index].makeIn ? &makers[index] : nullptr;
}
}  // namespace

std::shared_ptr<Attribute> makeAttribute(AttrType type, const Source& source,
                                         const Attribute::Location& location) {
    const auto index = static_cast<std::size_t>(type);
    return index < makers.size() ? makers[index].make(source, location) : nullptr;
}

std::shared_ptr<Attribute> AttrDefinition::createAttr(CreateType, const Source& source,
                                                      const Attribute::Location& location) const {
    const Maker* const maker = tableMaker(type);
    return maker ? marked(maker->make(source, location)) : nullptr;
}

std::shared_ptr<Attribute> AttrDefinition::createAttr(const Source& source,
                                                      AttributeBlock& block) const {
    const Maker* const maker = tableMaker(type);
    return maker ? marked(maker->makeIn(source, block)) : nullptr;
}

std::size_t AttrDefinition::roomInBlock() const {
    const Maker* const maker = tableMaker(type);
    return maker ? maker->room : 0;
}

std::shared_ptr<Attribute> AttrDefinition::marked(std::shared_ptr<Attribute> attribute) const {
    if ((category & flagged) != 0) attribute->flags.set(Attribute::Flags::definitionFlag, true);
    return attribute;
}

}  // namespace QOR::AttributeContainer
