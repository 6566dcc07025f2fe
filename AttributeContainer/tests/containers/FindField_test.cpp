#include <AttributeContainer/FindField.h>

#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/Visitors.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

auto isNamed(const std::string& name) {
    return [name](const AttrContainer& container) { return container.getName() == name; };
}

// "r" with the fields "a" (with an "x") and "b" (with an "x").
struct FindFieldTest : testing::Test {
    FindFieldTest() { root->name("r"); }

    std::shared_ptr<AttrContainer> root = AttrContainer::create();
    std::shared_ptr<AttrContainer> a = addField(*root, "a");
    std::shared_ptr<AttrContainer> b = addField(*root, "b");
    std::shared_ptr<AttrContainer> ax = addField(*a, "x");
    std::shared_ptr<AttrContainer> bx = addField(*b, "x");
};
using CollectFieldsTest = FindFieldTest;

}  // namespace

TEST_F(FindFieldTest, FindsTheFirstMatch) {
    FindField finder(isNamed("x"), 0, anyLevel);
    EXPECT_EQ(root->fieldVisitor(finder, 1), VisitorCore::Prune | VisitorCore::Stop);
    EXPECT_EQ(finder.getMatch(), ax);
}

TEST_F(FindFieldTest, FindsTheStartItself) {
    FindField finder(isNamed("r"), 0, anyLevel);
    root->fieldVisitor(finder, 1);
    EXPECT_EQ(finder.getMatch(), root);
}

TEST_F(FindFieldTest, FindsNothingWhereNothingMatches) {
    FindField finder(isNamed("y"), 0, anyLevel);
    EXPECT_EQ(root->fieldVisitor(finder, 1), VisitorCore::Continue);
    EXPECT_EQ(finder.getMatch(), nullptr);
}

TEST_F(FindFieldTest, KeepsToItsLevels) {
    FindField shallow(isNamed("x"), 0, 1);
    root->fieldVisitor(shallow, 1);
    EXPECT_EQ(shallow.getMatch(), nullptr);
    FindField deep(isNamed("r"), 1, anyLevel);
    root->fieldVisitor(deep, 1);
    EXPECT_EQ(deep.getMatch(), nullptr);
}

TEST_F(FindFieldTest, EndsAtTheContainerThatItShallStopAt) {
    FindField finder(isNamed("b"), 0, anyLevel);
    EXPECT_EQ(finder.getStopAt(), nullptr);
    finder.setStopAt(a);
    EXPECT_EQ(finder.getStopAt(), a);

    EXPECT_EQ(root->fieldVisitor(finder, 1), VisitorCore::Stop);

    EXPECT_EQ(finder.getMatch(), nullptr);
}

TEST_F(FindFieldTest, FindsTheContainerThatItShallStopAt) {
    FindField finder(isNamed("a"), 0, anyLevel);
    finder.setStopAt(a);
    root->fieldVisitor(finder, 1);
    EXPECT_EQ(finder.getMatch(), a);
}

TEST_F(FindFieldTest, StopsOnceItHasAMatch) {
    FindField finder(isNamed("a"), 0, anyLevel);
    EXPECT_EQ(finder.visit(*a), VisitorCore::Prune);
    EXPECT_EQ(finder.visit(*a), VisitorCore::Stop);
    EXPECT_EQ(finder.visit(*b), VisitorCore::Stop);
    EXPECT_EQ(finder.getMatch(), a);
}

TEST_F(FindFieldTest, ThrowsWithoutAPredicate) {
    FindField finder({}, 0, anyLevel);
    EXPECT_THROW(root->fieldVisitor(finder, 1), std::bad_function_call);
}

TEST_F(FindFieldTest, ThrowsForAMatchThatNobodyOwns) {
    Loose loose;
    FindField finder([](const AttrContainer&) { return true; }, 0, anyLevel);
    EXPECT_THROW(loose.fieldVisitor(finder, 1), std::bad_weak_ptr);
}

// Collecting --------------------------------------------------------------------------------------

TEST_F(CollectFieldsTest, CollectsAllMatchesInTheOrderOfTheWalk) {
    CollectFields collector(isNamed("x"), 0, anyLevel);

    EXPECT_EQ(root->fieldVisitor(collector, 1), VisitorCore::Continue);

    ASSERT_EQ(collector.getNumElements(), 2u);
    EXPECT_EQ(collector.get(0), ax);
    EXPECT_EQ(collector.get(1), bx);
    EXPECT_EQ(collector.get(2), nullptr);
    std::vector<std::shared_ptr<AttrContainer>> walked;
    for (const auto& field : collector) walked.push_back(field);
    EXPECT_EQ(walked, (std::vector<std::shared_ptr<AttrContainer>>{ax, bx}));
}

TEST_F(CollectFieldsTest, GoesOnBelowAMatch) {
    CollectFields collector([](const AttrContainer&) { return true; }, 0, anyLevel);
    root->fieldVisitor(collector, 1);
    EXPECT_EQ(collector.getNumElements(), 5u);
    EXPECT_EQ(collector.get(0), root);
    EXPECT_EQ(collector.get(2), ax);
}

TEST_F(CollectFieldsTest, HoldsAFieldOncePerVisit) {
    CollectFields collector(isNamed("a"), 0, anyLevel);
    root->fieldVisitor(collector, 1);
    root->fieldVisitor(collector, 1);
    EXPECT_EQ(collector.getNumElements(), 2u);
    EXPECT_EQ(collector.get(1), a);
    collector.clearList();
    EXPECT_EQ(collector.getNumElements(), 0u);
    EXPECT_EQ(collector.begin(), collector.end());
}

TEST_F(CollectFieldsTest, EndsAtTheContainerThatItShallStopAt) {
    CollectFields collector(isNamed("x"), 0, anyLevel);
    collector.setStopAt(b);

    EXPECT_EQ(root->fieldVisitor(collector, 1), VisitorCore::Stop);

    ASSERT_EQ(collector.getNumElements(), 1u);
    EXPECT_EQ(collector.get(0), ax);
}

TEST_F(CollectFieldsTest, CollectsTheContainerThatItShallStopAtAndGoesOn) {
    CollectFields collector(isNamed("x"), 0, anyLevel);
    collector.setStopAt(ax);

    EXPECT_EQ(root->fieldVisitor(collector, 1), VisitorCore::Continue);

    EXPECT_EQ(collector.getNumElements(), 2u);  // a match is taken ahead of the stop
}

TEST_F(CollectFieldsTest, ThrowsWithoutAPredicate) {
    CollectFields collector({}, 0, anyLevel);
    EXPECT_THROW(root->fieldVisitor(collector, 1), std::bad_function_call);
}
