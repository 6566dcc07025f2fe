// The switches of a thread: whether observing is blocked, whether a cached value is pending.
#include <AttributeContainer/Attribute.h>

#include "support/BareAttribute.h"

#include <gtest/gtest.h>

#include <thread>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

struct TempFlags : testing::Test {
    ~TempFlags() override { BareAttribute::setAttributeTempFlags(0); }
};
using BlockObserverTest = TempFlags;

}  // namespace

TEST_F(TempFlags, AreClearWhenAThreadStarts) {
    int flags = -1;
    bool any = true;
    std::thread([&] {
        flags = BareAttribute::getAttributeTempFlags();
        any = BareAttribute::isAnyTempFlagSet();
    }).join();
    EXPECT_EQ(flags, 0);
    EXPECT_FALSE(any);
}

TEST_F(TempFlags, HaveABitForAPendingCachedAttribute) {
    Attribute::setIsCachedAttributePending(true);
    EXPECT_EQ(BareAttribute::getAttributeTempFlags(), 1);
    EXPECT_TRUE(Attribute::isCachedAttributePending());
    EXPECT_FALSE(Attribute::isObservingBlocked());
    EXPECT_TRUE(BareAttribute::isAnyTempFlagSet());
}

TEST_F(TempFlags, HaveABitForBlockedObserving) {
    Attribute::setObservingBlocked(true);
    EXPECT_EQ(BareAttribute::getAttributeTempFlags(), 2);
    EXPECT_TRUE(Attribute::isObservingBlocked());
    EXPECT_FALSE(Attribute::isCachedAttributePending());
    EXPECT_TRUE(BareAttribute::isAnyTempFlagSet());
}

TEST_F(TempFlags, ChangeEachWithoutTheOther) {
    Attribute::setObservingBlocked(true);
    Attribute::setIsCachedAttributePending(true);
    EXPECT_EQ(BareAttribute::getAttributeTempFlags(), 3);
    Attribute::setObservingBlocked(false);
    EXPECT_EQ(BareAttribute::getAttributeTempFlags(), 1);
    Attribute::setObservingBlocked(true);
    Attribute::setIsCachedAttributePending(false);
    EXPECT_EQ(BareAttribute::getAttributeTempFlags(), 2);
}

TEST_F(TempFlags, AreWrittenAsOneWord) {
    BareAttribute::setAttributeTempFlags(3);
    EXPECT_TRUE(Attribute::isObservingBlocked());
    EXPECT_TRUE(Attribute::isCachedAttributePending());
    BareAttribute::setAttributeTempFlags(0);
    EXPECT_FALSE(BareAttribute::isAnyTempFlagSet());
}

TEST_F(TempFlags, BelongToOneThread) {
    Attribute::setObservingBlocked(true);
    Attribute::setIsCachedAttributePending(true);
    bool blocked = true;
    bool pending = true;
    std::thread([&] {
        blocked = Attribute::isObservingBlocked();
        pending = Attribute::isCachedAttributePending();
        Attribute::setObservingBlocked(false);
        Attribute::setIsCachedAttributePending(false);
    }).join();
    EXPECT_FALSE(blocked);
    EXPECT_FALSE(pending);
    EXPECT_EQ(BareAttribute::getAttributeTempFlags(), 3);
}

TEST_F(BlockObserverTest, BlocksForItsScope) {
    EXPECT_FALSE(Attribute::isObservingBlocked());
    {
        const BlockObserver block;
        EXPECT_TRUE(Attribute::isObservingBlocked());
    }
    EXPECT_FALSE(Attribute::isObservingBlocked());
}

TEST_F(BlockObserverTest, LiftsTheBlockOnlyAtTheOutermostScope) {
    {
        const BlockObserver outer;
        {
            const BlockObserver inner;
            EXPECT_TRUE(Attribute::isObservingBlocked());
        }
        EXPECT_TRUE(Attribute::isObservingBlocked());
    }
    EXPECT_FALSE(Attribute::isObservingBlocked());
}

TEST_F(BlockObserverTest, LeavesABlockThatWasThereBefore) {
    Attribute::setObservingBlocked(true);
    { const BlockObserver block; }
    EXPECT_TRUE(Attribute::isObservingBlocked());
}

TEST_F(BlockObserverTest, LeavesTheOtherSwitchAlone) {
    Attribute::setIsCachedAttributePending(true);
    {
        const BlockObserver block;
        EXPECT_EQ(BareAttribute::getAttributeTempFlags(), 3);
    }
    EXPECT_EQ(BareAttribute::getAttributeTempFlags(), 1);
}
