// The walks of visitors over a container and what it contains.
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

#include <limits>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Result = VisitorCore::VisitResult;
using Log = std::vector<std::string>;
constexpr unsigned unlimited = std::numeric_limits<unsigned>::max();

/// Notes each container that it meets, with its level, and answers as it is told for some names.
class FieldLog : public GeneralVisitor<AttrContainer&> {
public:
    explicit FieldLog(unsigned firstLevel = 0, unsigned maxLevel = unlimited)
        : GeneralVisitor<AttrContainer&>(firstLevel, maxLevel) {}

    Result visit(AttrContainer& container) override { return note("", container, answers); }
    Result visitDone(AttrContainer& container) override {
        return note("done ", container, doneAnswers);
    }

    Log log;
    std::map<std::string, Result> answers;
    std::map<std::string, Result> doneAnswers;

private:
    Result note(const char* what, AttrContainer& container,
                const std::map<std::string, Result>& given) {
        log.push_back(what + container.getName() + std::to_string(getHierLevel()));
        const auto answer = given.find(container.getName());
        return answer != given.end() ? answer->second : Continue;
    }
};

class ObserverLog : public ObserverVisitor {
public:
    using ObserverVisitor::ObserverVisitor;

    Result visit(Observer& observer) override {
        log.push_back(observer.getName() + std::to_string(getHierLevel()));
        return observer.getName() == stopAt ? Stop : Continue;
    }

    Log log;
    std::string stopAt;
};

std::shared_ptr<AttrContainer> named(AttrContainer& parent, const std::string& name) {
    const auto field = addNamedField(parent, name);
    field->name(name);
    return field;
}

// "r" with the fields "a" (with "a1" and "a2") and "b" (with "b1"), and a hole between them.
struct Walks : testing::Test {
    Walks() {
        root->name("r");
        named(*a, "a1");
        named(*a, "a2");
        root->setField(1, nullptr);
        named(*b, "b1");
    }

    Log walk(FieldLog& visitor, int mode, Result expected = VisitorCore::Continue) {
        EXPECT_EQ(root->fieldVisitor(visitor, mode), expected);
        EXPECT_EQ(visitor.getHierLevel(), 0u);
        const Log log = visitor.log;
        visitor.log.clear();
        EXPECT_EQ(root->fieldAndStructureVisitor(visitor, mode), expected);
        EXPECT_EQ(visitor.log, log);
        return log;
    }
    Log walk(int mode, unsigned firstLevel = 0, unsigned maxLevel = unlimited) {
        FieldLog visitor(firstLevel, maxLevel);
        return walk(visitor, mode, maxLevel < 2 ? VisitorCore::Prune : VisitorCore::Continue);
    }

    std::shared_ptr<AttrContainer> root = AttrContainer::create();
    std::shared_ptr<AttrContainer> a = named(*root, "a");
    std::shared_ptr<AttrContainer> hole = named(*root, "hole");
    std::shared_ptr<AttrContainer> b = named(*root, "b");
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
    FieldLog visitor(2, 5);
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
    const Log expected{"r0",  "a1",  "a12",      "done a12", "a22",    "done a22", "done a1",
                       "b1", "b12", "done b12", "done b1",  "done r0"};
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
    EXPECT_EQ(walk(2, 0, 0), (Log{"r0", "done r0"}));
}

TEST_F(Walks, GoDownToTheMaxLevel) {
    EXPECT_EQ(walk(1, 0, 1), (Log{"r0", "a1", "b1"}));
}

TEST_F(Walks, BeginAtTheFirstLevel) {
    EXPECT_EQ(walk(1, 1), (Log{"a1", "a12", "a22", "b1", "b12"}));
    EXPECT_EQ(walk(0, 1), (Log{"a12", "a22", "a1", "b12", "b1"}));
    EXPECT_EQ(walk(2, 2), (Log{"a12", "done a12", "a22", "done a22", "b12", "done b12"}));
}

TEST_F(Walks, DoNotBeginAboveTheMaxLevel) {
    FieldLog visitor(0, 3);
    visitor.setHierLevel(4);
    EXPECT_EQ(root->fieldVisitor(visitor, 1), VisitorCore::Prune);
    EXPECT_TRUE(visitor.log.empty());
    EXPECT_EQ(visitor.getHierLevel(), 4u);
}

// Results -----------------------------------------------------------------------------------------

TEST_F(Walks, LeaveOutTheFieldsOfAContainerThatPrunes) {
    FieldLog visitor;
    visitor.answers["a"] = VisitorCore::Prune;
    EXPECT_EQ(walk(visitor, 1, VisitorCore::Prune), (Log{"r0", "a1", "b1", "b12"}));
}

TEST_F(Walks, LeaveOutTheFieldsOfAContainerThatIsSkipped) {
    FieldLog visitor;
    visitor.answers["a"] = VisitorCore::Skip;
    visitor.answers["b"] = VisitorCore::Prune;
    EXPECT_EQ(walk(visitor, 1, VisitorCore::Skip | VisitorCore::Prune), (Log{"r0", "a1", "b1"}));
}

TEST_F(Walks, EndAtAStop) {
    FieldLog visitor;
    visitor.answers["a1"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, 1, VisitorCore::Stop), (Log{"r0", "a1", "a12"}));
    visitor.log.clear();
    EXPECT_EQ(walk(visitor, 0, VisitorCore::Stop), (Log{"a12"}));
}

TEST_F(Walks, EndTheContainerThatStoppedInModeTwoAndNoOther) {
    FieldLog visitor;
    visitor.answers["a1"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, 2, VisitorCore::Stop), (Log{"r0", "a1", "a12", "done a12"}));
}

TEST_F(Walks, EndTheContainerThatPrunedInModeTwo) {
    FieldLog visitor;
    visitor.answers["a"] = VisitorCore::Prune;
    visitor.doneAnswers["a"] = VisitorCore::Skip;
    EXPECT_EQ(walk(visitor, 2, VisitorCore::Prune | VisitorCore::Skip),
              (Log{"r0", "a1", "done a1", "b1", "b12", "done b12", "done b1", "done r0"}));
}

TEST_F(Walks, GoOnToTheSiblingsBehindAPrunedContainerInModeZero) {
    FieldLog visitor;
    visitor.answers["a1"] = VisitorCore::Prune;
    EXPECT_EQ(walk(visitor, 0, VisitorCore::Prune),
              (Log{"a12", "a22", "a1", "b12", "b1", "r0"}));
}

TEST_F(Walks, StopBehindTheFieldsAsWell) {
    FieldLog visitor;
    visitor.doneAnswers["a"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, 2, VisitorCore::Stop),
              (Log{"r0", "a1", "a12", "done a12", "a22", "done a22", "done a1"}));
}

TEST_F(Walks, SurviveAVisitorThatRemovesFields) {
    class Remover : public FieldLog {
    public:
        Result visit(AttrContainer& container) override {
            FieldLog::visit(container);
            if (container.getName() == "r") container.rmAllCustomFields();
            return Continue;
        }
    };
    Remover visitor;
    EXPECT_EQ(root->fieldVisitor(visitor, 1), VisitorCore::Continue);
    EXPECT_EQ(visitor.log, (Log{"r0"}));
}

// Observers ---------------------------------------------------------------------------------------

TEST_F(Walks, VisitObserversBehindTheirFields) {
    ObserverLog visitor(0, unlimited);
    EXPECT_EQ(root->observerVisitor(visitor, true), VisitorCore::Continue);
    EXPECT_EQ(visitor.log, (Log{"a12", "a22", "a1", "b12", "b1", "r0"}));
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(Walks, VisitOneObserverWithoutRecursion) {
    ObserverLog visitor(0, unlimited);
    EXPECT_EQ(root->observerVisitor(visitor, false), VisitorCore::Continue);
    EXPECT_EQ(visitor.log, (Log{"r0"}));
}

TEST_F(Walks, EndTheWalkOverObserversAtAStopFromBelow) {
    ObserverLog visitor(0, unlimited);
    visitor.stopAt = "a1";
    EXPECT_EQ(root->observerVisitor(visitor, true), VisitorCore::Stop);
    EXPECT_EQ(visitor.log, (Log{"a12"}));
    EXPECT_EQ(visitor.getHierLevel(), 0u);
}

TEST_F(Walks, CountTheLevelsOfObserversAsInOtherWalks) {
    ObserverLog shallow(0, 1);
    EXPECT_EQ(root->observerVisitor(shallow, true), VisitorCore::Prune);
    EXPECT_EQ(shallow.log, (Log{"a1", "b1", "r0"}));
    ObserverLog deep(1, unlimited);
    EXPECT_EQ(root->observerVisitor(deep, true), VisitorCore::Continue);
    EXPECT_EQ(deep.log, (Log{"a12", "a22", "a1", "b12", "b1"}));
}
