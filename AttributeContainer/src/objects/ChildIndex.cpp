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

// Whether a child goes by the name that it stores.
bool isNamedAsStored(const Object& child) {
    return child.getName() == child.name();
}
}  // namespace

std::unique_ptr<ChildIndex> ChildIndex::make(const ChildList& list) {
    auto index = std::make_unique<ChildIndex>();
    for (auto place = list.begin(); place != list.end(); ++place)
        if (!index->add(place)) return nullptr;
    return index;
}

bool ChildIndex::add(Place place) {
    const Object& child = **place;
    if (!isNamedAsStored(child)) return false;
    const auto entry =
        byName.emplace(std::pair{folded(child.name()), numAdded++}, Entry{place, child.name()});
    byChild.emplace(&child, entry.first);
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
    if (!isNamedAsStored(child)) return false;
    auto entry = byName.extract(found->second);
    entry.key().first = folded(child.name());
    entry.mapped().name = child.name();
    found->second = byName.insert(std::move(entry)).position;
    return true;
}

std::optional<std::string> ChildIndex::getName(const Object& child) const {
    const auto found = byChild.find(&child);
    if (found == byChild.end()) return std::nullopt;
    return found->second->second.name;
}

std::optional<ChildIndex::Place> ChildIndex::find(const std::string& name) const {
    const std::string wanted = folded(name);
    const auto found = byName.lower_bound({wanted, 0});
    if (found == byName.end() || found->first.first != wanted) return std::nullopt;
    return found->second.place;
}

std::optional<ChildIndex::Place> ChildIndex::find(const Object& child) const {
    const auto found = byChild.find(&child);
    if (found == byChild.end()) return std::nullopt;
    return found->second->second.place;
}

}  // namespace QOR::AttributeContainer
