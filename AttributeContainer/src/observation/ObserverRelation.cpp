#include <AttributeContainer/ObserverRelation.h>

#include <AttributeContainer/ThreadWord.h>

#include "observation/ObserverRelationTable.h"

namespace QOR::AttributeContainer {

namespace {
thread_local std::weak_ptr<ObserverRelationTableObserver> currentTable;
// The same, for those who only want to know whether there is one.
QOR_THREAD_WORD ObserverRelationTableObserver* tableInUse = nullptr;
}  // namespace

ObserverRelationTableObserver::ObserverRelationTableObserver() : Observer(std::nullopt) {}

ObserverRelationTableObserver::~ObserverRelationTableObserver() {
    if (tableInUse == this) tableInUse = nullptr;
}

std::string ObserverRelationTableObserver::getName() const {
    return "ObserverRelationTableObserver";
}

std::optional<std::reference_wrapper<Observer>> ObserverRelationTableObserver::lookup(
    const Observer* old) const {
    const auto found = relations.find(old);
    if (found == relations.end() || !found->second) return std::nullopt;
    return *found->second;
}

void ObserverRelationTableObserver::insert(const Observer* old, Observer* copy) {
    relations.try_emplace(old, copy);
    if (copy) originals.emplace(copy, old);
}

void ObserverRelationTableObserver::forget(const Observer& observer) {
    const auto [first, last] = originals.equal_range(&observer);
    for (auto pair = first; pair != last; ++pair) {
        const auto asCopy = relations.find(pair->second);
        if (asCopy != relations.end() && asCopy->second == &observer) relations.erase(asCopy);
    }
    originals.erase(first, last);
    relations.erase(&observer);
}

void ObserverRelationTableObserver::clear() {
    relations.clear();
    originals.clear();
}

void forgetInCurrentTable(const Observer& observer) {
    if (tableInUse && tableInUse != static_cast<const ObservingObject*>(&observer))
        tableInUse->forget(observer);
}

PreserveObserverRelation::PreserveObserverRelation() : table(currentTable.lock()) {
    if (!table) {
        table = std::make_shared<ObserverRelationTableObserver>();
        currentTable = table;
        tableInUse = table.get();
    }
    ++table->scopeCount;
}

PreserveObserverRelation::~PreserveObserverRelation() {
    if (--table->scopeCount == 0) table->clear();
}

}  // namespace QOR::AttributeContainer
