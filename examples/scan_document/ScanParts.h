// What belongs to a scan in the document.
#pragma once

#include "Scan.h"

#include <AttributeContainer/Object.h>

namespace example {

namespace model = QOR::AttributeContainer;

/// Adds to the object of a scan what comes of its points: themselves, statistics, markers and a
/// panorama. \throws std::logic_error if it has them already.
void addScanParts(model::Object& object, const Scan& scan);

}  // namespace example
