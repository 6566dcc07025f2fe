#include <AttributeContainer/GenAttrList.h>

#include <AttributeContainer/kVAttrContainer.h>

#include "support/FreeAttribute.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr std::uint64_t none = AttrContainer::noToken;

// Three attributes from token 5 on.
struct GenAttrListTest : testing::Test {
    GenAttrListTest() {
        for (auto* element : {&a, &b, &c}) list.addElement(*element, "ignored");
    }

    std::shared_ptr<Attribute> a = attributeOf(1);
    std::shared_ptr<Attribute> b = attributeOf(2);
    std::shared_ptr<Attribute> c = attributeOf(3);
    std::shared_ptr<Attribute> empty;
    GenAttrList<Attribute> list{5};
};

}  // namespace

TEST_F(GenAttrListTest, CountsItsTokensFromTheFirst) {
    EXPECT_EQ(list.getFirstToken(), 5u);
    EXPECT_EQ(list.size(), 3u);
    EXPECT_FALSE(list.empty());
    EXPECT_EQ(list.getToken(*a), 5u);
    EXPECT_EQ(list.getToken(*b), 6u);
    EXPECT_EQ(list.getToken(*c), 7u);
    EXPECT_EQ(list.getToken(*attributeOf(1)), none);
    EXPECT_EQ(list.get(6), b);
    EXPECT_EQ(list.get(4), nullptr);
    EXPECT_EQ(list.get(8), nullptr);
    EXPECT_EQ(list.get(none), nullptr);
}

TEST_F(GenAttrListTest, ReturnsWhatItAdds) {
    auto d = attributeOf(4);
    std::shared_ptr<Attribute> element = d;
    EXPECT_EQ(list.addElement(element, "").lock(), d);
    EXPECT_EQ(element, d);
    EXPECT_EQ(list.getToken(*d), 8u);
    EXPECT_TRUE(list.addElement(empty, "").expired());
    EXPECT_EQ(list.size(), 5u);
}

TEST_F(GenAttrListTest, HasNoMinimalCapacity) {
    EXPECT_EQ(list.getMinCapacity(), 0u);
    EXPECT_FALSE(list.setMinCapacity(10));
    EXPECT_EQ(list.getMinCapacity(), 0u);
    EXPECT_EQ(list.size(), 3u);
}

TEST_F(GenAttrListTest, SetsAnElementInRange) {
    std::shared_ptr<Attribute> d = attributeOf(4);
    EXPECT_TRUE(list.setElement(6, d, ""));
    EXPECT_EQ(list.get(6), d);
    EXPECT_EQ(list.getToken(*b), none);
    EXPECT_FALSE(list.setElement(4, d, ""));
    EXPECT_FALSE(list.setElement(8, d, ""));
    EXPECT_TRUE(list.setElement(7, empty, ""));
    EXPECT_EQ(list.get(7), nullptr);
    EXPECT_EQ(list.size(), 3u);
}

TEST_F(GenAttrListTest, ClosesUpInOrderWhereItCompresses) {
    EXPECT_TRUE(list.rmElement(5, true));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.get(5), b);
    EXPECT_EQ(list.get(6), c);
}

TEST_F(GenAttrListTest, LeavesAHoleWhereItDoesNotCompress) {
    EXPECT_TRUE(list.rmElement(6, false));
    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(list.get(6), nullptr);
    EXPECT_EQ(list.get(7), c);
}

TEST_F(GenAttrListTest, RemovesNothingOutOfRange) {
    EXPECT_FALSE(list.rmElement(4, true));
    EXPECT_FALSE(list.rmElement(8, true));
    EXPECT_FALSE(list.rmElement(none, true));
    EXPECT_EQ(list.size(), 3u);
}

TEST_F(GenAttrListTest, RemovesByIdentity) {
    std::shared_ptr<const Attribute> wanted = b;
    EXPECT_TRUE(list.rmElement(wanted, true));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_FALSE(list.rmElement(wanted, true));
    std::shared_ptr<const Attribute> nothing;
    EXPECT_FALSE(list.rmElement(nothing, true));
    wanted = c;
    EXPECT_TRUE(list.rmElement(wanted, false));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.get(6), nullptr);
}

TEST_F(GenAttrListTest, IsEmptyOnceAllAreRemoved) {
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(list.rmElement(5, true));
    EXPECT_TRUE(list.empty());
    EXPECT_FALSE(list.rmElement(5, true));
}

TEST_F(GenAttrListTest, LeavesAHoleBelowItsMinimalCapacity) {
    /// Has two slots that stay.
    class Slotted : public GenAttrList<Attribute> {
    public:
        using GenAttrList<Attribute>::GenAttrList;
        std::uint64_t getMinCapacity() const override { return 2; }
    };
    Slotted slotted(5);
    for (auto* element : {&a, &b, &c}) slotted.addElement(*element, "");

    EXPECT_TRUE(slotted.rmElement(6, true));
    EXPECT_EQ(slotted.size(), 3u);
    EXPECT_EQ(slotted.get(6), nullptr);
    EXPECT_TRUE(slotted.rmElement(7, true));
    EXPECT_EQ(slotted.size(), 2u);
}

TEST(GenAttrListOfContainers, WorksTheSameWay) {
    GenAttrList<AttrContainer> list(0);
    auto field = AttrContainer::create();
    EXPECT_EQ(list.addElement(field, "a").lock(), field);
    EXPECT_EQ(list.getToken(*field), 0u);
    EXPECT_TRUE(list.rmElement(0, true));
    EXPECT_TRUE(list.empty());
}
