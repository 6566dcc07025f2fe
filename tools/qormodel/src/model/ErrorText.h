// The library's errors in words for people.
#pragma once

#include <QOR/ErrorCode.h>

#include <string>

namespace qormodel {

/// What went wrong and what was expected, with the description that the library gives.
std::string textOf(const QOR::ErrorHandling::ErrorWithCode<QOR::AttributeContainer::ErrorCode>& error);

/// Why a text is not the name of an object, a field or an attribute.
std::string textOfNoName(const std::string& text);

}  // namespace qormodel
