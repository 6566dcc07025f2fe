#include <AttributeContainer/CachedAttributeInfo.h>

#include <AttributeContainer/Attr.h>

#include "support/FreeAttribute.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// An attribute of 1 with a cached value of 2 pending.
struct CachedAttribute : testing::Test {
    CachedAttribute() {
        attribute->addNotifyInfo(std::make_shared<CachedAttributeInfo>(attributeOf(2)));
        Attribute::setIsCachedAttributePending(true);
    }
    ~CachedAttribute() override {
        Attribute::setIsCachedAttributePending(false);
        Attribute::setObservingBlocked(false);
    }

    void expectConsumed() {
        EXPECT_FALSE(Attribute::isCachedAttributePending());
        EXPECT_EQ(attribute->lookupNotifyInfo(typeid(CachedAttributeInfo)), nullptr);
    }
    void expectKept() {
        EXPECT_TRUE(Attribute::isCachedAttributePending());
        EXPECT_NE(attribute->lookupNotifyInfo(typeid(CachedAttributeInfo)), nullptr);
    }

    std::shared_ptr<Attr<int>> attribute = attributeOf(1);
};

}  // namespace

TEST(CachedAttributeInfo, HoldsItsAttributeAndDoesNotExpire) {
    const auto cached = attributeOf(2);
    const CachedAttributeInfo info(cached);

    EXPECT_EQ(info.getCachedAttribute(), cached);
    EXPECT_FALSE(info.willExpire());
}

TEST(CachedAttributeInfo, HasItsClassName) {
    EXPECT_EQ(CachedAttributeInfo::getStaticClassName(), "CachedAttributeInfo");
    EXPECT_EQ(CachedAttributeInfo(nullptr).getClassName(), "CachedAttributeInfo");
}

TEST(CachedAttributeInfo, IsCopiedAndMovedByItsMembers) {
    const auto cached = attributeOf(2);
    CachedAttributeInfo info(cached);
    info.setExpire(true);

    const CachedAttributeInfo copy(info);
    EXPECT_EQ(copy.getCachedAttribute(), cached);
    EXPECT_TRUE(copy.willExpire());
    const CachedAttributeInfo moved(std::move(info));
    EXPECT_EQ(moved.getCachedAttribute(), cached);
    CachedAttributeInfo assigned(nullptr);
    assigned = copy;
    EXPECT_EQ(assigned.getCachedAttribute(), cached);
}

TEST_F(CachedAttribute, IsWhatReadersSee) {
    EXPECT_EQ(attribute->get(), 2);
    EXPECT_EQ(attribute->getValueString(), "2");
    EXPECT_TRUE(*attribute == *attributeOf(2));
    EXPECT_EQ(attribute->duplicate(CreateDeep, std::nullopt)->getValueString(), "2");
    expectKept();
}

TEST_F(CachedAttribute, IsNotSeenOnceThePendingBitIsOff) {
    Attribute::setIsCachedAttributePending(false);
    EXPECT_EQ(attribute->get(), 1);
}

TEST_F(CachedAttribute, IsNotSeenOnAnAttributeWithoutOne) {
    EXPECT_EQ(attributeOf(1)->get(), 1);
}

TEST_F(CachedAttribute, IsNotSeenThroughAnInfoOfAnotherType) {
    attribute->addNotifyInfo(std::make_shared<CachedAttributeInfo>(attributeOf(2.5)));
    EXPECT_EQ(attribute->get(), 1);
    attribute->addNotifyInfo(std::make_shared<CachedAttributeInfo>(nullptr));
    EXPECT_EQ(attribute->get(), 1);
}

TEST_F(CachedAttribute, IsConsumedByASetThatBringsItsOwnValue) {
    attribute->set(3);
    expectConsumed();
    EXPECT_EQ(attribute->get(), 3);
}

TEST_F(CachedAttribute, CanBeSetAsItIsSeen) {
    const auto text = attributeOf(std::string("the old text, too long to be held inside"));
    text->addNotifyInfo(std::make_shared<CachedAttributeInfo>(
        attributeOf(std::string("the new text, too long to be held inside"))));

    text->set(text->get());

    EXPECT_EQ(text->get(), "the new text, too long to be held inside");
}

TEST_F(CachedAttribute, IsConsumedByATouchThatTakesItsValue) {
    const auto counter = watch(*attribute);

    attribute->touch(nullptr, nullptr);

    expectConsumed();
    EXPECT_EQ(attribute->get(), 2);
    EXPECT_EQ(counter->told, 1);
}

TEST_F(CachedAttribute, IsConsumedByAnAssignmentOfText) {
    attribute->assignFrom("3");
    expectConsumed();
    EXPECT_EQ(attribute->get(), 3);
}

TEST_F(CachedAttribute, IsSeenByTheObserversThatAreAsked) {
    const auto actor = watch<Actor>(*attribute);
    std::vector<int> seen;
    actor->before = [&](Observable&, auto&) { seen.push_back(attribute->get()); };
    actor->after = actor->before;

    attribute->set(3);

    EXPECT_EQ(seen, (std::vector<int>{2, 3}));
}

TEST_F(CachedAttribute, StaysWhereTheChangeIsRefused) {
    const auto refuser = watch<Refuser>(*attribute);

    attribute->set(3);

    expectKept();
    Attribute::setIsCachedAttributePending(false);
    EXPECT_EQ(attribute->get(), 1);
}

TEST_F(CachedAttribute, IsConsumedWhileObservingIsBlocked) {
    const auto counter = watch(*attribute);
    const BlockObserver block;

    attribute->set(3);

    expectConsumed();
    EXPECT_EQ(attribute->get(), 3);
    EXPECT_EQ(counter->asked + counter->told, 0);
}

TEST_F(CachedAttribute, IsTakenByATouchWhileObservingIsBlocked) {
    const auto counter = watch(*attribute);
    const BlockObserver block;

    attribute->touch(nullptr, nullptr);

    expectConsumed();
    EXPECT_EQ(attribute->get(), 2);
    EXPECT_EQ(counter->told, 0);
}

TEST_F(CachedAttribute, LeavesThePendingBitOfOtherAttributes) {
    const auto other = attributeOf(7);

    other->set(8);
    other->touch(nullptr, nullptr);

    EXPECT_EQ(other->get(), 8);
    expectKept();
}
