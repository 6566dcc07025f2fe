// The library's errors in words for people.
#pragma once

#include <QOR/ErrorCode.h>

#include <string>

namespace qormodel {

/// What went wrong and what was expected, with the description that the library gives.
std::string textOf(const QOR::ErrorHandling::ErrorWithCode<QOR::AttributeContainer::ErrorCode>& error);

}  // namespace qormodel
