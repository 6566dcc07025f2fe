#include <QOR/KeyStore.h>

#include "keystore/OpenKeys.h"
#include "keystore/SystemKeys.h"
#include "keystore/WholeChange.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace QOR::keystore {

namespace {

using Node = KeyTreeStore::Node;

bool isEmpty(const wchar_t* path) { return !path || !*path; }

// Adds the subkeys of `keys[at]` behind the others.
Status appendSubkeys(KeyTreeStore& store, std::vector<Node>& keys, std::size_t at) {
    std::wstring name;
    for (std::size_t i = 0;; ++i) {
        const Status status = store.getSubkey(keys[at], i, name);
        if (status == NoMoreItems) return Success;
        if (status != Success) return status;
        Node subkey;
        if (const Status found = store.inqSubkey(keys[at], name, subkey); found != Success)
            return found;
        keys.push_back(subkey);
    }
}

Status rmValues(KeyTreeStore& store, Node key) {
    std::wstring name;
    for (;;) {
        const Status status = store.getValueName(key, 0, name);
        if (status == NoMoreItems) return Success;
        if (status != Success) return status;
        if (const Status removed = store.rmValue(key, name); removed != Success) return removed;
    }
}

// Removes all below a key: trees are as deep as their maker likes, so nothing recurses.
Status rmSubtree(KeyTreeStore& store, Node top) {
    std::vector<Node> keys{top};
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (const Status status = appendSubkeys(store, keys, i); status != Success) return status;
    for (std::size_t i = keys.size() - 1; i > 0; --i)
        if (const Status status = store.rmKey(keys[i]); status != Success) return status;
    return Success;
}

struct CopiedValue {
    std::wstring name;
    StoredValue value;
};

// One key of a tree on its way from one store to another. A key stands ahead of those below it.
struct CopiedKey {
    std::size_t depth;  // 0 for the top, whose name does not count
    std::wstring name;
    std::vector<CopiedValue> values;
};

class OpenedKey {
public:
    explicit OpenedKey(HKEY key) : key(key) {}
    OpenedKey(OpenedKey&& other) noexcept : key(std::exchange(other.key, nullptr)) {}
    OpenedKey& operator=(OpenedKey&&) = delete;
    ~OpenedKey() {
        if (key) RegCloseKey(key);
    }
    HKEY get() const { return key; }

private:
    HKEY key;
};

template <class T> unsigned long countOf(const std::vector<T>& buffer) {
    return static_cast<unsigned long>(buffer.size());
}

Status readValue(HKEY key, const wchar_t* name, StoredValue& value) {
    for (;;) {
        unsigned long size = 0;
        Status status = RegQueryValueExW(key, name, nullptr, nullptr, nullptr, &size);
        if (status != Success) return status;
        value.data.resize(size + 1);  // of no bytes the data pointer might be null
        status = RegQueryValueExW(key, name, nullptr, &value.type, value.data.data(), &size);
        value.data.resize(size);
        if (status != MoreData) return status;  // else somebody has made it longer meanwhile
    }
}

Status readValues(HKEY key, std::vector<CopiedValue>& values) {
    std::vector<wchar_t> name(maxValueName + 1);
    for (unsigned long index = 0;; ++index) {
        unsigned long size = countOf(name);
        Status status =
            RegEnumValueW(key, index, name.data(), &size, nullptr, nullptr, nullptr, nullptr);
        if (status == NoMoreItems) return Success;
        if (status != Success) return status;
        values.push_back({std::wstring(name.data(), size), {}});
        status = readValue(key, name.data(), values.back().value);
        if (status != Success) return status;
    }
}

// The names of the subkeys, the last one first.
Status readSubkeys(HKEY key, std::vector<std::wstring>& names) {
    std::vector<wchar_t> name(maxKeyName + 2);
    for (unsigned long index = 0;; ++index) {
        unsigned long size = countOf(name);
        const Status status =
            RegEnumKeyExW(key, index, name.data(), &size, nullptr, nullptr, nullptr, nullptr);
        if (status == NoMoreItems) break;
        if (status != Success) return status;
        names.emplace_back(name.data(), size);
    }
    std::ranges::reverse(names);
    return Success;
}

// A key on the way down to the one that is read.
struct Level {
    OpenedKey key;
    std::vector<std::wstring> subkeys;  // those still to read
};

Status readKey(HKEY key, std::wstring name, std::vector<CopiedKey>& tree, Level& level,
               std::size_t depth) {
    tree.push_back({depth, std::move(name), {}});
    const Status status = readValues(key, tree.back().values);
    return status == Success ? readSubkeys(key, level.subkeys) : status;
}

// Reads a whole tree ahead of any writing: the target may lie within it.
Status readTree(HKEY top, std::vector<CopiedKey>& tree) {
    std::vector<Level> levels;
    levels.push_back({OpenedKey(nullptr), {}});
    Status status = readKey(top, {}, tree, levels.back(), 0);
    while (status == Success && !levels.empty()) {
        auto& subkeys = levels.back().subkeys;
        if (subkeys.empty()) {
            levels.pop_back();
            continue;
        }
        std::wstring name = std::move(subkeys.back());
        subkeys.pop_back();
        const HKEY above = levels.size() == 1 ? top : levels.back().key.get();
        HKEY key = nullptr;
        status = RegOpenKeyExW(above, name.c_str(), 0, KeyRead, &key);
        if (status != Success) return status;
        levels.push_back({OpenedKey(key), {}});
        status = readKey(key, std::move(name), tree, levels.back(), levels.size() - 1);
    }
    return status;
}

Status writeTree(HKEY top, const std::vector<CopiedKey>& tree) {
    std::vector<OpenedKey> levels;  // from the first below the top down to the one that is written
    const auto lowest = [&] { return levels.empty() ? top : levels.back().get(); };
    for (const CopiedKey& copy : tree) {
        while (levels.size() > 0 && levels.size() >= copy.depth) levels.pop_back();
        if (copy.depth > 0) {
            HKEY key = nullptr;
            const Status status = RegCreateKeyExW(lowest(), copy.name.c_str(), 0, nullptr, 0,
                                                  KeyWrite, nullptr, &key, nullptr);
            if (status != Success) return status;
            levels.emplace_back(key);
        }
        for (const CopiedValue& value : copy.values) {
            const auto& data = value.value.data;
            const Status status = RegSetValueExW(lowest(), value.name.c_str(), 0, value.value.type,
                                                 data.data(), countOf(data));
            if (status != Success) return status;
        }
    }
    return Success;
}

Status readBelow(HKEY source, const wchar_t* subkey, std::vector<CopiedKey>& tree) {
    if (isEmpty(subkey)) return readTree(source, tree);
    HKEY below = nullptr;
    const Status status = RegOpenKeyExW(source, subkey, 0, KeyRead, &below);
    if (status != Success) return status;
    const OpenedKey opened(below);
    return readTree(below, tree);
}

bool lieInOneStore(HKEY one, HKEY other) {
    OpenKey first, second;
    return OpenKeys::the().inq(one, first) == Success &&
           OpenKeys::the().inq(other, second) == Success && first.store == second.store;
}

// Does work on the store of a key while nobody else changes it. The system's own has no such way.
template <class Work> Status asOneChange(HKEY key, Work work) {
    if (!OpenKeys::isOurs(key)) return work();
    const KeyUse use(key, 0);
    if (use.status() != Success) return use.status();
    WholeChange change(use.store());
    return change.status() == Success ? change.finish(work()) : change.status();
}

}  // namespace

Status RegDeleteTreeW(HKEY root, const wchar_t* subkey) {
    if (!OpenKeys::isOurs(root)) return systemKeys::deleteTree(root, subkey);
    // Below the handle the rights of the store count, on the handle's own key those of the handle.
    const KeyUse use(root, isEmpty(subkey) ? SetValue | EnumerateSubkeys : 0);
    if (use.status() != Success) return use.status();
    WholeChange change(use.store());
    if (change.status() != Success) return change.status();
    Node top;
    Status status = inqPath(use.store(), use.node(), subkey, top);
    if (status == Success) status = rmSubtree(use.store(), top);
    if (status == Success)
        status = isEmpty(subkey) ? rmValues(use.store(), top) : use.store().rmKey(top);
    return change.finish(status);
}

// Within the system too: its own way stores a zero behind texts that have none.
Status RegCopyTreeW(HKEY source, const wchar_t* subkey, HKEY target) {
    std::vector<CopiedKey> tree;
    const auto read = [&] { return readBelow(source, subkey, tree); };
    const auto write = [&] { return writeTree(target, tree); };
    if (lieInOneStore(source, target))
        return asOneChange(target, [&] {
            const Status status = read();
            return status == Success ? write() : status;
        });
    // One after the other: two stores at a time would wait for each other.
    const Status status = asOneChange(source, read);
    return status == Success ? asOneChange(target, write) : status;
}

}  // namespace QOR::keystore
