// Values as text and as JSON, with nothing lost.
#pragma once

#include <AttributeContainer/Attribute.h>

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

namespace qormodel {

namespace ac = QOR::AttributeContainer;
using Json = nlohmann::ordered_json;

/// The value on one line: numbers in their shortest form that reads back as the same number, texts
/// bare with control characters escaped, components with a blank between them, lists in braces.
std::string valueText(const ac::Attribute& attribute);

/// The same, cut to about `maxLength` characters, with the number of elements of a cut list. Costs
/// no more than what is shown.
std::string shortValueText(const ac::Attribute& attribute, std::size_t maxLength);

/// One element of a list; empty for what is no list, or where it is shorter.
std::string elementText(const ac::Attribute& attribute, std::size_t index);

/// The value with its structure: numbers keep 17 digits, infinities and NaN are texts.
Json valueJson(const ac::Attribute& attribute);

/// The same as text. Of a list one element at a time is in memory.
void writeValueJson(std::ostream& stream, const ac::Attribute& attribute);

/// How many points a value holds; none for what is no list of points.
std::optional<std::uint64_t> numPoints(const ac::Attribute& attribute);

/// Whether the value is the one that a new attribute of its type has.
bool isDefaultValue(const ac::Attribute& attribute);

}  // namespace qormodel
