// The scope that swaps copied relations when a copying action ends.
#include <AttributeContainer/ExchangePtr.h>
#include <AttributeContainer/ObserverRelation.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <limits>
#include <utility>

namespace QOR::AttributeContainer {

BlockUpdateObservers::BlockUpdateObservers(std::shared_ptr<AttrContainer> toBeUpdated)
    : toBeUpdated(std::move(toBeUpdated)) {
    ++getTable()->blockCount;
}

BlockUpdateObservers::~BlockUpdateObservers() {
    if (--getTable()->blockCount == 0 && toBeUpdated) toBeUpdated->updateObservers(*getTable());
}

void BlockUpdateObservers::setToBeUpdated(std::shared_ptr<AttrContainer> container) {
    toBeUpdated = std::move(container);
}

ExchangePtr::ExchangePtr(ObserverRelationTableObserver& table)
    : AttributeVisitor(0, std::numeric_limits<unsigned>::max()), table(table) {}

ExchangePtr::~ExchangePtr() = default;

std::uint64_t ExchangePtr::exchangePtr(Attribute& attribute,
                                       ObserverRelationTableObserver& relations) const {
    return attribute.exchangePtr(relations);
}

bool ExchangePtr::isCopy(const AttrContainer& container) const { return table.isCopy(container); }

VisitorCore::VisitResult ExchangePtr::visit(Attribute& attribute) {
    numExchanged += exchangePtr(attribute, table);
    return Continue;
}

VisitorCore::VisitResult UpdateObserver::visit(Attribute& attribute) {
    // Most have no relations, and then nothing is to be swapped, resolved or sorted.
    if (attribute.getNumPreObservers() + attribute.getNumPostObservers() == 0) return Continue;
    ExchangePtr::visit(attribute);
    attribute.updateObserverLists(true);
    return Continue;
}

VisitorCore::VisitResult UpdateObserver::visit(AttrContainer& container) {
    // Below the container that is updated only what was copied with it: shared fields are left.
    return getHierLevel() == 0 || isCopy(container) ? Continue : Prune;
}

void AttrContainer::updateObservers(ObserverRelationTableObserver& table) {
    UpdateObserver visitor(table);
    visitor.setPassesUntouched(true);  // nobody watches them
    attributeVisitor(visitor, true);
}

}  // namespace QOR::AttributeContainer
