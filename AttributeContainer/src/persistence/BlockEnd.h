// How a reading loop ends on the "}" of its block.
#pragma once

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>

#include <string>

namespace QOR::AttributeContainer {

/// Whether the keyword is the "}" that ends a block.
inline bool isBlockEnd(const std::string& keyword) {
    return keyword.size() == 1 && keyword.front() == ModelFormat::END_OF_BLOCK;
}

/// Where a loop ended on "}", lets the caller see it again.
void propagateEnd(ModelInFormat& imf);

}  // namespace QOR::AttributeContainer
