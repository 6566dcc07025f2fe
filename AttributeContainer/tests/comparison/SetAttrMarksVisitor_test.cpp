#include <AttributeContainer/SetAttrMarksVisitor.h>

#include <AttributeContainer/AttrCountMarkedVisitor.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

#include <limits>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr unsigned allLevels = std::numeric_limits<unsigned>::max();

// Three levels with three, two and one attribute, names included.
struct SetAttrMarksVisitorTest : testing::Test {
    SetAttrMarksVisitorTest() {
        addCustom(*root, "A", 1);
        addCustom(*root, "B", 1);
        const auto middle = addNamedField(*root, "Middle");
        addCustom(*middle, "A", 1);
        addNamedField(*middle, "Bottom");
    }
    void mark(bool value, unsigned maxLevel = allLevels) {
        SetAttrMarksVisitor visitor(value, maxLevel);
        EXPECT_EQ(root->attributeVisitor(visitor, true) & VisitorCore::Stop, 0);
    }
    std::uint64_t numMarked(unsigned maxLevel = allLevels) {
        AttrCountMarkedVisitor visitor(maxLevel);
        root->attributeVisitor(visitor, true);
        return visitor.getNumMarkedAttributes();
    }

    std::shared_ptr<AttrContainer> root = AttrContainer::create();
};

}  // namespace

TEST_F(SetAttrMarksVisitorTest, BeginsAtTheTop) {
    const SetAttrMarksVisitor visitor(true, 7);
    EXPECT_EQ(visitor.getFirstLevel(), 0u);
    EXPECT_EQ(visitor.getMaxLevel(), 7u);
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(SetAttrMarksVisitorTest, MarksAllThatTheWalkReaches) {
    mark(true);
    EXPECT_EQ(numMarked(), 6u);
}

TEST_F(SetAttrMarksVisitorTest, MarksDownToItsLastLevel) {
    mark(true, 1);
    EXPECT_EQ(numMarked(), 5u);
}

TEST_F(SetAttrMarksVisitorTest, ReachesOnlyTheStartWithLevelZero) {
    mark(true, 0);
    EXPECT_EQ(numMarked(), 3u);
}

TEST_F(SetAttrMarksVisitorTest, ClearsMarks) {
    mark(true);
    mark(false, 1);
    EXPECT_EQ(numMarked(), 1u);
}

TEST_F(SetAttrMarksVisitorTest, LeavesTheOtherFlagsAsTheyAre) {
    const auto a = root->getAttribute("A").lock();
    a->setWriteFlag(true);
    mark(true);
    EXPECT_EQ(a->getFlags(), 5);  // the write flag and the mark
    mark(false);
    EXPECT_EQ(a->getFlags(), 1);
}

TEST_F(SetAttrMarksVisitorTest, TellsNobody) {
    const auto observer = watch(*root->getAttribute("A").lock());
    mark(true);
    mark(false);
    EXPECT_EQ(observer->asked, 0);
    EXPECT_EQ(observer->told, 0);
}
