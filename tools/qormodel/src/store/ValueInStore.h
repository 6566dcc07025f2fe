// Values of attributes as a key store holds them.
#pragma once

#include "store/StoreText.h"

#include <AttributeContainer/Attribute.h>

#include <memory>
#include <optional>
#include <string>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

/// The text that gives back the attribute's value whole: that of the library where it does, else
/// one with more digits. \return none where no text does
std::optional<std::string> storedTextOf(const ac::Attribute& attribute);

/// A free attribute of the type of `like` with the value that a text of a store stands for.
/// \param expected gets what would be one. \return an empty pointer for a text that is none
std::shared_ptr<ac::Attribute> readStoredText(const ac::Attribute& like, const std::string& text,
                                              std::string& expected);

/// A value of a store as the text of an attribute's value: numbers are decimal, a list of texts
/// stands in braces, bytes are hexadecimal digits.
std::string attributeTextOf(const StoredValue& value);

/// The type word of an attribute for a value that no class declares.
std::string attributeTypeOf(const StoredValue& value);

}  // namespace qormodel
