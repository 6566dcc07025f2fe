#include <QOR/KeyTable.h>

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <utility>

namespace {

using QOR::DataStructures::KeyTable;
using QOR::DataStructures::KeyTableEntry;

constexpr auto allOnes = 0xffff'ffff'ffff'ffffULL;

const std::vector<KeyTableEntry> entries{{1, "Name"}, {3, "Value"}, {4, "Write"}, {5, ""}};

TEST(KeyTable, IsEmptyAtFirst) {
    const KeyTable table;

    EXPECT_TRUE(table.empty());
    EXPECT_EQ(table.size(), 0u);
    EXPECT_EQ(table.keyToToken("Name"), allOnes);
    EXPECT_EQ(table.tokenToKey(1), std::nullopt);
    EXPECT_EQ(table.lookupKey(1), nullptr);
}

TEST(KeyTable, AnEmptyTableIsAsSmallAsAPointer) { EXPECT_EQ(sizeof(KeyTable), sizeof(void*)); }

TEST(KeyTable, FindsTheEntriesItIsMadeOfInBothDirections) {
    const KeyTable table(entries);

    EXPECT_EQ(table.size(), 4u);
    for (const auto& [token, key] : entries) {
        EXPECT_EQ(table.keyToToken(key), token);
        EXPECT_EQ(table.tokenToKey(token), key);
        ASSERT_NE(table.lookupKey(token), nullptr);
        EXPECT_EQ(*table.lookupKey(token), key);
    }
}

TEST(KeyTable, AnswersAnUnknownKeyWithTheAllOnesToken) {
    EXPECT_EQ(KeyTable::noToken, allOnes);
    EXPECT_EQ(KeyTable(entries).keyToToken("Unknown"), allOnes);
}

TEST(KeyTable, AnswersAnUnknownTokenWithAnEmptyOptional) {
    EXPECT_FALSE(KeyTable(entries).tokenToKey(2).has_value());
    EXPECT_FALSE(KeyTable(entries).tokenToKey(allOnes).has_value());
}

TEST(KeyTable, ComparesKeysExactly) {
    const KeyTable table(entries);

    EXPECT_EQ(table.keyToToken("name"), allOnes);
    EXPECT_EQ(table.keyToToken("Name "), allOnes);
    EXPECT_EQ(table.keyToToken(std::string("Name\0", 5)), allOnes);
}

TEST(KeyTable, TakesTheEmptyKeyLikeAnyOther) {
    EXPECT_EQ(KeyTable(entries).keyToToken(""), 5u);
    EXPECT_EQ(KeyTable().keyToToken(""), allOnes);
}

TEST(KeyTable, AddsAPair) {
    KeyTable table;

    EXPECT_TRUE(table.addEntry(7, "Seven"));
    EXPECT_EQ(table.keyToToken("Seven"), 7u);
    EXPECT_EQ(table.tokenToKey(7), "Seven");
}

TEST(KeyTable, RefusesATokenThatIsTakenAndKeepsTheFirst) {
    KeyTable table(entries);

    EXPECT_FALSE(table.addEntry(1, "Other"));
    EXPECT_EQ(table.tokenToKey(1), "Name");
    EXPECT_EQ(table.keyToToken("Other"), allOnes);
    EXPECT_EQ(table.size(), 4u);
}

TEST(KeyTable, RefusesAKeyThatIsTakenAndKeepsTheFirst) {
    KeyTable table(entries);

    EXPECT_FALSE(table.addEntry(9, "Name"));
    EXPECT_EQ(table.keyToToken("Name"), 1u);
    EXPECT_FALSE(table.tokenToKey(9).has_value());
}

TEST(KeyTable, RefusesAPairThatIsThereAlready) {
    KeyTable table(entries);

    EXPECT_FALSE(table.addEntry(1, "Name"));
    EXPECT_EQ(table.size(), 4u);
}

TEST(KeyTable, RefusesTheTokenThatStandsForNone) {
    KeyTable table;

    EXPECT_FALSE(table.addEntry(allOnes, "Name"));
    EXPECT_TRUE(table.empty());
}

TEST(KeyTable, ConstructorKeepsTheFirstOfEntriesThatShareATokenOrAKey) {
    const KeyTable table({{1, "a"}, {1, "b"}, {2, "a"}, {3, "c"}});

    EXPECT_EQ(table.size(), 2u);
    EXPECT_EQ(table.keyToToken("a"), 1u);
    EXPECT_EQ(table.keyToToken("b"), allOnes);
    EXPECT_EQ(table.keyToToken("c"), 3u);
    EXPECT_FALSE(table.tokenToKey(2).has_value());
}

TEST(KeyTable, TakesTokensFromTheWholeRange) {
    KeyTable table;

    EXPECT_TRUE(table.addEntry(0, "zero"));
    EXPECT_TRUE(table.addEntry(allOnes - 1, "last"));
    EXPECT_TRUE(table.addEntry(1ULL << 40, "middle"));

    EXPECT_EQ(table.keyToToken("zero"), 0u);
    EXPECT_EQ(table.tokenToKey(allOnes - 1), "last");
    EXPECT_EQ(table.tokenToKey(1ULL << 40), "middle");
}

TEST(KeyTable, RemovesAPairThatStandsTogether) {
    KeyTable table(entries);

    EXPECT_TRUE(table.rmEntry(3, "Value"));
    EXPECT_EQ(table.keyToToken("Value"), allOnes);
    EXPECT_FALSE(table.tokenToKey(3).has_value());
    EXPECT_EQ(table.size(), 3u);
}

TEST(KeyTable, RemovesNothingIfTokenAndKeyDoNotBelongTogether) {
    KeyTable table(entries);

    EXPECT_FALSE(table.rmEntry(3, "Name"));
    EXPECT_FALSE(table.rmEntry(3, "Unknown"));
    EXPECT_FALSE(table.rmEntry(99, "Value"));
    EXPECT_FALSE(KeyTable().rmEntry(3, "Value"));

    EXPECT_EQ(table.size(), 4u);
    EXPECT_EQ(table.keyToToken("Value"), 3u);
    EXPECT_EQ(table.keyToToken("Name"), 1u);
}

TEST(KeyTable, GivesARemovedTokenAndKeyFree) {
    KeyTable table(entries);
    table.rmEntry(3, "Value");

    EXPECT_TRUE(table.addEntry(3, "Other"));
    EXPECT_TRUE(table.addEntry(8, "Value"));
    EXPECT_EQ(table.tokenToKey(3), "Other");
    EXPECT_EQ(table.keyToToken("Value"), 8u);
}

TEST(KeyTable, RemovesAnEntryByItsOwnKey) {
    KeyTable table(entries);

    EXPECT_TRUE(table.rmEntry(4, *table.lookupKey(4)));
    EXPECT_EQ(table.keyToToken("Write"), allOnes);
}

TEST(KeyTable, KeepsTheKeysOfOtherEntriesInPlace) {
    KeyTable table(entries);
    const auto* key = table.lookupKey(1);

    for (std::uint64_t i = 100; i < 1100; ++i) table.addEntry(i, std::to_string(i));
    table.rmEntry(3, "Value");

    EXPECT_EQ(table.lookupKey(1), key);
    EXPECT_EQ(*key, "Name");
}

TEST(KeyTable, AnswersAsTwoMapsDoWhateverComesAndGoes) {
    KeyTable table;
    std::map<std::uint64_t, std::string> keys;
    std::map<std::string, std::uint64_t> tokens;
    std::minstd_rand random(1);
    for (int i = 0; i < 20'000; ++i) {
        const std::uint64_t token = random() % 60;
        const std::string key(random() % 20, static_cast<char>('a' + random() % 3));
        if (random() % 2 == 0) {
            const bool isFree = !keys.contains(token) && !tokens.contains(key);
            ASSERT_EQ(table.addEntry(token, key), isFree);
            if (isFree) keys[token] = key;
            if (isFree) tokens[key] = token;
        } else if (const auto held = keys.find(token); held != keys.end()) {
            const std::string old = held->second;
            ASSERT_TRUE(table.rmEntry(token, old));
            tokens.erase(old);
            keys.erase(held);
        }
        const auto byKey = tokens.find(key);
        const auto byToken = keys.find(token);
        ASSERT_EQ(table.keyToToken(key), byKey != tokens.end() ? byKey->second : allOnes);
        ASSERT_EQ(table.tokenToKey(token),
                  byToken != keys.end() ? std::optional(byToken->second) : std::nullopt);
        ASSERT_EQ(table.size(), keys.size());
    }
    const KeyTable copy = table;
    for (const auto& [token, key] : keys) EXPECT_EQ(copy.tokenToKey(token), key);
    for (const auto& [key, token] : tokens) EXPECT_EQ(copy.keyToToken(key), token);
}

TEST(KeyTable, FindsEachKeyOfAWindowOfTokensThatOnlyGoUp) {
    KeyTable table;
    for (std::uint64_t token = 0; token < 1000; ++token) {
        ASSERT_TRUE(table.addEntry(token, std::to_string(token)));
        if (token >= 3) {
            ASSERT_TRUE(table.rmEntry(token - 3, std::to_string(token - 3)));
            EXPECT_EQ(table.tokenToKey(token - 3), std::nullopt);
            EXPECT_EQ(table.tokenToKey(token - 2), std::to_string(token - 2));
        }
        EXPECT_EQ(table.keyToToken(std::to_string(token)), token);
        EXPECT_EQ(table.tokenToKey(token), std::to_string(token));
    }
    EXPECT_EQ(table.size(), 3u);
}

TEST(KeyTable, ACopyIsIndependent) {
    KeyTable table(entries);
    const KeyTable copy(table);
    KeyTable assigned({{1, "gone"}});
    assigned = table;

    table.rmEntry(1, "Name");
    table.addEntry(1, "Changed");

    EXPECT_EQ(copy.tokenToKey(1), "Name");
    EXPECT_EQ(copy.size(), 4u);
    EXPECT_EQ(assigned.tokenToKey(1), "Name");
    EXPECT_EQ(assigned.keyToToken("gone"), allOnes);
    EXPECT_EQ(KeyTable(KeyTable()).size(), 0u);
}

TEST(KeyTable, ACopyOutlivesItsOriginal) {
    std::optional<KeyTable> table(entries);
    const KeyTable copy(*table);

    table.reset();

    EXPECT_EQ(*copy.lookupKey(4), "Write");
}

TEST(KeyTable, MovesItsEntriesAndStaysUsable) {
    KeyTable table(entries);

    KeyTable moved(std::move(table));
    table = KeyTable({{2, "Two"}});
    std::swap(table, moved);

    EXPECT_EQ(table.tokenToKey(1), "Name");
    EXPECT_EQ(moved.tokenToKey(2), "Two");
    EXPECT_EQ(moved.size(), 1u);
}

TEST(KeyTable, CanBeReadByManyThreadsAtOnce) {
    KeyTable table;
    for (std::uint64_t i = 0; i < 1000; ++i) table.addEntry(i, std::to_string(i));
    const auto& shared = std::as_const(table);

    std::vector<int> misses(4);
    std::vector<std::thread> threads;
    for (auto& missed : misses)
        threads.emplace_back([&shared, &missed] {
            for (std::uint64_t i = 0; i < 1000; ++i)
                missed += shared.keyToToken(*shared.lookupKey(i)) != i;
        });
    for (auto& thread : threads) thread.join();

    EXPECT_EQ(misses, std::vector<int>(4));
}

}  // namespace
