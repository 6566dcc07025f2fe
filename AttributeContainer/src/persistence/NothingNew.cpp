#include "persistence/NothingNew.h"

#include <AttributeContainer/Attr.h>

#include <array>
#include <concepts>
#include <typeinfo>

namespace QOR::AttributeContainer {

namespace {

using SameBits = bool (*)(const Attribute& free, const Attribute& declared);

template <class T>
bool hasSameBits(const Attribute& free, const Attribute& declared) {
    return typeid(declared) == typeid(HardCodedAttr<T>) &&
           static_cast<const CustAttr<T>&>(free).get() ==
               static_cast<const HardCodedAttr<T>&>(declared).get();
}

constexpr auto sameBits = [] {
    std::array<SameBits, numAttrTypes> table{};
    ValueTypes::forEach([&]<class Row>() {
        using T = typename Row::Value;
        if constexpr (std::integral<T> || std::same_as<T, std::string> ||
                      std::same_as<T, uuids::uuid>)
            table[static_cast<std::size_t>(Row::token)] = hasSameBits<T>;
    });
    return table;
}();

}  // namespace

bool isNothingNew(AttrType type, const Attribute& read, const Attribute& untouched) {
    const auto index = static_cast<std::size_t>(type);
    return index < sameBits.size() && sameBits[index] && !read.hasWriteFlag() &&
           !read.isMarked() && read.getNumPreObservers() == 0 && read.getNumPostObservers() == 0 &&
           sameBits[index](read, untouched);
}

}  // namespace QOR::AttributeContainer
