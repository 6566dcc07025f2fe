#include <QOR/KeyTable.h>

#include "KeySlots.h"

#include <unordered_map>
#include <utility>

namespace QOR::DataStructures {

struct KeyTable::Maps {
    std::unordered_map<std::uint64_t, const std::string> keys;  // strings that stay where they are
    KeySlots slots;
    // The keys of tokens that follow each other, from `firstToken` on: all of them in most tables.
    // Null where one was removed.
    std::vector<const std::string*> row;
    std::uint64_t firstToken = 0;
    std::size_t numInRow = 0;

    const std::string* lookup(std::uint64_t token) const {
        if (isInRow(token) && row[token - firstToken]) return row[token - firstToken];
        if (numInRow == keys.size()) return nullptr;
        const auto found = keys.find(token);
        return found != keys.end() ? &found->second : nullptr;
    }

    void add(std::uint64_t token, const std::string& key) {
        const std::string& kept = keys.emplace(token, key).first->second;
        slots.add(kept, token);
        if (numInRow == 0) {
            row.clear();
            firstToken = token;
        }
        // Not where most of the row is gone: tokens that only ever go up would make it grow.
        if (token - firstToken == row.size() && row.size() < 2 * keys.size())
            row.push_back(nullptr);
        if (!isInRow(token)) return;
        row[token - firstToken] = &kept;
        ++numInRow;
    }

    void remove(std::uint64_t token, const std::string& key) {
        slots.remove(key);
        if (isInRow(token) && std::exchange(row[token - firstToken], nullptr)) --numInRow;
        keys.erase(token);
    }

private:
    bool isInRow(std::uint64_t token) const { return token - firstToken < row.size(); }
};

KeyTable::KeyTable() noexcept = default;

KeyTable::KeyTable(const std::vector<KeyTableEntry>& entries) {
    for (const auto& entry : entries) addEntry(entry.token, entry.key);
}

KeyTable::KeyTable(const KeyTable& other) {
    if (other.empty()) return;
    for (const auto* const key : other.maps->row)  // in their order, so that they make a row again
        if (key) addEntry(other.keyToToken(*key), *key);
    for (const auto& [token, key] : other.maps->keys) addEntry(token, key);
}

KeyTable::KeyTable(KeyTable&& other) noexcept = default;

KeyTable& KeyTable::operator=(const KeyTable& other) { return *this = KeyTable(other); }

KeyTable& KeyTable::operator=(KeyTable&& other) noexcept = default;

KeyTable::~KeyTable() = default;

std::uint64_t KeyTable::keyToToken(const std::string& key) const {
    const auto* const slot = maps ? maps->slots.find(key) : nullptr;
    return slot ? slot->token : noToken;
}

std::optional<std::string> KeyTable::tokenToKey(std::uint64_t token) const {
    const auto* key = lookupKey(token);
    return key ? std::optional(*key) : std::nullopt;
}

const std::string* KeyTable::lookupKey(std::uint64_t token) const {
    return maps ? maps->lookup(token) : nullptr;
}

bool KeyTable::addEntry(std::uint64_t token, const std::string& key) {
    if (token == noToken) return false;
    if (!maps) maps = std::make_unique<Maps>();
    if (maps->keys.contains(token) || maps->slots.find(key)) return false;
    maps->add(token, key);
    return true;
}

bool KeyTable::rmEntry(std::uint64_t token, const std::string& key) {
    const auto* const slot = maps ? maps->slots.find(key) : nullptr;
    if (!slot || slot->token != token) return false;
    maps->remove(token, key);
    return true;
}

std::size_t KeyTable::size() const { return maps ? maps->keys.size() : 0; }

}  // namespace QOR::DataStructures
