#include "persistence/BlockEnd.h"

#include <AttributeContainer/ModelFormat.h>

namespace QOR::AttributeContainer {

void propagateEnd(ModelInFormat& imf) {
    const std::string* const keyword = imf.peekKeyword();
    if (keyword && *keyword == ModelFormat::END_OF_BLOCK_STR)
        ModelInFormat::setPropagateKeyword(*keyword);
}

}  // namespace QOR::AttributeContainer
