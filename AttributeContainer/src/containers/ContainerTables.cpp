// The tables of a container class, and what is made from them.
#include <AttributeContainer/kVAttrContainer.h>

#include <algorithm>
#include <utility>

namespace QOR::AttributeContainer {

using DataStructures::KeyTable;
using DataStructures::KeyTableEntry;

namespace {
// The words of a container block, behind those of the attribute types.
const KeyTableEntry streamWords[] = {
    {55, "AttrContainer"}, {56, "Name"},       {57, "SubContainer"},
    {58, "FieldHandle"},   {59, "FieldToken"}, {60, "ReferenceToShared"},
    {61, "InstanceID"},    {62, ""},
};

std::vector<KeyTableEntry> makeStreamRows() {
    std::vector<KeyTableEntry> rows;
    ValueTypes::forEach([&]<class Row>() {
        if constexpr (Row::hasKey)
            rows.push_back({static_cast<std::uint64_t>(Row::token),
                            "Attr<" + std::string{Row::word} + ">"});
    });
    rows.insert(rows.end(), std::begin(streamWords), std::end(streamWords));
    return rows;
}

// More than any class has; what a class answers is not trusted.
constexpr std::uint64_t maxReserved = 256;

// Rows without a name are not to be found by one.
template <class Definition>
KeyTable keyTableOf(const std::vector<Definition>& rows) {
    KeyTable table;
    for (const Definition& row : rows)
        if (!row.name.empty()) table.addEntry(row.token, row.name);
    return table;
}
}  // namespace

const std::vector<KeyTableEntry> AttrContainer::readWriteKeyTable = makeStreamRows();
const KeyTable AttrContainer::keyTable{AttrContainer::readWriteKeyTable};

AttrType AttrContainer::getTypeFromString(const std::string& key) {
    const std::uint64_t token = keyTable.keyToToken(key);
    return token == noToken ? unknownAttrType : static_cast<AttrType>(token);
}

const std::vector<AttrDefinition>& AttrContainer::ownDefinitions() {
    static const std::vector<AttrDefinition> rows{
        {0, "Name", attrTypeOf<std::string>, AttrDefinition::nameRow}};
    return rows;
}

bool AttrContainer::createAttributes(const std::vector<AttrDefinition>& rows, CreateType type,
                                     const Source& source) {
    if (!attrList) {
        attrList = std::make_unique<AttrList>(*this);
        const std::uint64_t numInChain = getMaxAttrToken() + 1;  // unless a class says otherwise
        attrList->reserve(std::min(numInChain, maxReserved));
    }
    return attrList->createAttributes(rows, type,
                                      source ? source->get().attrList.get() : nullptr);
}

void AttrContainer::declareAttributes(const AttrTable& table, const Source& source) {
    attrList->declare(table, source ? source->get().attrList.get() : nullptr);
}

FieldList& AttrContainer::fields() {
    if (!fieldList) {
        fieldList = std::make_unique<FieldList>(0);
        fieldList->setMinCapacity(getMaxFieldToken() + 1);
    }
    return *fieldList;
}

bool AttrContainer::createFields(const std::vector<FieldDefinition>& rows, CreateType type,
                                 const Source& source) {
    return fields().createFields(*this, rows, type, source);
}

KeyTable AttrContainer::createKeyTableFromAttrDefinitions(
    const std::vector<AttrDefinition>& rows) {
    return keyTableOf(rows);
}

KeyTable AttrContainer::createKeyTableFromFieldDefinitions(
    const std::vector<FieldDefinition>& rows) {
    return keyTableOf(rows);
}

AttrDefMap AttrContainer::createAttrDefMapFromAttrDefinitions(
    const std::vector<AttrDefinition>& rows) {
    AttrDefMap map;
    for (const AttrDefinition& row : rows)
        if (!row.name.empty()) map.emplace(row.token, &row);
    return map;
}

std::uint64_t AttrContainer::getMaxAttrToken() const {
    return lastAttrToken();
}

std::uint64_t AttrContainer::getMaxFieldToken() const {
    return lastFieldToken();
}

// Tokens and names ------------------------------------------------------------------------------

std::uint64_t AttrContainer::getAttrToken(const std::string& key) const {
    if (key == ownDefinitions().front().name) return 0;
    return custAttrList ? custAttrList->getToken(key) : noToken;
}

std::optional<std::string> AttrContainer::getAttrName(std::uint64_t token) const {
    if (token == 0) return ownDefinitions().front().name;
    return custAttrList ? custAttrList->getElementName(token) : std::nullopt;
}

const AttrDefinition* AttrContainer::getAttrDefinition(std::uint64_t token) const {
    return token == 0 ? &ownDefinitions().front() : nullptr;
}

std::uint64_t AttrContainer::getAttrToken(const Attribute& attribute) const {
    if (dynamic_cast<const CustomAttribute*>(&attribute))
        return custAttrList ? custAttrList->getToken(attribute) : noToken;
    return attrList ? attrList->getToken(attribute) : noToken;
}

const AttrDefinition* AttrContainer::getAttrDefinition(const Attribute& attribute) const {
    return getAttrDefinition(getAttrToken(attribute));
}

int AttrContainer::getAttrCategory(const Attribute& attribute) const {
    return getAttrCategory(getAttrToken(attribute));
}

int AttrContainer::getAttrCategory(std::uint64_t token) const {
    const AttrDefinition* const row = getAttrDefinition(token);
    return row ? row->category : AttrDefinition::custom;
}

std::uint64_t AttrContainer::getFieldToken(const std::string& name) const {
    return fieldList && !name.empty() ? fieldList->getToken(name) : noToken;
}

std::uint64_t AttrContainer::getFieldToken(const AttrContainer& field) const {
    return fieldList ? static_cast<const GenAttrList<AttrContainer>&>(*fieldList).getToken(field)
                     : noToken;
}

std::optional<std::string> AttrContainer::getFieldName(std::uint64_t token) const {
    return fieldList ? fieldList->getElementName(token) : std::nullopt;
}

std::optional<std::string> AttrContainer::getFieldRegistryPrefix(
    const AttrContainer& field) const {
    auto prefix = getFieldName(getFieldToken(field));
    if (prefix && prefix->empty()) return field.getName();
    return prefix;
}

}  // namespace QOR::AttributeContainer
