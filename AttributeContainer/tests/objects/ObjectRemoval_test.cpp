// How an object loses children.
#include <AttributeContainer/Object.h>

#include "support/Trees.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(ObjectRemoval, LeavesAChildToItsHolder) {
    const auto parent = Object::create();
    const auto child = addNamed(*parent, "child");

    EXPECT_TRUE(parent->rmChild(*child, 77));

    EXPECT_EQ(parent->getNumChildren(), 0u);
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(child->getName(), "child");
    EXPECT_FALSE(parent->rmChild(*child, 0));
}

TEST(ObjectRemoval, RemovesAChildByItsIndex) {
    const auto parent = Object::create();
    addNamed(*parent, "a");
    const auto second = addNamed(*parent, "b");
    addNamed(*parent, "c");

    EXPECT_TRUE(parent->rmChild(std::uint64_t{1}, 0));

    EXPECT_EQ(childNames(*parent), (Names{"a", "c"}));
    EXPECT_EQ(second->getParent(), nullptr);
    EXPECT_FALSE(parent->rmChild(std::uint64_t{2}, 0));
    EXPECT_FALSE(parent->rmChild(~std::uint64_t{0}, 0));
    EXPECT_EQ(parent->getNumChildren(), 2u);
}

TEST(ObjectRemoval, DoesNotRemoveTheChildOfAnother) {
    const auto parent = Object::create();
    const auto other = Object::create();
    const auto child = addNamed(*other, "child");

    EXPECT_FALSE(parent->rmChild(*child, 0));

    EXPECT_EQ(child->getParent(), other);
    EXPECT_EQ(other->getNumChildren(), 1u);
}

TEST(ObjectRemoval, DestroysWithItselfTheChildrenThatNobodyHolds) {
    auto parent = Object::create();
    const auto held = addNamed(*parent, "held");
    const std::weak_ptr<Object> loose = addNamed(*parent, "loose");

    parent.reset();

    EXPECT_TRUE(loose.expired());
    EXPECT_EQ(held->getParent(), nullptr);
    EXPECT_EQ(held->inqObjPath(), "/");
}

TEST(ObjectRemoval, IsNotKeptAliveByItsChildren) {
    auto parent = Object::create();
    const std::weak_ptr<Object> watched = parent;
    const auto child = addNamed(*parent, "child");

    parent.reset();

    EXPECT_TRUE(watched.expired());
}
