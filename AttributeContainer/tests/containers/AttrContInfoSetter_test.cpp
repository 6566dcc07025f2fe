// Side containers, for good and for a scope.
#include <AttributeContainer/AttrContInfoSetter.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

struct AttrContInfo : testing::Test {
    ~AttrContInfo() override { container->rmAttrContInfo(); }

    std::shared_ptr<AttrContainer> container = AttrContainer::create();
    std::shared_ptr<AttrContainer> info = AttrContainer::create();
};
using AttrContInfoSetterTest = AttrContInfo;

}  // namespace

TEST_F(AttrContInfo, IsThereOnceItWasAdded) {
    EXPECT_TRUE(container->lookupAttrContInfo().expired());
    container->addAttrContInfo(info);
    EXPECT_EQ(container->lookupAttrContInfo().lock(), info);
    EXPECT_TRUE(info->lookupAttrContInfo().expired());
}

TEST_F(AttrContInfo, IsReplacedByTheNext) {
    const auto next = AttrContainer::create();
    container->addAttrContInfo(info);
    container->addAttrContInfo(next);
    EXPECT_EQ(container->lookupAttrContInfo().lock(), next);
}

TEST_F(AttrContInfo, IsRemovedByNone) {
    container->addAttrContInfo(info);
    container->addAttrContInfo(nullptr);
    EXPECT_TRUE(container->lookupAttrContInfo().expired());
}

TEST_F(AttrContInfo, IsRemoved) {
    container->addAttrContInfo(info);
    container->rmAttrContInfo();
    EXPECT_TRUE(container->lookupAttrContInfo().expired());
    container->rmAttrContInfo();
    EXPECT_TRUE(container->lookupAttrContInfo().expired());
}

TEST_F(AttrContInfo, IsHeldWeakly) {
    const std::weak_ptr<AttrContainer> watched = info;
    container->addAttrContInfo(std::move(info));
    info.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(container->lookupAttrContInfo().expired());
}

// The entries go by address alone.
TEST_F(AttrContInfo, IsInheritedByTheNextContainerInThePlaceOfOneThatLeftIt) {
    std::optional<Loose> place;
    place.emplace().addAttrContInfo(info);
    place.emplace();
    EXPECT_EQ(place->lookupAttrContInfo().lock(), info);
    place->rmAttrContInfo();
    EXPECT_TRUE(place->lookupAttrContInfo().expired());
}

TEST_F(AttrContInfoSetterTest, HangsASideContainerOnForItsScope) {
    {
        const AttrContInfoSetter setter(container, info);
        EXPECT_EQ(container->lookupAttrContInfo().lock(), info);
    }
    EXPECT_TRUE(container->lookupAttrContInfo().expired());
}

TEST_F(AttrContInfoSetterTest, AddsNothingWithoutASideContainerAndRemovesAtItsEnd) {
    container->addAttrContInfo(info);
    {
        const AttrContInfoSetter setter(container, nullptr);
        EXPECT_EQ(container->lookupAttrContInfo().lock(), info);
    }
    EXPECT_TRUE(container->lookupAttrContInfo().expired());
}

TEST_F(AttrContInfoSetterTest, OutlivesItsTarget) {
    auto target = AttrContainer::create();
    const std::weak_ptr<AttrContainer> watched = target;
    const AttrContInfoSetter setter(target, info);
    target->rmAttrContInfo();
    target.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(AttrContInfoSetterTest, TakesATargetThatHasGone) {
    std::weak_ptr<AttrContainer> gone;
    const AttrContInfoSetter setter(gone, info);
    EXPECT_TRUE(info->lookupAttrContInfo().expired());
}
