#include <AttributeContainer/AttrContComparerMarkDiffs.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

#include <typeinfo>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// "Same" is alike in both, "Gain" is not, "First" and "Second" are there once.
struct AttrContComparerMarkDiffsTest : testing::Test {
    AttrContComparerMarkDiffsTest() {
        addCustom(*first, "Same", 1);
        addCustom(*second, "Same", 1);
    }

    std::shared_ptr<AttrContainer> first = AttrContainer::create();
    std::shared_ptr<AttrContainer> second = AttrContainer::create();
    std::shared_ptr<Attribute> gainOfFirst = addCustom(*first, "Gain", 1.0);
    std::shared_ptr<Attribute> gainOfSecond = addCustom(*second, "Gain", 1.000001);
    std::shared_ptr<Attribute> onlyInFirst = addCustom(*first, "First", 1);
    std::shared_ptr<Attribute> onlyInSecond = addCustom(*second, "Second", 1);
};

}  // namespace

TEST_F(AttrContComparerMarkDiffsTest, ComparesAllCategoriesExactlyAndKeepsItsMode) {
    AttrContComparerMarkDiffs comparer(2);
    EXPECT_EQ(comparer.getCategories(), -1);
    EXPECT_EQ(comparer.getCompareMode(), 0);
    EXPECT_EQ(comparer.getMarkingMode(), 2);
    comparer.setMarkingMode(3);
    EXPECT_EQ(comparer.getMarkingMode(), 3);
}

TEST_F(AttrContComparerMarkDiffsTest, MarksNothingInModeZero) {
    EXPECT_EQ(AttrContComparerMarkDiffs(0).compare(*first, *second), 3u);
    for (const auto& attribute : {gainOfFirst, gainOfSecond, onlyInFirst, onlyInSecond})
        EXPECT_FALSE(attribute->isMarked());
}

TEST_F(AttrContComparerMarkDiffsTest, MarksInTheFirstInModeOne) {
    EXPECT_EQ(AttrContComparerMarkDiffs(1).compare(*first, *second), 3u);
    EXPECT_TRUE(gainOfFirst->isMarked());
    EXPECT_TRUE(onlyInFirst->isMarked());
    EXPECT_FALSE(gainOfSecond->isMarked());
    EXPECT_FALSE(onlyInSecond->isMarked());
}

TEST_F(AttrContComparerMarkDiffsTest, MarksInTheSecondInModeTwo) {
    EXPECT_EQ(AttrContComparerMarkDiffs(2).compare(*first, *second), 3u);
    EXPECT_FALSE(gainOfFirst->isMarked());
    EXPECT_FALSE(onlyInFirst->isMarked());
    EXPECT_TRUE(gainOfSecond->isMarked());
    EXPECT_TRUE(onlyInSecond->isMarked());
}

TEST_F(AttrContComparerMarkDiffsTest, MarksInBothInModeThree) {
    AttrContComparerMarkDiffs(3).compare(*first, *second);
    for (const auto& attribute : {gainOfFirst, gainOfSecond, onlyInFirst, onlyInSecond})
        EXPECT_TRUE(attribute->isMarked());
    for (const auto& container : {first, second}) {
        EXPECT_FALSE(container->getAttribute("Same").lock()->isMarked());
        EXPECT_FALSE(container->getAttribute("Name").lock()->isMarked());
    }
}

TEST_F(AttrContComparerMarkDiffsTest, SetsTheMarkAloneAndTakesNoneAway) {
    gainOfFirst->setWriteFlag(true);
    const auto same = first->getAttribute("Same").lock();
    same->setMarked(true);
    AttrContComparerMarkDiffs(1).compare(*first, *second);
    EXPECT_EQ(gainOfFirst->getFlags(), 5);  // the write flag and the mark
    EXPECT_TRUE(same->isMarked());
}

TEST_F(AttrContComparerMarkDiffsTest, MarksAlsoWhatTheToleranceForgives) {
    AttrContComparerMarkDiffs comparer(3);
    comparer.setCompareMode(7);
    EXPECT_EQ(comparer.compare(*first, *second), 0u);
    EXPECT_TRUE(gainOfFirst->isMarked());
    EXPECT_TRUE(gainOfSecond->isMarked());
    EXPECT_FALSE(onlyInFirst->isMarked());
    EXPECT_FALSE(onlyInSecond->isMarked());
}

TEST_F(AttrContComparerMarkDiffsTest, MarksWhatMakesTheToleranceThrow) {
    AttrContComparerMarkDiffs comparer(1);
    comparer.setCompareMode(AttrContComparer::withTolerance);
    EXPECT_THROW(comparer.compare(*first, *second), std::bad_typeid);
    EXPECT_TRUE(onlyInFirst->isMarked());
}

TEST_F(AttrContComparerMarkDiffsTest, TellsNobody) {
    const auto observer = watch(*gainOfFirst);
    AttrContComparerMarkDiffs(3).compare(*first, *second);
    EXPECT_EQ(observer->asked, 0);
    EXPECT_EQ(observer->told, 0);
}
