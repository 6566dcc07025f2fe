// The keys of a table, found by their text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace QOR::DataStructures {

/// A hash table with its slots in one row, each with a part of its hash ahead of the text, so that
/// a search for a key that is not there seldom looks at a text at all.
class KeySlots {
public:
    struct Slot {
        const std::string* key = nullptr;  // null in a slot that is free
        std::uint64_t token = 0;
        std::uint64_t hash = 0;
    };

    /// \return the slot of the key, null if there is none; it lasts until the next change.
    const Slot* find(std::string_view key) const {
        if (slots.empty()) return nullptr;
        const std::uint64_t hash = hashOf(key);
        for (std::size_t i = home(hash); slots[i].key; i = next(i))
            if (slots[i].hash == hash && isSame(*slots[i].key, key)) return &slots[i];
        return nullptr;
    }

    /// Adds a key that is not there. The string must stay where it is.
    void add(const std::string& key, std::uint64_t token) {
        if ((numKeys + 1) * 2 > slots.size()) grow();
        put({&key, token, hashOf(key)});
        ++numKeys;
    }

    /// Removes a key that is there.
    void remove(std::string_view key) {
        auto free = static_cast<std::size_t>(find(key) - slots.data());
        // What was put behind it because its place was taken moves forward.
        for (std::size_t i = next(free); slots[i].key; i = next(i)) {
            const std::size_t fromHome = (i - home(slots[i].hash)) & (slots.size() - 1);
            const std::size_t fromFree = (i - free) & (slots.size() - 1);
            if (fromHome < fromFree) continue;
            slots[free] = slots[i];
            free = i;
        }
        slots[free] = {};
        --numKeys;
    }

private:
    static std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
        hash = (hash ^ word) * 0x9e3779b97f4a7c15u;
        return hash ^ (hash >> 29);
    }
    template <class Word> static std::uint64_t load(const char* from) {
        Word word;
        std::memcpy(&word, from, sizeof word);
        return word;
    }
    // Words that overlap take in each character without a loop over the last ones.
    static std::uint64_t hashOf(std::string_view key) {
        using Long = std::uint64_t;
        using Short = std::uint32_t;
        const std::size_t size = key.size();
        const char* const text = key.data();
        std::uint64_t hash = size;
        if (size > sizeof(Long)) {
            for (std::size_t i = 0; i + sizeof(Long) < size; i += sizeof(Long))
                hash = mixed(hash, load<Long>(text + i));
            return mixed(hash, load<Long>(text + size - sizeof(Long)));
        }
        if (size >= sizeof(Short))
            return mixed(hash, load<Short>(text) << 32 | load<Short>(text + size - sizeof(Short)));
        std::uint64_t rest = 0;
        for (const char character : key) rest = rest << 8 | static_cast<unsigned char>(character);
        return mixed(hash, rest);
    }
    static bool isSame(std::string_view left, std::string_view right) {
        using Long = std::uint64_t;
        if (left.size() != right.size()) return false;
        const std::size_t size = left.size();
        if (size < sizeof(Long)) {
            for (std::size_t i = 0; i < size; ++i)
                if (left[i] != right[i]) return false;
            return true;
        }
        for (std::size_t i = 0; i + sizeof(Long) < size; i += sizeof(Long))
            if (load<Long>(left.data() + i) != load<Long>(right.data() + i)) return false;
        const std::size_t last = size - sizeof(Long);
        return load<Long>(left.data() + last) == load<Long>(right.data() + last);
    }
    std::size_t home(std::uint64_t hash) const { return hash >> 32 & (slots.size() - 1); }
    std::size_t next(std::size_t i) const { return (i + 1) & (slots.size() - 1); }

    void put(const Slot& slot) {
        std::size_t i = home(slot.hash);
        while (slots[i].key) i = next(i);
        slots[i] = slot;
    }
    void grow() {
        constexpr std::size_t fewest = 4;
        const auto old =
            std::exchange(slots, std::vector<Slot>(slots.empty() ? fewest : slots.size() * 2));
        for (const Slot& slot : old)
            if (slot.key) put(slot);
    }

    std::vector<Slot> slots;  // as many as a power of 2, at most half of them taken
    std::size_t numKeys = 0;
};

}  // namespace QOR::DataStructures
