// How a reading loop ends on the "}" of its block.
#pragma once

#include <AttributeContainer/ModelInFormat.h>

namespace QOR::AttributeContainer {

/// Where a loop ended on "}", lets the caller see it again.
void propagateEnd(ModelInFormat& imf);

}  // namespace QOR::AttributeContainer
