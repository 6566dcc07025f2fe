#include <AttributeContainer/AttrCountMarkedVisitor.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

#include <limits>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr unsigned allLevels = std::numeric_limits<unsigned>::max();

// Two marked attributes and one that is not at the top, one marked a level below.
struct AttrCountMarkedVisitorTest : testing::Test {
    AttrCountMarkedVisitorTest() {
        addCustom(*root, "A", 1)->setMarked(true);
        addCustom(*root, "B", 1)->setMarked(true);
        addCustom(*addNamedField(*root, "Lens"), "A", 1)->setMarked(true);
    }

    std::shared_ptr<AttrContainer> root = AttrContainer::create();
};

}  // namespace

TEST_F(AttrCountMarkedVisitorTest, BeginsAtTheTopWithNothingCounted) {
    const AttrCountMarkedVisitor visitor(7);
    EXPECT_EQ(visitor.getNumMarkedAttributes(), 0u);
    EXPECT_EQ(visitor.getFirstLevel(), 0u);
    EXPECT_EQ(visitor.getMaxLevel(), 7u);
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(AttrCountMarkedVisitorTest, CountsWhatIsMarked) {
    AttrCountMarkedVisitor visitor(allLevels);
    EXPECT_EQ(root->attributeVisitor(visitor, true), VisitorCore::Continue);
    EXPECT_EQ(visitor.getNumMarkedAttributes(), 3u);
}

TEST_F(AttrCountMarkedVisitorTest, ReachesOnlyTheStartWithLevelZero) {
    AttrCountMarkedVisitor visitor(0);
    root->attributeVisitor(visitor, true);
    EXPECT_EQ(visitor.getNumMarkedAttributes(), 2u);
}

TEST_F(AttrCountMarkedVisitorTest, AddsEachWalkToTheOneBefore) {
    AttrCountMarkedVisitor visitor(allLevels);
    root->attributeVisitor(visitor, true);
    root->attributeVisitor(visitor, true);
    EXPECT_EQ(visitor.getNumMarkedAttributes(), 6u);
}
