#include "persistence/BlockEnd.h"

#include <AttributeContainer/ModelFormat.h>

namespace QOR::AttributeContainer {

void propagateEnd(ModelInFormat& imf) {
    const std::string* const keyword = imf.peekKeyword();
    if (keyword && isBlockEnd(*keyword))
        ModelInFormat::setPropagateKeyword(*keyword);
}

}  // namespace QOR::AttributeContainer
