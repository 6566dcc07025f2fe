#include <QOR/KeyTable.h>

#include <unordered_map>
#include <utility>

namespace QOR::DataStructures {

struct KeyTable::Maps {
    std::unordered_map<std::string, std::uint64_t> tokens;
    std::unordered_map<std::uint64_t, const std::string*> keys;  // the strings of `tokens`
};

KeyTable::KeyTable() noexcept = default;

KeyTable::KeyTable(const std::vector<KeyTableEntry>& entries) {
    for (const auto& entry : entries) addEntry(entry.token, entry.key);
}

KeyTable::KeyTable(const KeyTable& other) {
    if (other.empty()) return;
    for (const auto& [key, token] : other.maps->tokens) addEntry(token, key);
}

KeyTable::KeyTable(KeyTable&& other) noexcept = default;

KeyTable& KeyTable::operator=(const KeyTable& other) { return *this = KeyTable(other); }

KeyTable& KeyTable::operator=(KeyTable&& other) noexcept = default;

KeyTable::~KeyTable() = default;

std::uint64_t KeyTable::keyToToken(const std::string& key) const {
    if (!maps) return noToken;
    const auto found = maps->tokens.find(key);
    return found != maps->tokens.end() ? found->second : noToken;
}

std::optional<std::string> KeyTable::tokenToKey(std::uint64_t token) const {
    const auto* key = lookupKey(token);
    return key ? std::optional(*key) : std::nullopt;
}

const std::string* KeyTable::lookupKey(std::uint64_t token) const {
    if (!maps) return nullptr;
    const auto found = maps->keys.find(token);
    return found != maps->keys.end() ? found->second : nullptr;
}

bool KeyTable::addEntry(std::uint64_t token, const std::string& key) {
    if (token == noToken) return false;
    if (!maps) maps = std::make_unique<Maps>();
    if (maps->keys.contains(token) || maps->tokens.contains(key)) return false;
    const auto added = maps->tokens.emplace(key, token).first;
    maps->keys.emplace(token, &added->first);
    return true;
}

bool KeyTable::rmEntry(std::uint64_t token, const std::string& key) {
    if (!maps) return false;
    const auto entry = maps->tokens.find(key);
    if (entry == maps->tokens.end() || entry->second != token) return false;
    maps->keys.erase(token);
    maps->tokens.erase(entry);
    return true;
}

std::size_t KeyTable::size() const { return maps ? maps->tokens.size() : 0; }

}  // namespace QOR::DataStructures
