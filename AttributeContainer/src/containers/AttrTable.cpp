#include <AttributeContainer/AttrTable.h>

#include <AttributeContainer/AttrList.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <algorithm>
#include <stdexcept>

namespace QOR::AttributeContainer {

AttrTable::AttrTable(const std::vector<AttrDefinition>& rows, const AttrTable* base)
    : rows(rows),
      base(base),
      firstToken(rows.empty() ? AttrContainer::noToken : rows.front().token) {
    const auto made = std::ranges::find_if(rows, &AttrDefinition::isMade);
    madeToken = made != rows.end() ? made->token : AttrContainer::noToken;
}

AttrTable::~AttrTable() { delete samples.load(); }

const AttrList& AttrTable::getSamples() const {
    if (const AttrList* const made = samples.load(std::memory_order_acquire)) return *made;
    const std::lock_guard lock(samplesMutex);
    if (const AttrList* const made = samples.load(std::memory_order_relaxed)) return *made;
    const auto nobody = AttrContainer::create();  // gone at the end, so that it is no place
    auto list = std::make_unique<AttrList>(*nobody);
    list->extend(firstToken + rows.size());
    list->makeRows(rows, nullptr);
    samples.store(list.get(), std::memory_order_release);
    return *list.release();
}

bool AttrTable::takeFirstDefaults(const std::function<void()>& take) const {
    const std::lock_guard lock(defaultsMutex);
    if (areDefaultsTaken.load(std::memory_order_relaxed)) return false;
    withDefault.clear();  // of a first object that an exception ended
    take();
    areDefaultsTaken.store(true, std::memory_order_release);
    return true;
}

Attribute& AttrTable::takeDefault(std::uint64_t token) const {
    Attribute* const sample = getSample(token).get();
    if (!sample) throw std::out_of_range("invalid vector subscript");
    withDefault.push_back(token);
    return *sample;
}

void AttrTable::makeAttributes(AttrList& list) const {
    try {
        list.makeRows(rows, nullptr);
        // Who asks while the first object is made finds zeros, as it does in that object.
        if (!areDefaultsTaken.load(std::memory_order_acquire)) return;
        for (const std::uint64_t token : withDefault) *list.get(token) = *getSample(token);
    } catch (...) {
        // As if nobody had asked: who asks again is not to find half of them.
        for (const AttrDefinition& row : rows) list.elements[row.token] = nullptr;
        throw;
    }
}

const std::shared_ptr<Attribute>& AttrTable::getSample(std::uint64_t token) const {
    return getSamples().get(token);
}

}  // namespace QOR::AttributeContainer
