#include <AttributeContainer/AttrDefinition.h>

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "attributes/MakeAttribute.h"

#include <array>

namespace QOR::AttributeContainer {

namespace {
using Source = std::optional<std::reference_wrapper<const Attribute>>;

struct Maker {
    std::shared_ptr<Attribute> (*make)(const Source&, const Attribute::Location&) = nullptr;
    bool isForTables = false;
};

template <class T>
std::shared_ptr<Attribute> make(const Source& source, const Attribute::Location& location) {
    if (location) return std::make_shared<HardCodedAttr<T>>(location->get(), source);
    return std::make_shared<CustAttr<T>>(source);
}

constexpr auto makers = [] {
    std::array<Maker, numAttrTypes> table{};
    ValueTypes::forEach([&]<class Row>() {
        table[static_cast<std::size_t>(Row::token)] = {make<typename Row::Value>, Row::isCreated};
    });
    return table;
}();
}  // namespace

std::shared_ptr<Attribute> makeAttribute(AttrType type, const Source& source,
                                         const Attribute::Location& location) {
    const auto index = static_cast<std::size_t>(type);
    return index < makers.size() ? makers[index].make(source, location) : nullptr;
}

std::shared_ptr<Attribute> AttrDefinition::createAttr(CreateType, const Source& source,
                                                      const Attribute::Location& location) const {
    const auto index = static_cast<std::size_t>(type);
    if (index >= makers.size() || !makers[index].isForTables) return nullptr;
    auto attribute = makeAttribute(type, source, location);
    if ((category & flagged) != 0) attribute->flags.set(Attribute::Flags::definitionFlag, true);
    return attribute;
}

}  // namespace QOR::AttributeContainer
