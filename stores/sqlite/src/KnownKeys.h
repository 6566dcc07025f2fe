// What is known of keys without asking the database.
#pragma once

#include "Database.h"

#include <QOR/KeyTreeStore.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

namespace QOR::keystore {

/// Remembers which subkeys lie where, for as long as nobody else has changed the file.
class KnownKeys {
public:
    using Node = KeyTreeStore::Node;

    /// Must be asked ahead of a look-up outside of a transaction: forgets all if another program,
    /// or another opening of the file, has changed it.
    void checkChanges(const Database& database, const Statement& dataVersion);
    /// A change of our own was committed; it is no reason to forget.
    void passOwnChange(const Database& database);

    /// 0 if nothing is known.
    Node inq(Node key, const std::string& folded) const;
    void add(Node key, std::string folded, Node subkey);
    void clear() {
        if (!subkeys.empty()) subkeys.clear();  // which costs as many steps as there ever were keys
    }

private:
    /// The counters by which SQLite's connections tell each other of commits, as they lie in the
    /// index of the write-ahead log, which all of them have in memory.
    using Mark = std::array<std::uint32_t, 12>;
    static constexpr std::size_t changeCounter = 2;  // one more with every commit
    static bool readMark(const Database& database, Mark& mark);

    struct Place {
        Node key;
        std::string folded;
        bool operator==(const Place&) const = default;
    };
    struct PlaceHash {
        std::size_t operator()(const Place& place) const {
            return std::hash<std::string>{}(place.folded) ^ (place.key * 0x9e3779b97f4a7c15u);
        }
    };

    std::unordered_map<Place, Node, PlaceHash> subkeys;
    Mark mark{};
    bool hasMark = false;
    std::int64_t version = -1;
};

}  // namespace QOR::keystore
