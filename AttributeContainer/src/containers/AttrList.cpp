#include <AttributeContainer/AttrList.h>

#include <AttributeContainer/AttrTable.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "attributes/AttributeBlock.h"

#include <stdexcept>

namespace QOR::AttributeContainer {

namespace {
const std::shared_ptr<Attribute> noAttribute;
}  // namespace

std::uint64_t AttrList::getToken(const Attribute& attribute) const {
    for (std::uint64_t token = 0; token < elements.size(); ++token)
        if (elements[token].get() == &attribute) return token;
    return AttrContainer::noToken;
}

bool AttrList::createAttributes(const std::vector<AttrDefinition>& rows, CreateType,
                                const AttrList* source) {
    extend(rows.size());
    makeRows(rows, source);
    return true;
}

void AttrList::makeRows(const std::vector<AttrDefinition>& rows, const AttrList* source) {
    std::size_t room = 0;
    for (const AttrDefinition& row : rows) room += row.roomInBlock();
    AttributeBlock block(container, room);
    for (const AttrDefinition& row : rows) {
        std::optional<std::reference_wrapper<const Attribute>> valueSource;
        if (source) {
            if (row.token >= source->elements.size())
                throw std::out_of_range("invalid vector subscript");
            if (const auto& from = source->get(row.token)) valueSource = *from;
        }
        if (row.token >= elements.size()) throw std::out_of_range("invalid vector subscript");
        elements[row.token] = row.createAttr(valueSource, block);
    }
}

// Attributes that nobody has touched --------------------------------------------------------------

void AttrList::declare(const AttrTable& declared, const AttrList* source) {
    const auto& rows = declared.getRows();
    extend(rows.size());
    if (rows.empty()) return;
    const std::uint64_t first = declared.getFirstToken();
    const bool isLast = declared.getLastToken() + 1 == elements.size();  // not so in a second `init`
    if (!isLast || (source && source->untouchedTable(first) != &declared)) {
        makeRows(rows, source);
        return;
    }
    table = &declared;
}

const AttrTable* AttrList::findUntouched(std::uint64_t token) const {
    const AttrTable* const found = table ? table->find(token) : nullptr;
    if (!found || found->getMadeToken() >= elements.size()) return nullptr;
    return elements[found->getMadeToken()] ? nullptr : found;
}

const std::shared_ptr<Attribute>& AttrList::make(std::uint64_t token) const {
    const AttrTable* const untouched = untouchedTable(token);
    if (!untouched) return noAttribute;
    untouched->makeAttributes(const_cast<AttrList&>(*this));  // as if they had always been there
    return elements[token];
}

const std::shared_ptr<Attribute>& AttrList::lookAtUntouched(std::uint64_t token) const {
    const AttrTable* const untouched = untouchedTable(token);
    return untouched ? untouched->getSample(token) : noAttribute;
}

}  // namespace QOR::AttributeContainer
