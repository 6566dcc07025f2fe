#include <AttributeContainer/GenericBinaryObjectV2.h>

namespace QOR::AttributeContainer {

std::optional<std::string> GenericBinaryObjectV2::getSaveBinaryDataStreamName() const {
    return CurrentStream();
}

void GenericBinaryObjectV2::init(CreateType type, Source source) {
    Block::init(type, source);
    name("Folder");
}

}  // namespace QOR::AttributeContainer
