// The page itself: one HTML file with its script, its style and its data.
#pragma once

#include "model/Values.h"

#include <string>

namespace qormodel {

/// JSON that may stand inside of an element `script`: nothing in it begins or ends markup. Bytes
/// that are no UTF-8 are replaced.
std::string embeddedJson(const Json& data);

/// The page that shows the data.
std::string makePage(const Json& data);

}  // namespace qormodel
