// Taking fields out of a container.
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr std::uint64_t none = AttrContainer::noToken;

// A container with the guests "a", "b" and "c".
struct RmField : testing::Test {
    std::shared_ptr<AttrContainer> container = AttrContainer::create();
    std::shared_ptr<Guest> a = addNamedField<Guest>(*container, "a");
    std::shared_ptr<Guest> b = addNamedField<Guest>(*container, "b");
    std::shared_ptr<Guest> c = addNamedField<Guest>(*container, "c");
};

}  // namespace

TEST_F(RmField, RemovesByTokenAndTellsTheField) {
    EXPECT_TRUE(container->rmField(std::uint64_t{0}));

    EXPECT_EQ(container->getNumFields(), 2u);
    EXPECT_EQ(a->calls.back().what, "detach");
    EXPECT_EQ(a->calls.back().parent.lock(), container);
    EXPECT_EQ(container->getFieldToken("c"), 0u);  // the last one fills the gap
    EXPECT_EQ(container->getFieldToken("a"), none);
}

TEST_F(RmField, RemovesByName) {
    EXPECT_TRUE(container->rmField("b"));
    EXPECT_FALSE(container->rmField("b"));
    EXPECT_FALSE(container->rmField(""));
    EXPECT_EQ(container->getNumFields(), 2u);
    EXPECT_EQ(b->calls.back().what, "detach");
}

TEST_F(RmField, RemovesByIdentity) {
    EXPECT_TRUE(container->rmField(b));
    EXPECT_FALSE(container->rmField(b));
    EXPECT_FALSE(container->rmField(std::shared_ptr<AttrContainer>()));
    EXPECT_EQ(container->getNumFields(), 2u);
    EXPECT_EQ(b->calls.size(), 2u);
}

TEST_F(RmField, CountsATokenOutOfRangeAsRemoved) {
    EXPECT_TRUE(container->rmField(std::uint64_t{3}));
    EXPECT_TRUE(container->rmField(none));
    EXPECT_EQ(container->getNumFields(), 3u);
}

TEST_F(RmField, RemovesAFieldThatIsNotOwnedElsewhere) {
    const std::weak_ptr<Guest> watched = a;
    a.reset();
    EXPECT_TRUE(container->rmField("a"));
    EXPECT_TRUE(watched.expired());
}

TEST_F(RmField, TakesAllFieldsAway) {
    EXPECT_TRUE(container->rmField(a));
    EXPECT_TRUE(container->rmField(b));
    EXPECT_TRUE(container->rmField(c));
    EXPECT_EQ(container->getNumFields(), 0u);
    EXPECT_FALSE(container->rmField(c));
    EXPECT_FALSE(container->rmField(std::uint64_t{0}));  // the list has gone
}

// The form with a token leaves the empty list, in which a token out of range counts as removed.
TEST_F(RmField, LeavesTheListWhereTheLastFieldIsRemovedByItsToken) {
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(container->rmField(std::uint64_t{0}));
    EXPECT_EQ(container->getNumFields(), 0u);
    EXPECT_TRUE(container->rmField(std::uint64_t{0}));
}

TEST(RmFieldWithoutAList, RemovesNothing) {
    const auto container = AttrContainer::create();
    EXPECT_FALSE(container->rmField(std::uint64_t{0}));
    EXPECT_FALSE(container->rmField("a"));
    EXPECT_FALSE(container->rmField(AttrContainer::create()));
}

TEST(RmFieldOfADeclaredSlot, LeavesAHoleWithItsName) {
    const auto pole = LongPole::create();

    EXPECT_TRUE(pole->rmField("Top"));

    EXPECT_TRUE(pole->getField("Top").expired());
    EXPECT_TRUE(pole->getField(1).expired());
    EXPECT_EQ(pole->getFieldName(1), "Top");
    EXPECT_EQ(pole->getFieldToken("Top"), 1u);
    EXPECT_EQ(pole->getNumFields(), 3u);
    EXPECT_FALSE(pole->Bottom().expired());
}

TEST(RmFieldOfADeclaredSlot, WorksByIdentityToo) {
    const auto pole = LongPole::create();
    EXPECT_TRUE(pole->rmField(std::shared_ptr<AttrContainer>(pole->Top().lock())));
    EXPECT_TRUE(pole->Top().expired());
    EXPECT_EQ(pole->getNumFields(), 3u);
}

TEST(RmAllCustomFields, LeavesTheDeclaredSlots) {
    const auto pole = LongPole::create();
    const auto guest = addNamedField<Guest>(*pole, "guest");
    addNamedField(*pole, "second");

    EXPECT_TRUE(pole->rmAllCustomFields());

    EXPECT_EQ(pole->getNumFields(), 3u);
    EXPECT_FALSE(pole->Bottom().expired());
    EXPECT_EQ(guest->calls.back().what, "detach");
    EXPECT_EQ(pole->getFieldToken("guest"), none);
    EXPECT_TRUE(pole->rmAllCustomFields());
}

TEST(RmAllCustomFields, BeginsWithTheLast) {
    static std::vector<std::string> order;
    class Leaver : public ContainerClass<Leaver, AttrContainer, "Leaver"> {
    public:
        using Block::Block;
        bool detachFromParent(std::shared_ptr<AttrContainer>) override {
            order.push_back(getName());
            return true;
        }
    };
    order.clear();
    const auto container = AttrContainer::create();
    for (const char* name : {"a", "b", "c"}) addNamedField<Leaver>(*container, name)->name(name);

    EXPECT_TRUE(container->rmAllCustomFields());

    EXPECT_EQ(order, (std::vector<std::string>{"c", "b", "a"}));
    EXPECT_EQ(container->getNumFields(), 0u);
}

TEST(RmAllCustomFields, SucceedsWithoutAList) {
    EXPECT_TRUE(AttrContainer::create()->rmAllCustomFields());
}
