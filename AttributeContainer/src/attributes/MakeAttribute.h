// Makes an attribute of any type of the list.
#pragma once

#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/ValueTypes.h>

#include <functional>
#include <memory>
#include <optional>

namespace QOR::AttributeContainer {

/// A new attribute in `location`, or a free one where none is given, with the value and the
/// relations of `source` if there is one. \return an empty pointer for an unknown type.
std::shared_ptr<Attribute> makeAttribute(
    AttrType type, const std::optional<std::reference_wrapper<const Attribute>>& source,
    const Attribute::Location& location);

}  // namespace QOR::AttributeContainer
