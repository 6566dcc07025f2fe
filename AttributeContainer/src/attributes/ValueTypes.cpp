#include <AttributeContainer/ValueTypes.h>

#include <array>

namespace QOR::AttributeContainer {

namespace {
using ClassNames = std::array<std::string, numAttrTypes + 1>;

ClassNames makeClassNames() {
    ClassNames names;
    ValueTypes::forEach([&]<class Row>() {
        constexpr AttrType mainRow = attrTypeOf<typename Row::Value>;
        if constexpr (Row::token == mainRow)
            names[static_cast<std::size_t>(mainRow)] = "Attr<" + std::string{Row::word} + ">";
    });
    ValueTypes::forEach([&]<class Row>() {
        if constexpr (Row::isAlias)
            names[static_cast<std::size_t>(Row::token)] =
                names[static_cast<std::size_t>(attrTypeOf<typename Row::Value>)];
    });
    return names;
}
}  // namespace

const std::string& getAttrClassName(AttrType type) {
    static const ClassNames names = makeClassNames();
    return names[std::min<std::size_t>(static_cast<std::size_t>(type), numAttrTypes)];
}

}  // namespace QOR::AttributeContainer
