// How the example adds to a tree what cannot be refused there.
#pragma once

#include "ErrorText.h"

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/Object.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace example {

namespace model = QOR::AttributeContainer;

/// Adds an attribute that the class does not declare. Its type must be one of `model::ValueTypes`.
/// \throws std::logic_error if the name is taken.
template <class T>
std::shared_ptr<model::Attr<T>> addValue(model::AttrContainer& container, const std::string& name,
                                         const T& value) {
    const auto attribute = std::make_shared<model::CustAttr<T>>(std::nullopt);
    attribute->set(value);
    if (container.addAttribute(attribute, name).expired())
        throw std::logic_error("\"" + name + "\" is taken in " + container.getName());
    return attribute;
}

/// \throws ModelFailure for what is no name.
inline void setName(model::AttrContainer& container, const std::string& name) {
    if (const auto error = container.setName(name)) throw ModelFailure("naming " + name, *error);
}

/// Adds a new object of class `X`. \throws std::logic_error if the name is taken.
template <class X> std::shared_ptr<X> addChild(model::Object& parent, const std::string& name) {
    const auto child = X::create();
    setName(*child, name);
    if (!parent.addChild(child, 0)) throw std::logic_error("\"" + name + "\" cannot be added");
    return child;
}

}  // namespace example
