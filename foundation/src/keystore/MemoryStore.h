// A key store in memory.
#pragma once

#include <QOR/KeyTreeStore.h>

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace QOR::keystore {

/// Orders names without case.
struct FoldedLess {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const {
        return isLessFolded(left, right);
    }
};

/// A sorted map that also gives its entries by index. Indices next to the one asked for last are
/// found from there, so that walking up or down costs the same for each.
template <class T> class IndexedMap {
public:
    using Map = std::map<std::wstring, T, FoldedLess>;

    const Map& entries() const { return map; }
    Map& change() {
        isKnown = false;
        return map;
    }
    /// A null pointer past the end.
    const std::wstring* nameAt(std::size_t index);

private:
    Map map;
    typename Map::const_iterator known;
    std::size_t knownIndex = 0;
    bool isKnown = false;
};

class MemoryStore : public KeyTreeStore {
public:
    MemoryStore();

    Status checkKey(Node key) override;
    Status inqSubkey(Node key, std::wstring_view name, Node& subkey) override;
    Status makeSubkey(Node key, std::wstring_view name, Node& subkey) override;
    Status rmKey(Node key) override;
    Status getSubkey(Node key, std::size_t index, std::wstring& name) override;
    Status setValue(Node key, std::wstring_view name, unsigned long type, const unsigned char* data,
                    std::size_t size) override;
    Status inqValue(Node key, std::wstring_view name, StoredValue& value) override;
    Status rmValue(Node key, std::wstring_view name) override;
    Status getValueName(Node key, std::size_t index, std::wstring& name) override;
    Status getContents(Node key, KeyContents& contents) override;

private:
    struct Key {
        Node parent = 0;
        std::wstring name;
        IndexedMap<Node> subkeys;
        IndexedMap<StoredValue> values;
    };

    Key* find(Node key);

    std::unordered_map<Node, Key> keys;
    Node lastNode = rootNode;
};

}  // namespace QOR::keystore
