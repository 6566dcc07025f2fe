#include "merge/RelationMerge.h"

#include "model/ModelPath.h"

#include <AttributeContainer/ActionContainer.h>
#include <AttributeContainer/ObserverPath.h>

#include <charconv>
#include <cstdint>
#include <set>
#include <string>

namespace qormodel {

namespace {
std::string keyOf(const Relation& relation) {
    return relation.observable + '\n' + (relation.isAsked ? "asks" : "tells") + '\n' +
           relation.observer + '\n' + relation.action + '\n' + relation.priority;
}

std::set<std::string> keysOf(const std::vector<Relation>& relations) {
    std::set<std::string> keys;
    for (const auto& relation : relations) keys.insert(keyOf(relation));
    return keys;
}

// A container's own relations come and go with it; no operation of it adds or removes one.
bool isOfContainer(const Relation& relation) { return relation.observable == relation.holder; }

std::string describe(const Relation& relation) {
    return "relation to " + relation.observer + " (" + relation.action + ')';
}

short priorityOf(const Relation& relation) {
    short priority = 0;
    std::from_chars(relation.priority.data(), relation.priority.data() + relation.priority.size(),
                    priority);
    return priority;
}

std::uint64_t actionOf(const Relation& relation) {
    return ac::ActionContainer::the()->getToken(relation.action);
}

bool add(const Relation& relation, const Document& document) {
    const auto found = inqAttribute(document, relation.observable);
    if (!found || !relation.isActionKnown) return false;
    ac::Attribute& attribute = *found->attribute;
    const auto result = relation.isAsked
                            ? attribute.addPreObserver(relation.observer, priorityOf(relation),
                                                       actionOf(relation), false)
                            : attribute.addObserver(relation.observer, priorityOf(relation),
                                                    actionOf(relation), false);
    return result != ac::Observable::AddFailed;
}

// True also where there is nothing left to remove.
bool remove(const Relation& relation, const Document& document) {
    const auto found = inqAttribute(document, relation.observable);
    if (!found) return true;
    ac::ObserverPath path(std::ref<ac::ObservingObject>(*found->attribute), relation.observer,
                          priorityOf(relation), actionOf(relation));
    return found->attribute->removePath(path);
}
}  // namespace

RelationChanges listRelationChanges(const Document& base, const Document& ours,
                                    const Document& theirs) {
    const auto before = listRelations(base);
    const auto there = listRelations(theirs);
    const auto keysBefore = keysOf(before);
    const auto keysHere = keysOf(listRelations(ours));
    const auto keysThere = keysOf(there);
    RelationChanges changes;
    for (const auto& relation : there) {
        const std::string key = keyOf(relation);
        if (keysBefore.contains(key) || keysHere.contains(key)) continue;
        if (isOfContainer(relation) && !inqElement(base, relation.holder)) continue;
        changes.added.push_back(relation);
    }
    for (const auto& relation : before) {
        const std::string key = keyOf(relation);
        if (!keysThere.contains(key) && keysHere.contains(key)) changes.removed.push_back(relation);
    }
    return changes;
}

void mergeRelations(const RelationChanges& changes, const Document& ours,
                    std::vector<Conflict>& conflicts) {
    for (const auto& relation : changes.added)
        if (isOfContainer(relation) || !add(relation, ours))
            conflicts.push_back({relation.observable, "added there, cannot be added here", "", "",
                                 describe(relation)});
    for (const auto& relation : changes.removed) {
        if (!inqElement(ours, relation.holder)) continue;  // it went with the element
        if (isOfContainer(relation) || !remove(relation, ours))
            conflicts.push_back({relation.observable, "removed there, cannot be removed here",
                                 describe(relation), describe(relation)});
    }
}

}  // namespace qormodel
