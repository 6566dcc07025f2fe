// A two-way table between tokens and the words that stand for them.
#pragma once

#include <QOR/Export.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace QOR::DataStructures {

/// One pair of a table.
struct KeyTableEntry {
    std::uint64_t token = 0;
    std::string key;

    bool operator==(const KeyTableEntry&) const = default;
};

/// Pairs of a token and a key, in which no token and no key occurs twice.
///
/// Look-ups cost a constant time on average and allocate nothing. An empty table has the size of a
/// pointer. A table that does not change can be read from any number of threads at once.
class QOR_API KeyTable {
public:
    /// The answer for a key that is not in the table; no entry has this token.
    static constexpr std::uint64_t noToken = ~std::uint64_t{0};

    KeyTable() noexcept;

    /// A table with these entries; of two that share a token or a key the first one stays.
    KeyTable(const std::vector<KeyTableEntry>& entries);

    KeyTable(const KeyTable& other);
    KeyTable(KeyTable&& other) noexcept;
    KeyTable& operator=(const KeyTable& other);
    KeyTable& operator=(KeyTable&& other) noexcept;
    ~KeyTable();

    /// The token of the key, `noToken` if the key is not in the table. Keys compare exactly; the
    /// empty key is a key like any other.
    std::uint64_t keyToToken(const std::string& key) const;

    /// A copy of the key of the token; empty if the token is not in the table.
    std::optional<std::string> tokenToKey(std::uint64_t token) const;

    /// The key of the token without a copy; null if the token is not in the table. The pointer
    /// lasts until this entry is removed or the table goes or is assigned to.
    const std::string* lookupKey(std::uint64_t token) const;

    /// Adds the pair.
    /// \return false if the token or the key is taken, or the token is `noToken`; nothing changes
    /// then.
    bool addEntry(std::uint64_t token, const std::string& key);

    /// Removes the pair.
    /// \return false if the two do not stand together in the table; nothing changes then.
    bool rmEntry(std::uint64_t token, const std::string& key);

    std::size_t size() const;
    bool empty() const { return size() == 0; }

private:
    struct Maps;
    std::unique_ptr<Maps> maps;  // none until the first entry: most tables of a document stay empty
};

}  // namespace QOR::DataStructures
