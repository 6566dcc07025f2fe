// An attribute as one of a type.
#pragma once

#include <AttributeContainer/Attr.h>

#include <typeinfo>

namespace QOR::AttributeContainer {

/// The attribute as one of values of `T`; null if it is of another type. It nearly always is one of
/// the two classes of that type, which takes no search through the bases.
template <AttrValue T>
const Attr<T>* asTyped(const Attribute& attribute) {
    const std::type_info& type = typeid(attribute);
    if (type == typeid(HardCodedAttr<T>) || type == typeid(CustAttr<T>))
        return static_cast<const Attr<T>*>(&attribute);
    return dynamic_cast<const Attr<T>*>(&attribute);
}

}  // namespace QOR::AttributeContainer
