#include <AttributeContainer/FieldList.h>

#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr std::uint64_t none = AttrContainer::noToken;

// Two declared slots, of which the second is filled, and "x", "y" and "z" behind them.
struct FieldListTest : testing::Test {
    FieldListTest() {
        list.setMinCapacity(2);
        list.setElement(1, declared);
        list.addElement(x, "x");
        list.addElement(y, "y");
        list.addElement(z, "z");
    }

    std::shared_ptr<AttrContainer> declared = AttrContainer::create();
    std::shared_ptr<AttrContainer> x = AttrContainer::create();
    std::shared_ptr<AttrContainer> y = AttrContainer::create();
    std::shared_ptr<AttrContainer> z = AttrContainer::create();
    FieldList list{0};
};

}  // namespace

TEST(FieldListCapacity, IsZeroAtFirst) {
    FieldList list(0);
    EXPECT_EQ(list.getMinCapacity(), 0u);
    EXPECT_EQ(list.size(), 0u);
}

TEST(FieldListCapacity, IsNotSetToZero) {
    FieldList list(0);
    list.setMinCapacity(3);
    EXPECT_FALSE(list.setMinCapacity(0));
    EXPECT_EQ(list.getMinCapacity(), 3u);
    EXPECT_EQ(list.size(), 3u);
}

TEST(FieldListCapacity, GrowsTheListWithEmptySlots) {
    FieldList list(0);
    EXPECT_TRUE(list.setMinCapacity(2));
    EXPECT_EQ(list.getMinCapacity(), 2u);
    EXPECT_EQ(list.size(), 2u);
    EXPECT_TRUE(list.getAttrContainer(0).expired());
    EXPECT_TRUE(list.getAttrContainer(1).expired());
}

TEST(FieldListCapacity, NeverShrinksTheList) {
    FieldList list(0);
    list.setMinCapacity(3);
    EXPECT_TRUE(list.setMinCapacity(1));
    EXPECT_EQ(list.getMinCapacity(), 1u);
    EXPECT_EQ(list.size(), 3u);
}

TEST_F(FieldListTest, KnowsEachFieldByTokenAndName) {
    EXPECT_EQ(list.size(), 5u);
    EXPECT_EQ(list.getToken(*declared), 1u);
    EXPECT_EQ(list.getToken(*x), 2u);
    EXPECT_EQ(list.getToken("x"), 2u);
    EXPECT_EQ(list.getToken("z"), 4u);
    EXPECT_EQ(list.getToken("w"), none);
    EXPECT_EQ(list.getElementName(3), "y");
    EXPECT_EQ(list.getElementName(1), std::nullopt);
    EXPECT_EQ(list.getAttrContainer(3).lock(), y);
    EXPECT_EQ(std::as_const(list).getAttrContainer(3).lock(), y);
    EXPECT_TRUE(list.getAttrContainer(0).expired());
    EXPECT_TRUE(list.getAttrContainer(5).expired());
    EXPECT_TRUE(list.getAttrContainer(none).expired());
}

TEST_F(FieldListTest, NotesAnEmptyNameToo) {
    EXPECT_TRUE(list.addElement(AttrContainer::create(), ""));
    EXPECT_EQ(list.getToken(""), 5u);
    EXPECT_EQ(list.getElementName(5), "");
}

TEST_F(FieldListTest, AddsAFieldWhoseNameIsTakenWithoutAName) {
    const auto second = AttrContainer::create();
    EXPECT_TRUE(list.addElement(second, "x"));
    EXPECT_EQ(list.getToken("x"), 2u);
    EXPECT_EQ(list.getToken(*second), 5u);
    EXPECT_EQ(list.getElementName(5), std::nullopt);
}

TEST_F(FieldListTest, SetsAFieldAndLeavesTheNames) {
    const auto other = AttrContainer::create();

    EXPECT_TRUE(list.setElement(2, other, "other"));
    EXPECT_EQ(list.get(2), other);
    EXPECT_EQ(list.getElementName(2), "x");
    EXPECT_EQ(list.getToken("other"), none);
    EXPECT_TRUE(list.setElement(3, other));
    EXPECT_EQ(list.getElementName(3), "y");
    EXPECT_TRUE(list.setElement(0, other));
    EXPECT_EQ(list.getElementName(0), std::nullopt);
    EXPECT_FALSE(list.setElement(5, other));
    EXPECT_FALSE(list.setElement(none, other));
}

// Removing ----------------------------------------------------------------------------------------

TEST_F(FieldListTest, LeavesTheHoleOfADeclaredSlot) {
    EXPECT_TRUE(list.rmElement(1, true));
    EXPECT_EQ(list.size(), 5u);
    EXPECT_EQ(list.get(1), nullptr);
    EXPECT_EQ(list.getToken("x"), 2u);
}

TEST_F(FieldListTest, CountsATokenOutOfRangeAsRemoved) {
    EXPECT_TRUE(list.rmElement(5, true));
    EXPECT_TRUE(list.rmElement(none, true));
    EXPECT_EQ(list.size(), 5u);
}

TEST_F(FieldListTest, MovesTheLastFieldIntoTheGap) {
    EXPECT_TRUE(list.rmElement(2, true));

    EXPECT_EQ(list.size(), 4u);
    EXPECT_EQ(list.get(2), z);
    EXPECT_EQ(list.getToken("z"), 2u);
    EXPECT_EQ(list.getElementName(2), "z");
    EXPECT_EQ(list.getToken("x"), none);
    EXPECT_EQ(list.getElementName(4), std::nullopt);
}

TEST_F(FieldListTest, LeavesAHoleWithoutANameWhereItDoesNotCompress) {
    EXPECT_TRUE(list.rmElement(2, false));
    EXPECT_EQ(list.size(), 5u);
    EXPECT_EQ(list.get(2), nullptr);
    EXPECT_EQ(list.getElementName(2), std::nullopt);
    EXPECT_EQ(list.getToken("z"), 4u);
}

TEST_F(FieldListTest, RemovesTheLastField) {
    EXPECT_TRUE(list.rmElement(4, true));
    EXPECT_EQ(list.size(), 4u);
    EXPECT_EQ(list.getToken("z"), none);
    EXPECT_EQ(list.getToken("y"), 3u);
}

TEST_F(FieldListTest, RemovesByIdentity) {
    EXPECT_TRUE(list.rmElement(std::shared_ptr<const AttrContainer>(x), true));
    EXPECT_EQ(list.getToken("z"), 2u);
    EXPECT_FALSE(list.rmElement(std::shared_ptr<const AttrContainer>(x), true));
    EXPECT_FALSE(list.rmElement(std::shared_ptr<const AttrContainer>(), true));
}

// Replacing ---------------------------------------------------------------------------------------

TEST_F(FieldListTest, ReplacesAFieldUnderItsName) {
    const auto other = AttrContainer::create();
    EXPECT_TRUE(list.replaceField(y, other));
    EXPECT_EQ(list.get(3), other);
    EXPECT_EQ(list.getToken("y"), 3u);
    EXPECT_EQ(list.getToken(*y), none);
}

TEST_F(FieldListTest, ReplacesNothingThatItDoesNotHold) {
    EXPECT_FALSE(list.replaceField(AttrContainer::create(), y));
    EXPECT_FALSE(list.replaceField(nullptr, y));
    EXPECT_EQ(list.size(), 5u);
}

TEST(FieldListReplace, DoesNotTakeTheTokenAheadOfNoneForATrueOne) {
    FieldList list(none - 1);
    const auto field = AttrContainer::create();
    list.addElement(field, "");
    EXPECT_FALSE(list.replaceField(field, AttrContainer::create()));
}
