// Attributes that lie in no container.
#pragma once

#include <AttributeContainer/Attr.h>

#include <memory>
#include <optional>

namespace QOR::AttributeContainer::Testing {

/// A new custom attribute with a value, in no container.
template <class T>
std::shared_ptr<Attr<T>> attributeOf(const T& value) {
    auto attribute = std::make_shared<CustAttr<T>>(std::nullopt);
    attribute->set(value);
    return attribute;
}

}  // namespace QOR::AttributeContainer::Testing
