#include <AttributeContainer/Object.h>

#include "support/Containers.h"
#include "support/Trees.h"
#include "support/Visitors.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr auto Continue = VisitorCore::Continue;
constexpr auto Prune = VisitorCore::Prune;
constexpr auto Stop = VisitorCore::Stop;
constexpr auto Skip = VisitorCore::Skip;

// top with the children a, which has a1 and a2, and b, which has b1.
class ObjectWalks : public testing::Test {
protected:
    std::shared_ptr<Object> top = named("top");
    std::shared_ptr<Object> a = addNamed(*top, "a");
    std::shared_ptr<Object> b = addNamed(*top, "b");
    std::shared_ptr<Object> a1 = addNamed(*a, "a1");
    std::shared_ptr<Object> a2 = addNamed(*a, "a2");
    std::shared_ptr<Object> b1 = addNamed(*b, "b1");
};

}  // namespace

TEST_F(ObjectWalks, VisitBehindTheChildrenInMode0) {
    Recorder<Object> visitor;

    EXPECT_EQ(top->structureVisitor(visitor, 0), Continue);

    EXPECT_EQ(visitor.visits, (Names{"a1", "a2", "a", "b1", "b", "top"}));
}

TEST_F(ObjectWalks, VisitAheadOfTheChildrenInMode1) {
    Recorder<Object> visitor;

    EXPECT_EQ(top->structureVisitor(visitor, 1), Continue);

    EXPECT_EQ(visitor.visits, (Names{"top", "a", "a1", "a2", "b", "b1"}));
    EXPECT_EQ(visitor.levels, (std::vector<unsigned>{0, 1, 2, 2, 1, 2}));
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(ObjectWalks, VisitOnBothSidesInModes2And3) {
    for (const int mode : {2, 3}) {
        Recorder<Object> visitor;

        EXPECT_EQ(top->structureVisitor(visitor, mode), Continue);

        EXPECT_EQ(visitor.visits, (Names{"top", "a", "a1", "-a1", "a2", "-a2", "-a", "b", "b1",
                                         "-b1", "-b", "-top"}));
    }
}

TEST_F(ObjectWalks, LookAtTheTwoLowBitsOfTheModeOnly) {
    Recorder<Object> visitor;

    top->structureVisitor(visitor, 4 | 1);

    EXPECT_EQ(visitor.visits, (Names{"top", "a", "a1", "a2", "b", "b1"}));
}

TEST_F(ObjectWalks, GoOnWithTheSiblingsOfAnObjectThatIsNotEntered) {
    for (const Result answer : {Prune, Skip}) {
        Recorder<Object> visitor;
        visitor.answers["a"] = answer;

        EXPECT_EQ(top->structureVisitor(visitor, 1), answer);

        EXPECT_EQ(visitor.visits, (Names{"top", "a", "b", "b1"}));
    }
}

TEST_F(ObjectWalks, FinishAnObjectThatIsNotEnteredWhereTheModeAsksForIt) {
    Recorder<Object> visitor;
    visitor.answers["a"] = Prune;
    visitor.answers["-a"] = Skip;

    EXPECT_EQ(top->structureVisitor(visitor, 2), static_cast<Result>(5));

    EXPECT_EQ(visitor.visits, (Names{"top", "a", "-a", "b", "b1", "-b1", "-b", "-top"}));
}

TEST_F(ObjectWalks, EndAsAWholeAtAStop) {
    Recorder<Object> visitor;
    visitor.answers["a1"] = Stop;

    EXPECT_EQ(top->structureVisitor(visitor, 1), Stop);

    EXPECT_EQ(visitor.visits, (Names{"top", "a", "a1"}));
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(ObjectWalks, StillVisitWhatLiesAboveAStop) {
    Recorder<Object> behind;
    behind.answers["a1"] = Stop;
    EXPECT_EQ(top->structureVisitor(behind, 0), Stop);
    EXPECT_EQ(behind.visits, (Names{"a1", "a", "top"}));

    Recorder<Object> both;
    both.answers["a1"] = Stop;
    EXPECT_EQ(top->structureVisitor(both, 2), Stop);
    EXPECT_EQ(both.visits, (Names{"top", "a", "a1", "-a1", "-a", "-top"}));
}

TEST_F(ObjectWalks, AddUpTheResults) {
    Recorder<Object> visitor;
    visitor.answers["a1"] = Prune;
    visitor.answers["b"] = Skip;

    EXPECT_EQ(top->structureVisitor(visitor, 0), static_cast<Result>(5));
    EXPECT_EQ(visitor.visits.size(), 6u);
}

TEST_F(ObjectWalks, VisitOnlyTheirStartAtMaxLevel0) {
    Recorder<Object> visitor(0, 0);

    EXPECT_EQ(top->structureVisitor(visitor, 1), Prune);

    EXPECT_EQ(visitor.visits, (Names{"top"}));
}

TEST_F(ObjectWalks, DoNothingAboveTheMaxLevelThatTheVisitorBrings) {
    Recorder<Object> visitor(0, 1);
    visitor.setHierLevel(2);

    EXPECT_EQ(top->structureVisitor(visitor, 2), Prune);

    EXPECT_TRUE(visitor.visits.empty());
    EXPECT_EQ(visitor.getHierLevel(), 2u);
}

TEST_F(ObjectWalks, PassThroughTheLevelsAheadOfTheFirst) {
    for (const int mode : {0, 1}) {
        Recorder<Object> visitor(1, 1);

        EXPECT_EQ(top->structureVisitor(visitor, mode), Prune);

        EXPECT_EQ(visitor.visits, (Names{"a", "b"}));
    }
    Recorder<Object> both(2, anyLevel);
    top->structureVisitor(both, 2);
    EXPECT_EQ(both.visits, (Names{"a1", "-a1", "a2", "-a2", "b1", "-b1"}));
}

TEST_F(ObjectWalks, CountLevelsFromTheOneThatTheVisitorBrings) {
    Recorder<Object> visitor;
    visitor.setHierLevel(5);

    a->structureVisitor(visitor, 1);

    EXPECT_EQ(visitor.levels, (std::vector<unsigned>{5, 6, 6}));
    EXPECT_EQ(visitor.getHierLevel(), 5u);
}

TEST_F(ObjectWalks, LendConstantObjectsTheSameWalk) {
    Recorder<const Object> visitor(1, 2);
    visitor.answers["a"] = Prune;

    EXPECT_EQ(std::as_const(*top).structureVisitor(visitor, 2), Prune);

    EXPECT_EQ(visitor.visits, (Names{"a", "-a", "b", "b1", "-b1", "-b"}));
    EXPECT_EQ(visitor.levels, (std::vector<unsigned>{1, 1, 1, 2, 2, 1}));
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(ObjectWalks, DoNotSeeChildrenThatAreAddedMeanwhile) {
    Recorder<Object> visitor;
    visitor.act = [&](Object& object) {
        if (object.getName() == "a") addNamed(*top, "late");
    };

    top->structureVisitor(visitor, 1);

    EXPECT_EQ(visitor.visits, (Names{"top", "a", "a1", "a2", "b", "b1"}));
    EXPECT_EQ(top->getNumChildren(), 3u);
}

TEST_F(ObjectWalks, GoByTheIndexWhereChildrenAreRemovedMeanwhile) {
    addNamed(*top, "c");
    addNamed(*top, "d");
    Recorder<Object> visitor;
    visitor.act = [&](Object& object) {
        if (object.getName() == "a") top->rmChild(object, 0);
    };

    top->structureVisitor(visitor, 1);

    EXPECT_EQ(visitor.visits, (Names{"top", "a", "a1", "a2", "c", "d"}));
}

TEST_F(ObjectWalks, PassOverIndicesThatHaveFallenPastTheEnd) {
    Recorder<Object> visitor;
    visitor.act = [&](Object& object) {
        if (object.getName() != "a") return;
        while (top->getNumChildren() > 0) top->rmChild(std::uint64_t{0}, 0);
    };

    EXPECT_EQ(top->structureVisitor(visitor, 1), Continue);

    EXPECT_EQ(visitor.visits, (Names{"top", "a", "a1", "a2"}));
}

TEST_F(ObjectWalks, CostOneStepAChild) {
    const auto wide = Object::create();
    for (int i = 0; i < 30000; ++i) addNamed(*wide, "c");
    Recorder<Object> visitor;

    wide->structureVisitor(visitor, 1);

    EXPECT_EQ(visitor.visits.size(), 30001u);
}

// Fields and children -----------------------------------------------------------------------------

TEST_F(ObjectWalks, GoThroughTheFieldsAndThenThroughTheChildren) {
    addField(*top, "f");
    addField(*a, "af");
    Recorder<AttrContainer> visitor;

    EXPECT_EQ(top->fieldAndStructureVisitor(visitor, 1), Continue);

    EXPECT_EQ(visitor.visits, (Names{"top", "f", "a", "af", "a1", "a2", "b", "b1"}));
    EXPECT_EQ(visitor.levels, (std::vector<unsigned>{0, 1, 1, 2, 2, 2, 1, 2}));
}

TEST_F(ObjectWalks, GoThroughFieldsOnlyWhereOnlyFieldsAreAskedFor) {
    addField(*top, "f");
    Recorder<AttrContainer> visitor;

    top->fieldVisitor(visitor, 1);

    EXPECT_EQ(visitor.visits, (Names{"top", "f"}));
}

TEST_F(ObjectWalks, ReturnAtOnceFromAStopAmongFieldsAndChildren) {
    addField(*top, "f");
    Recorder<AttrContainer> stoppedByField;
    stoppedByField.answers["f"] = Stop;
    EXPECT_EQ(top->fieldAndStructureVisitor(stoppedByField, 2), Stop);
    EXPECT_EQ(stoppedByField.visits, (Names{"top", "f", "-f"}));

    Recorder<AttrContainer> stoppedByChild;
    stoppedByChild.answers["a1"] = Stop;
    EXPECT_EQ(top->fieldAndStructureVisitor(stoppedByChild, 0), Stop);
    EXPECT_EQ(stoppedByChild.visits, (Names{"f", "a1"}));
    EXPECT_EQ(stoppedByChild.getHierLevel(), 0u);
}

TEST_F(ObjectWalks, VisitObserversBehindTheFieldsAndChildrenThatTheyContain) {
    addField(*top, "f");
    ObserverRecorder visitor;

    EXPECT_EQ(top->observerVisitor(visitor, true), Continue);

    EXPECT_EQ(visitor.visits, (Names{"f1", "a12", "a22", "a1", "b12", "b1", "top0"}));
}

TEST_F(ObjectWalks, VisitOneObserverWhereTheyDoNotRecurse) {
    addField(*top, "f");
    ObserverRecorder visitor;

    top->observerVisitor(visitor, false);

    EXPECT_EQ(visitor.visits, (Names{"top0"}));
}

TEST_F(ObjectWalks, EndAtOnceAtAnObserverThatStopsThem) {
    ObserverRecorder visitor;
    visitor.stopAt = "a2";

    EXPECT_EQ(top->observerVisitor(visitor, true), Stop);

    EXPECT_EQ(visitor.visits, (Names{"a12", "a22"}));
}

TEST_F(ObjectWalks, VisitObserversBetweenTwoLevels) {
    ObserverRecorder visitor(1, 1);

    EXPECT_EQ(top->observerVisitor(visitor, true), Prune);

    EXPECT_EQ(visitor.visits, (Names{"a1", "b1"}));
}
