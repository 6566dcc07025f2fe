// The walks of visitors over a container and what it contains.
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/Visitors.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using FieldRecorder = Recorder<AttrContainer>;

// "r" with the fields "a" (with "a1" and "a2") and "b" (with "b1"), and a hole between them.
struct Walks : testing::Test {
    Walks() {
        root->name("r");
        addField(*a, "a1");
        addField(*a, "a2");
        root->setField(1, nullptr);
        addField(*b, "b1");
    }

    // What either walk over fields gives; the two are one on what has no children.
    Log walk(FieldRecorder& visitor, int mode, Result expected = VisitorCore::Continue) {
        EXPECT_EQ(root->fieldVisitor(visitor, mode), expected);
        EXPECT_EQ(visitor.getHierLevel(), 0u);
        const Log log = visitor.withLevels();
        visitor.visits.clear();
        visitor.levels.clear();
        EXPECT_EQ(root->fieldAndStructureVisitor(visitor, mode), expected);
        EXPECT_EQ(visitor.withLevels(), log);
        return log;
    }
    Log walk(int mode, unsigned firstLevel = 0, unsigned maxLevel = anyLevel) {
        FieldRecorder visitor(firstLevel, maxLevel);
        return walk(visitor, mode, maxLevel < 2 ? VisitorCore::Prune : VisitorCore::Continue);
    }

    std::shared_ptr<AttrContainer> root = AttrContainer::create();
    std::shared_ptr<AttrContainer> a = addField(*root, "a");
    std::shared_ptr<AttrContainer> hole = addField(*root, "hole");
    std::shared_ptr<AttrContainer> b = addField(*root, "b");
};

}  // namespace

TEST(VisitResult, HasItsBits) {
    EXPECT_EQ(VisitorCore::Continue, 0u);
    EXPECT_EQ(VisitorCore::Prune, 1u);
    EXPECT_EQ(VisitorCore::Stop, 2u);
    EXPECT_EQ(VisitorCore::Skip, 4u);
    EXPECT_EQ(VisitorCore::Prune | VisitorCore::Stop, static_cast<Result>(3));
}

TEST(GeneralVisitor, KeepsItsLevels) {
    FieldRecorder visitor(2, 5);
    EXPECT_EQ(visitor.getFirstLevel(), 2u);
    EXPECT_EQ(visitor.getMaxLevel(), 5u);
    EXPECT_EQ(visitor.getHierLevel(), 0u);
    visitor.setHierLevel(4);
    EXPECT_EQ(visitor.getHierLevel(), 4u);
}

TEST(GeneralVisitor, GoesOnBehindAContainerByItself) {
    class Bare : public GeneralVisitor<AttrContainer&> {
    public:
        Bare() : GeneralVisitor<AttrContainer&>(0, 0) {}
        Result visit(AttrContainer&) override { return Continue; }
    };
    Bare visitor;
    EXPECT_EQ(visitor.visitDone(*AttrContainer::create()), VisitorCore::Continue);
}

// Modes and levels --------------------------------------------------------------------------------

TEST_F(Walks, VisitBehindTheFieldsInModeZero) {
    EXPECT_EQ(walk(0), (Log{"a12", "a22", "a1", "b12", "b1", "r0"}));
}

TEST_F(Walks, VisitAheadOfTheFieldsInModeOne) {
    EXPECT_EQ(walk(1), (Log{"r0", "a1", "a12", "a22", "b1", "b12"}));
}

TEST_F(Walks, VisitAheadAndEndBehindTheFieldsInModesTwoAndThree) {
    const Log expected{"r0",  "a1", "a12", "-a12", "a22", "-a22",
                       "-a1", "b1", "b12", "-b12", "-b1", "-r0"};
    EXPECT_EQ(walk(2), expected);
    EXPECT_EQ(walk(3), expected);
}

TEST_F(Walks, LookAtTheTwoLowBitsOfTheModeOnly) {
    EXPECT_EQ(walk(4), walk(0));
    EXPECT_EQ(walk(9), walk(1));
    EXPECT_EQ(walk(6), walk(2));
}

TEST_F(Walks, VisitOnlyTheStartAtMaxLevelZero) {
    EXPECT_EQ(walk(0, 0, 0), (Log{"r0"}));
    EXPECT_EQ(walk(1, 0, 0), (Log{"r0"}));
    EXPECT_EQ(walk(2, 0, 0), (Log{"r0", "-r0"}));
}

TEST_F(Walks, GoDownToTheMaxLevel) {
    EXPECT_EQ(walk(1, 0, 1), (Log{"r0", "a1", "b1"}));
}

TEST_F(Walks, BeginAtTheFirstLevel) {
    EXPECT_EQ(walk(1, 1), (Log{"a1", "a12", "a22", "b1", "b12"}));
    EXPECT_EQ(walk(0, 1), (Log{"a12", "a22", "a1", "b12", "b1"}));
    EXPECT_EQ(walk(2, 2), (Log{"a12", "-a12", "a22", "-a22", "b12", "-b12"}));
}

TEST_F(Walks, DoNotBeginAboveTheMaxLevel) {
    FieldRecorder visitor(0, 3);
    visitor.setHierLevel(4);
    EXPECT_EQ(root->fieldVisitor(visitor, 1), VisitorCore::Prune);
    EXPECT_TRUE(visitor.visits.empty());
    EXPECT_EQ(visitor.getHierLevel(), 4u);
}

// Results -----------------------------------------------------------------------------------------

TEST_F(Walks, LeaveOutTheFieldsOfAContainerThatPrunes) {
    FieldRecorder visitor;
    visitor.answers["a"] = VisitorCore::Prune;
    EXPECT_EQ(walk(visitor, 1, VisitorCore::Prune), (Log{"r0", "a1", "b1", "b12"}));
}

TEST_F(Walks, LeaveOutTheFieldsOfAContainerThatIsSkipped) {
    FieldRecorder visitor;
    visitor.answers["a"] = VisitorCore::Skip;
    visitor.answers["b"] = VisitorCore::Prune;
    EXPECT_EQ(walk(visitor, 1, VisitorCore::Skip | VisitorCore::Prune), (Log{"r0", "a1", "b1"}));
}

TEST_F(Walks, EndAtAStop) {
    FieldRecorder visitor;
    visitor.answers["a1"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, 1, VisitorCore::Stop), (Log{"r0", "a1", "a12"}));
    visitor.visits.clear();
    visitor.levels.clear();
    EXPECT_EQ(walk(visitor, 0, VisitorCore::Stop), (Log{"a12"}));
}

TEST_F(Walks, EndTheContainerThatStoppedInModeTwoAndNoOther) {
    FieldRecorder visitor;
    visitor.answers["a1"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, 2, VisitorCore::Stop), (Log{"r0", "a1", "a12", "-a12"}));
}

TEST_F(Walks, EndTheContainerThatPrunedInModeTwo) {
    FieldRecorder visitor;
    visitor.answers["a"] = VisitorCore::Prune;
    visitor.answers["-a"] = VisitorCore::Skip;
    EXPECT_EQ(walk(visitor, 2, VisitorCore::Prune | VisitorCore::Skip),
              (Log{"r0", "a1", "-a1", "b1", "b12", "-b12", "-b1", "-r0"}));
}

TEST_F(Walks, GoOnToTheSiblingsBehindAPrunedContainerInModeZero) {
    FieldRecorder visitor;
    visitor.answers["a1"] = VisitorCore::Prune;
    EXPECT_EQ(walk(visitor, 0, VisitorCore::Prune),
              (Log{"a12", "a22", "a1", "b12", "b1", "r0"}));
}

TEST_F(Walks, StopBehindTheFieldsAsWell) {
    FieldRecorder visitor;
    visitor.answers["-a"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, 2, VisitorCore::Stop),
              (Log{"r0", "a1", "a12", "-a12", "a22", "-a22", "-a1"}));
}

TEST_F(Walks, SurviveAVisitorThatRemovesFields) {
    class Remover : public FieldRecorder {
    public:
        Result visit(AttrContainer& container) override {
            FieldRecorder::visit(container);
            if (container.getName() == "r") container.rmAllCustomFields();
            return Continue;
        }
    };
    Remover visitor;
    EXPECT_EQ(root->fieldVisitor(visitor, 1), VisitorCore::Continue);
    EXPECT_EQ(visitor.withLevels(), (Log{"r0"}));
}

// Observers ---------------------------------------------------------------------------------------

TEST_F(Walks, VisitObserversBehindTheirFields) {
    ObserverRecorder visitor;
    EXPECT_EQ(root->observerVisitor(visitor, true), VisitorCore::Continue);
    EXPECT_EQ(visitor.visits, (Log{"a12", "a22", "a1", "b12", "b1", "r0"}));
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(Walks, VisitOneObserverWithoutRecursion) {
    ObserverRecorder visitor;
    EXPECT_EQ(root->observerVisitor(visitor, false), VisitorCore::Continue);
    EXPECT_EQ(visitor.visits, (Log{"r0"}));
}

TEST_F(Walks, EndTheWalkOverObserversAtAStopFromBelow) {
    ObserverRecorder visitor;
    visitor.stopAt = "a1";
    EXPECT_EQ(root->observerVisitor(visitor, true), VisitorCore::Stop);
    EXPECT_EQ(visitor.visits, (Log{"a12"}));
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(Walks, CountTheLevelsOfObserversAsInOtherWalks) {
    ObserverRecorder shallow(0, 1);
    EXPECT_EQ(root->observerVisitor(shallow, true), VisitorCore::Prune);
    EXPECT_EQ(shallow.visits, (Log{"a1", "b1", "r0"}));
    ObserverRecorder deep(1, anyLevel);
    EXPECT_EQ(root->observerVisitor(deep, true), VisitorCore::Continue);
    EXPECT_EQ(deep.visits, (Log{"a12", "a22", "a1", "b12", "b1"}));
}
