#include <AttributeContainer/FindField.h>

#include <AttributeContainer/kVAttrContainer.h>

#include <utility>

namespace QOR::AttributeContainer {

FindField::FindField(const std::function<bool(const AttrContainer&)>& predicate,
                     unsigned firstLevel, unsigned maxLevel)
    : GeneralVisitor<AttrContainer&>(firstLevel, maxLevel), predicate(predicate) {}

FindField::~FindField() = default;

void FindField::setStopAt(std::shared_ptr<AttrContainer> container) {
    stopAt = std::move(container);
}

VisitorCore::VisitResult FindField::visit(AttrContainer& container) {
    if (match) return Stop;
    if (predicate(container)) {
        match = std::static_pointer_cast<AttrContainer>(container.shared_from_this());
        return Prune;
    }
    return stopAt && stopAt.get() == &container ? Stop : Continue;
}

CollectFields::CollectFields(const std::function<bool(const AttrContainer&)>& predicate,
                             unsigned firstLevel, unsigned maxLevel)
    : FindField(predicate, firstLevel, maxLevel) {}

CollectFields::~CollectFields() = default;

std::shared_ptr<AttrContainer> CollectFields::get(std::uint64_t index) const {
    return index < fields.size() ? fields[index] : nullptr;
}

VisitorCore::VisitResult CollectFields::visit(AttrContainer& container) {
    clearMatch();
    const VisitResult result = FindField::visit(container);
    if (getMatch()) fields.push_back(getMatch());
    return result == Stop ? Stop : Continue;
}

}  // namespace QOR::AttributeContainer
