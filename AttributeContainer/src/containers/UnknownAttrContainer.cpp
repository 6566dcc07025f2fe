#include <AttributeContainer/UnknownAttrContainer.h>

namespace QOR::AttributeContainer {

void UnknownAttrContainer::init(CreateType type, const Source& source) {
    Block::init(type, source);
    if (source) unknownTypeName = source->get().unknownTypeName;
}

std::shared_ptr<AttrContainer> UnknownAttrContainer::checkCreateChildField(
    const std::string& typeName, const std::string& name, std::uint64_t*) {
    const auto field = create();
    field->unknownTypeName = typeName;
    [[maybe_unused]] const auto refused = field->setName(name);
    return field;
}

}  // namespace QOR::AttributeContainer
