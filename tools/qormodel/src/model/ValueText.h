// From a text that a user gives to the value of an attribute.
#pragma once

#include <AttributeContainer/Attribute.h>

#include <memory>
#include <optional>
#include <string>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

/// A free attribute of the type of `like` with the value that the text stands for. Numbers and
/// their groups may stand as `get` prints them: with commas or parentheses. The library's own
/// reading takes what is no number for 0 and what is too great for another number; here the whole
/// text must be a value of the type.
/// \param expected gets what would be one, as in "a whole number from 0 to 255".
/// \return an empty pointer for a text that is none
std::shared_ptr<ac::Attribute> parseValue(const ac::Attribute& like, const std::string& text,
                                          std::string& expected);

}  // namespace qormodel
