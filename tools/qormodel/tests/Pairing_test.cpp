// Which objects of two trees are taken for the same.
#include "compare/Pairing.h"

#include "support/Trees.h"

#include <AttributeContainer/Transform.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace qormodel {
namespace {

using namespace testing;

using Pairs = std::map<std::string, std::string>;

Pairs pairsOf(const Document& first, const Document& second, NameRule rule = NameRule::Pairs) {
    const FlatTree a = flatten(first.root);
    const FlatTree b = flatten(second.root);
    const Pairing pairing = pairUp(a, b, rule);
    Pairs pairs;
    for (std::size_t i = 1; i < a.nodes.size(); ++i)
        if (pairing.toSecond[i] != FlatTree::none)
            pairs[a.nodes[i].element.path] = b.nodes[pairing.toSecond[i]].element.path;
    return pairs;
}

TEST(Pairing, GoesByTheIdentifierAheadOfTheName) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*first.root, "a", 1);
    addObject(*first.root, "b", 2);
    addObject(*second.root, "b", 1);
    addObject(*second.root, "a", 2);

    EXPECT_EQ(pairsOf(first, second), (Pairs{{"/a", "/b"}, {"/b", "/a"}}));
}

TEST(Pairing, FindsAnIdentifierBelowAnotherParent) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*first.root, "a", 1);
    addObject(*addObject(*second.root, "Archive", 9), "old", 1);

    EXPECT_EQ(pairsOf(first, second), (Pairs{{"/a", "/Archive/old"}}));
}

TEST(Pairing, GoesByTheNameWithoutCaseWhereThereIsNoIdentifier) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*first.root, "Scan");
    addObject(*second.root, "SCAN");

    EXPECT_EQ(pairsOf(first, second), (Pairs{{"/Scan", "/SCAN"}}));
}

TEST(Pairing, TellsByItsRuleWhatOneNameWithTwoIdentifiersIs) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*first.root, "a", 1);
    addObject(*second.root, "a", 2);

    EXPECT_EQ(pairsOf(first, second), (Pairs{{"/a", "/a"}}));
    EXPECT_EQ(pairsOf(first, second, NameRule::PairsUnmarked), Pairs{});
}

TEST(Pairing, PassesAnIdentifierThatComesTwice) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*first.root, "a", 1);
    addObject(*second.root, "x", 1);
    addObject(*second.root, "y", 1);

    EXPECT_EQ(pairsOf(first, second), Pairs{});
}

TEST(Pairing, TakesObjectsOfTwoClassesForTwo) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*first.root, "a");
    const auto other = ac::Transform::create();
    other->name("a");
    second.root->addChild(other, 0);

    EXPECT_EQ(pairsOf(first, second), Pairs{});
}

TEST(Pairing, GoesByTheSlotOfAField) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addField(*first.root, "Box");
    addField(*second.root, "Other");
    addField(*second.root, "Box");

    EXPECT_EQ(pairsOf(first, second), (Pairs{{"/Box", "/Box"}}));
}

}  // namespace
}  // namespace qormodel
