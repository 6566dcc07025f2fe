#include <AttributeContainer/CustAttrList.h>

#include <AttributeContainer/kVAttrContainer.h>

#include "support/FreeAttribute.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr std::uint64_t none = AttrContainer::noToken;

// "A", "B" and "C" from token 9 on.
struct CustAttrListTest : testing::Test {
    CustAttrListTest() {
        list.addElement(a, "A");
        list.addElement(b, "B");
        list.addElement(c, "C");
    }

    std::shared_ptr<Attribute> a = attributeOf(1);
    std::shared_ptr<Attribute> b = attributeOf(2);
    std::shared_ptr<Attribute> c = attributeOf(3);
    std::shared_ptr<Attribute> d = attributeOf(4);
    CustAttrList list{9};
};

}  // namespace

TEST_F(CustAttrListTest, KnowsEachElementByTokenAndName) {
    EXPECT_EQ(list.getToken("A"), 9u);
    EXPECT_EQ(list.getToken("C"), 11u);
    EXPECT_EQ(list.getToken(*b), 10u);
    EXPECT_EQ(list.getToken("D"), none);
    EXPECT_EQ(list.getElementName(10), "B");
    EXPECT_EQ(list.getElementName(12), std::nullopt);
    EXPECT_EQ(list.getElementName(8), std::nullopt);
}

TEST_F(CustAttrListTest, DoesNotAddAnElementUnderANameThatIsTaken) {
    EXPECT_TRUE(list.addElement(d, "B").expired());
    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(list.getToken("B"), 10u);
}

TEST_F(CustAttrListTest, GivesAnElementWithAnEmptyNameATokenAndNoName) {
    EXPECT_EQ(list.addElement(d, "").lock(), d);
    EXPECT_EQ(list.getToken(*d), 12u);
    EXPECT_EQ(list.get(12), d);
    EXPECT_EQ(list.getElementName(12), std::nullopt);
    EXPECT_EQ(list.getToken(""), none);
    auto e = std::static_pointer_cast<Attribute>(attributeOf(5));
    EXPECT_EQ(list.addElement(e, "").lock(), e);
    EXPECT_EQ(list.getToken(*e), 13u);
}

TEST_F(CustAttrListTest, MovesTheLastElementIntoTheGapOfARemovedOne) {
    EXPECT_TRUE(list.rmElement(9, true));

    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.get(9), c);
    EXPECT_EQ(list.getToken("C"), 9u);
    EXPECT_EQ(list.getElementName(9), "C");
    EXPECT_EQ(list.getToken("A"), none);
    EXPECT_EQ(list.getElementName(11), std::nullopt);
    EXPECT_EQ(list.getToken("B"), 10u);
}

TEST_F(CustAttrListTest, CompressesWhateverItIsTold) {
    EXPECT_TRUE(list.rmElement(9, false));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.get(9), c);
}

TEST_F(CustAttrListTest, MovesAnElementWithoutANameAsWell) {
    list.addElement(d, "");

    EXPECT_TRUE(list.rmElement(10, true));

    EXPECT_EQ(list.get(10), d);
    EXPECT_EQ(list.getElementName(10), std::nullopt);
    EXPECT_EQ(list.getToken("B"), none);
}

TEST_F(CustAttrListTest, RemovesTheLastElement) {
    EXPECT_TRUE(list.rmElement(11, true));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.getToken("C"), none);
    EXPECT_EQ(list.get(9), a);
}

TEST_F(CustAttrListTest, RemovesNothingOutOfRange) {
    EXPECT_FALSE(list.rmElement(8, true));
    EXPECT_FALSE(list.rmElement(12, true));
    EXPECT_FALSE(list.rmElement(none, true));
    EXPECT_EQ(list.size(), 3u);
}

TEST_F(CustAttrListTest, RemovesByIdentity) {
    std::shared_ptr<const Attribute> wanted = a;
    EXPECT_TRUE(list.rmElement(wanted, true));
    EXPECT_EQ(list.getToken("C"), 9u);
    EXPECT_FALSE(list.rmElement(wanted, true));
}

TEST_F(CustAttrListTest, CanAddANameAgainThatWasRemoved) {
    list.rmElement(10, true);
    EXPECT_EQ(list.addElement(d, "B").lock(), d);
    EXPECT_EQ(list.getToken("B"), 11u);
}

// Setting an element ------------------------------------------------------------------------------

TEST_F(CustAttrListTest, SetsAMiddleElementInPlaceOfTheOneThatMovedThere) {
    EXPECT_TRUE(list.setElement(9, d, "D"));

    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.get(9), d);
    EXPECT_EQ(list.getToken("D"), 9u);
    EXPECT_EQ(list.getElementName(9), "D");
    EXPECT_EQ(list.getToken("A"), none);
    EXPECT_EQ(list.getToken("C"), none);  // it had moved into the slot
    EXPECT_EQ(list.getToken(*c), none);
    EXPECT_EQ(list.get(10), b);
}

TEST_F(CustAttrListTest, SetsTheLastElementByAppending) {
    EXPECT_TRUE(list.setElement(11, d, "D"));

    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(list.get(11), d);
    EXPECT_EQ(list.getToken("D"), 11u);
    EXPECT_EQ(list.getToken("C"), none);
}

TEST_F(CustAttrListTest, SetsAnElementUnderTheNameThatStoodThere) {
    EXPECT_TRUE(list.setElement(11, d, "C"));
    EXPECT_EQ(list.getToken("C"), 11u);
    EXPECT_EQ(list.get(11), d);

    std::shared_ptr<Attribute> e = attributeOf(5);
    EXPECT_TRUE(list.setElement(9, e, "C"));  // the name of the one that moved there
    EXPECT_EQ(list.getToken("C"), 9u);
    EXPECT_EQ(list.get(9), e);
}

TEST_F(CustAttrListTest, SetsAnElementWithoutAName) {
    EXPECT_TRUE(list.setElement(9, d, ""));
    EXPECT_EQ(list.get(9), d);
    EXPECT_EQ(list.getElementName(9), std::nullopt);
}

TEST_F(CustAttrListTest, DoesNotSetAnElementUnderANameThatIsTaken) {
    EXPECT_FALSE(list.setElement(9, d, "B"));

    EXPECT_EQ(list.getToken(*d), none);
    EXPECT_EQ(list.getToken("B"), 10u);
    EXPECT_EQ(list.getToken("A"), none);  // the removal ahead of it stands
    EXPECT_EQ(list.getToken("C"), 9u);
    EXPECT_EQ(list.get(9), c);
}

TEST_F(CustAttrListTest, DoesNotSetTheLastElementUnderANameThatIsTaken) {
    EXPECT_FALSE(list.setElement(11, d, "A"));

    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.getToken("C"), none);
    EXPECT_EQ(list.getToken("A"), 9u);
}

TEST_F(CustAttrListTest, SetsNothingOutOfRange) {
    EXPECT_FALSE(list.setElement(8, d, "D"));
    EXPECT_FALSE(list.setElement(12, d, "D"));
    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(list.getToken("D"), none);
}

TEST(CustAttrListOfOne, SetsItsOnlyElement) {
    CustAttrList list(1);
    std::shared_ptr<Attribute> a = attributeOf(1);
    std::shared_ptr<Attribute> b = attributeOf(2);
    list.addElement(a, "A");

    EXPECT_TRUE(list.setElement(1, b, "B"));

    EXPECT_EQ(list.size(), 1u);
    EXPECT_EQ(list.get(1), b);
    EXPECT_EQ(list.getToken("B"), 1u);
    EXPECT_EQ(list.getToken("A"), none);
}

TEST_F(CustAttrListTest, FindsAnElementThatAnotherListHoldsAsWell) {
    CustAttrList other(0);
    other.addElement(c, "C");
    other.addElement(a, "A");
    EXPECT_EQ(other.getToken(*c), 0u);
    EXPECT_EQ(other.getToken(*a), 1u);
    for (const auto& [element, token] : {std::pair(a, 9u), std::pair(b, 10u), std::pair(c, 11u)})
        EXPECT_EQ(list.getToken(*element), token);
    EXPECT_EQ(other.getToken(*b), none);
}

TEST_F(CustAttrListTest, GivesTheFirstTokenOfAnElementThatIsThereTwice) {
    list.addElement(a, "Again");
    EXPECT_EQ(list.getToken(*a), 9u);
    list.rmElement(9, true);  // the last one, the same element, takes its place
    EXPECT_EQ(list.getToken(*a), 9u);
}

TEST_F(CustAttrListTest, FindsTheSecondPlaceOfAnElementWhenTheFirstIsGone) {
    list.addElement(a, "Again");
    list.addElement(d, "D");
    list.rmElement(9, true);  // "D" takes its place
    EXPECT_EQ(list.getToken(*d), 9u);
    EXPECT_EQ(list.getToken(*a), 12u);
}

TEST_F(CustAttrListTest, FindsElementsAfterEveryMove) {
    list.rmElement(9, true);
    EXPECT_EQ(list.getToken(*a), none);
    EXPECT_EQ(list.getToken(*c), 9u);
    list.setElement(9, d, "D");  // "B" moves here first and is replaced
    EXPECT_EQ(list.getToken(*d), 9u);
    EXPECT_EQ(list.getToken(*c), none);
}
