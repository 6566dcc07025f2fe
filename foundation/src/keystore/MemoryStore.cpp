#include "keystore/MemoryStore.h"

#include <algorithm>
#include <iterator>

namespace QOR::keystore {

template <class T> const std::wstring* IndexedMap<T>::nameAt(std::size_t index) {
    if (index >= map.size()) return nullptr;
    const auto distanceFrom = [index](std::size_t from) {
        return static_cast<std::ptrdiff_t>(index) - static_cast<std::ptrdiff_t>(from);
    };
    const auto backFromEnd = distanceFrom(map.size());
    if (!isKnown || std::abs(distanceFrom(knownIndex)) > distanceFrom(0)) {
        known = map.cbegin();
        knownIndex = 0;
    }
    if (std::abs(backFromEnd) < std::abs(distanceFrom(knownIndex))) {
        known = map.cend();
        knownIndex = map.size();
    }
    std::advance(known, distanceFrom(knownIndex));
    knownIndex = index;
    isKnown = true;
    return &known->first;
}

MemoryStore::MemoryStore() { keys.try_emplace(rootNode); }

MemoryStore::Key* MemoryStore::find(Node key) {
    const auto found = keys.find(key);
    return found != keys.end() ? &found->second : nullptr;
}

Status MemoryStore::checkKey(Node key) { return find(key) ? Success : KeyDeleted; }

Status MemoryStore::inqSubkey(Node key, std::wstring_view name, Node& subkey) {
    const Key* const parent = find(key);
    if (!parent) return KeyDeleted;
    const auto& subkeys = parent->subkeys.entries();
    const auto found = subkeys.find(name);
    if (found == subkeys.end()) return FileNotFound;
    subkey = found->second;
    return Success;
}

Status MemoryStore::makeSubkey(Node key, std::wstring_view name, Node& subkey) {
    if (!find(key)) return KeyDeleted;
    subkey = ++lastNode;
    Key& made = keys[subkey];
    made.parent = key;
    made.name = name;
    find(key)->subkeys.change().emplace(name, subkey);
    return Success;
}

Status MemoryStore::rmKey(Node key) {
    const Key* const removed = find(key);
    if (!removed) return KeyDeleted;
    if (!removed->subkeys.entries().empty()) return AccessDenied;
    auto& siblings = find(removed->parent)->subkeys.change();
    siblings.erase(siblings.find(removed->name));
    keys.erase(key);
    return Success;
}

Status MemoryStore::getSubkey(Node key, std::size_t index, std::wstring& name) {
    Key* const parent = find(key);
    if (!parent) return KeyDeleted;
    const std::wstring* const found = parent->subkeys.nameAt(index);
    if (!found) return NoMoreItems;
    name = *found;
    return Success;
}

Status MemoryStore::setValue(Node key, std::wstring_view name, unsigned long type,
                             const unsigned char* data, std::size_t size) {
    Key* const owner = find(key);
    if (!owner) return KeyDeleted;
    auto& values = owner->values.change();
    auto found = values.lower_bound(name);
    if (found == values.end() || isLessFolded(name, found->first))
        found = values.emplace_hint(found, name, StoredValue{});
    found->second.type = type;
    found->second.data.assign(data, data + size);
    return Success;
}

Status MemoryStore::inqValue(Node key, std::wstring_view name, StoredValue& value) {
    const Key* const owner = find(key);
    if (!owner) return KeyDeleted;
    const auto& values = owner->values.entries();
    const auto found = values.find(name);
    if (found == values.end()) return FileNotFound;
    value = found->second;
    return Success;
}

Status MemoryStore::rmValue(Node key, std::wstring_view name) {
    Key* const owner = find(key);
    if (!owner) return KeyDeleted;
    auto& values = owner->values.change();
    const auto found = values.find(name);
    if (found == values.end()) return FileNotFound;
    values.erase(found);
    return Success;
}

Status MemoryStore::getValueName(Node key, std::size_t index, std::wstring& name) {
    Key* const owner = find(key);
    if (!owner) return KeyDeleted;
    const std::wstring* const found = owner->values.nameAt(index);
    if (!found) return NoMoreItems;
    name = *found;
    return Success;
}

Status MemoryStore::getContents(Node key, KeyContents& contents) {
    const Key* const owner = find(key);
    if (!owner) return KeyDeleted;
    const auto& subkeys = owner->subkeys.entries();
    const auto& values = owner->values.entries();
    contents.numSubkeys = subkeys.size();
    contents.numValues = values.size();
    for (const auto& [name, subkey] : subkeys)
        contents.longestSubkey = std::max(contents.longestSubkey, lengthOf(name));
    for (const auto& [name, value] : values) {
        contents.longestValueName = std::max(contents.longestValueName, lengthOf(name));
        contents.largestValue = std::max(contents.largestValue, value.data.size());
    }
    return Success;
}

std::shared_ptr<Store> makeMemoryStore() { return std::make_shared<MemoryStore>(); }

}  // namespace QOR::keystore
