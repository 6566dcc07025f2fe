#include "comparison/TokenSet.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;

TEST(TokenSet, IsEmptyAtFirst) {
    const TokenSet set;
    EXPECT_EQ(set.size(), 0u);
    for (const std::uint64_t token : {0u, 63u, 64u, 1000u}) EXPECT_FALSE(set.contains(token));
}

TEST(TokenSet, HoldsWhatWasInsertedOnBothSidesOfTheInlinePart) {
    TokenSet set;
    for (const std::uint64_t token : {0u, 63u, 64u, 200u}) set.insert(token);
    for (const std::uint64_t token : {0u, 63u, 64u, 200u}) EXPECT_TRUE(set.contains(token));
    for (const std::uint64_t token : {1u, 62u, 65u, 199u, 201u}) EXPECT_FALSE(set.contains(token));
    EXPECT_EQ(set.size(), 4u);
}

TEST(TokenSet, CountsATokenOnce) {
    TokenSet set;
    for (const std::uint64_t token : {5u, 5u, 99u, 99u}) set.insert(token);
    EXPECT_EQ(set.size(), 2u);
}
