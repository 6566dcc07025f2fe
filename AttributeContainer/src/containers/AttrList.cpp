#include <AttributeContainer/AttrList.h>

#include <AttributeContainer/kVAttrContainer.h>

#include "attributes/AttributeBlock.h"

#include <stdexcept>

namespace QOR::AttributeContainer {

namespace {
const std::shared_ptr<Attribute> noAttribute;
}  // namespace

const std::shared_ptr<Attribute>& AttrList::get(std::uint64_t token) const {
    return token < elements.size() ? elements[token] : noAttribute;
}

std::uint64_t AttrList::getToken(const Attribute& attribute) const {
    for (std::uint64_t token = 0; token < elements.size(); ++token)
        if (elements[token].get() == &attribute) return token;
    return AttrContainer::noToken;
}

bool AttrList::createAttributes(const std::vector<AttrDefinition>& rows, CreateType,
                                const AttrList* source) {
    elements.resize(elements.size() + rows.size());
    std::size_t room = 0;
    for (const AttrDefinition& row : rows) room += row.roomInBlock();
    AttributeBlock block(container, room);
    for (const AttrDefinition& row : rows) {
        std::optional<std::reference_wrapper<const Attribute>> valueSource;
        if (source) {
            if (row.token >= source->elements.size())
                throw std::out_of_range("invalid vector subscript");
            if (const auto& from = source->elements[row.token]) valueSource = *from;
        }
        if (row.token >= elements.size()) throw std::out_of_range("invalid vector subscript");
        elements[row.token] = row.createAttr(valueSource, block);
    }
    return true;
}

}  // namespace QOR::AttributeContainer
