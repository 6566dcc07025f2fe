#include <AttributeContainer/AttrTable.h>

#include <AttributeContainer/AttrList.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <algorithm>

namespace QOR::AttributeContainer {

AttrTable::AttrTable(const std::vector<AttrDefinition>& rows, SetDefaults setDefaults,
                     const AttrTable* base)
    : rows(rows),
      setDefaults(setDefaults),
      base(base),
      firstToken(rows.empty() ? AttrContainer::noToken : rows.front().token) {
    const auto made = std::ranges::find_if(rows, &AttrDefinition::isMade);
    madeToken = made != rows.end() ? made->token : AttrContainer::noToken;
}

void AttrTable::makeAttributes(AttrList& list) const {
    list.makeRows(rows, nullptr);
    setDefaults(list);
}

const std::shared_ptr<Attribute>& AttrTable::getSample(std::uint64_t token) const {
    const AttrList* const made = samples.load(std::memory_order_acquire);
    return (made ? *made : makeSamples()).get(token);
}

const AttrList& AttrTable::makeSamples() const {
    std::call_once(samplesMade, [this] {
        const auto nobody = AttrContainer::create();  // gone at the end, so that it is no place
        auto list = std::make_unique<AttrList>(*nobody);
        list->extend(firstToken + rows.size());
        makeAttributes(*list);
        samples.store(list.release(), std::memory_order_release);
    });
    return *samples.load(std::memory_order_acquire);
}

}  // namespace QOR::AttributeContainer
