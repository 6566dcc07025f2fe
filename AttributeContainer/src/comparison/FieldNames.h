// The names by which fields of two containers find each other.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace QOR::AttributeContainer {

/// The name of a slot for a field, or else that of the field in it, which may be missing.
inline std::string fieldNameAt(const AttrContainer& container, std::uint64_t token,
                               const AttrContainer* field) {
    auto name = container.getFieldName(token);
    if (name && !name->empty()) return std::move(*name);
    return field ? field->getName() : std::string{};
}

inline std::optional<std::reference_wrapper<const AttrContainer>> asOptional(
    const AttrContainer* container) {
    if (!container) return std::nullopt;
    return *container;
}

}  // namespace QOR::AttributeContainer
