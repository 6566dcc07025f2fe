#include "objects/ChildIndex.h"

#include <AttributeContainer/Object.h>

#include <algorithm>

namespace QOR::AttributeContainer {

namespace {
// Two names are equal without case exactly if their folded forms are equal.
std::string folded(std::string name) {
    std::ranges::transform(name, name.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                    : character;
    });
    return name;
}

// The name under which a child can be indexed; none where it does not come from the name attribute.
std::optional<std::string> indexedName(const Object& child) {
    std::string name = child.getName();
    if (name != child.name()) return std::nullopt;
    return folded(std::move(name));
}
}  // namespace

std::unique_ptr<ChildIndex> ChildIndex::make(const ChildList& list) {
    auto index = std::make_unique<ChildIndex>();
    for (auto place = list.begin(); place != list.end(); ++place)
        if (!index->add(place)) return nullptr;
    return index;
}

bool ChildIndex::add(Place place) {
    auto name = indexedName(**place);
    if (!name) return false;
    const auto entry = byName.emplace(std::pair{std::move(*name), numAdded++}, place).first;
    byChild.emplace(place->get(), entry);
    return true;
}

void ChildIndex::remove(const Object& child) {
    const auto found = byChild.find(&child);
    if (found == byChild.end()) return;
    byName.erase(found->second);
    byChild.erase(found);
}

bool ChildIndex::rename(const Object& child) {
    const auto found = byChild.find(&child);
    if (found == byChild.end()) return true;
    auto name = indexedName(child);
    if (!name) return false;
    auto entry = byName.extract(found->second);
    entry.key().first = std::move(*name);
    found->second = byName.insert(std::move(entry)).position;
    return true;
}

std::optional<ChildIndex::Place> ChildIndex::find(const std::string& name) const {
    const std::string wanted = folded(name);
    const auto found = byName.lower_bound({wanted, 0});
    if (found == byName.end() || found->first.first != wanted) return std::nullopt;
    return found->second;
}

std::optional<ChildIndex::Place> ChildIndex::find(const Object& child) const {
    const auto found = byChild.find(&child);
    if (found == byChild.end()) return std::nullopt;
    return found->second->second;
}

}  // namespace QOR::AttributeContainer
