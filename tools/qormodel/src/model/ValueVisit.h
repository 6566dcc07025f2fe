// From an attribute to its typed value.
#pragma once

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/ValueTypes.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <concepts>
#include <cstdint>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

/// A fixed number of numbers: a vector or a matrix.
template <class T>
concept NumberGroup = requires(const T& value) {
    value.size();
    { value[0] } -> std::convertible_to<double>;
} && !requires(const T& value) { value.begin(); };

/// Calls `visit(value)` with the value of `attribute` in its own type.
/// \return false, and nothing is called, for an attribute of a class that the library does not have.
template <class Visit>
bool visitValue(const ac::Attribute& attribute, Visit&& visit) {
    const ac::AttrType type = ac::AttrContainer::getTypeFromString(attribute.getClassName());
    bool isFound = false;
    ac::ValueTypes::forEach([&]<class Row>() {
        if (isFound || Row::isAlias || Row::token != type) return;
        const auto* const typed = dynamic_cast<const ac::Attr<typename Row::Value>*>(&attribute);
        if (!typed) return;
        isFound = true;
        visit(typed->get());
    });
    return isFound;
}

/// The word of its type in a stream, as in "Attr<int>".
inline const std::string& typeWordOf(const ac::Attribute& attribute) {
    return attribute.getClassName();
}

}  // namespace qormodel
