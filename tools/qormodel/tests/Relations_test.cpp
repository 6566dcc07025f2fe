// Who watches whom, and in which circles.
#include "model/Relations.h"

#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;
using namespace qormodel::testing;
using Cycle = std::vector<std::string>;

namespace {

std::string relation(const std::string& path, const std::string& action = "Notify") {
    return "PostObserver \nObserverPath { \nPath \"" + path + "\"\nPriority 0\nAction \"" + action +
           "\"\n}\n";
}

// A child with one attribute that relations hang on.
std::string child(const std::string& name, const std::string& relations) {
    return "Child { \n\"Object\" \"" + name + "\"\nAttrContainer { \nAttr<int> { \nName \"N\"\n" +
           relations + "}\n}\n}\n";
}

std::vector<Relation> relationsOf(const std::string& children) {
    return listRelations(LoadedText(modelText("AttrContainer { \n}\n" + children)).document);
}

Relation between(const std::string& holder, const std::string& target) {
    Relation relation;
    relation.holder = holder;
    relation.observable = holder + "/N";
    relation.target = target;
    return relation;
}

}  // namespace

TEST(Relations, TellWhereTheyLeadAndWhen) {
    const auto relations = listRelations(LoadedText(projectText).document);

    ASSERT_EQ(relations.size(), 1u);
    EXPECT_EQ(relations[0].observable, "/Scans/Count");
    EXPECT_EQ(relations[0].holder, "/Scans");
    EXPECT_EQ(relations[0].observer, "/");
    EXPECT_EQ(relations[0].target, "/");
    EXPECT_EQ(relations[0].action, "Notify");
    EXPECT_EQ(relations[0].priority, "3");
    EXPECT_FALSE(relations[0].isAsked);
    EXPECT_TRUE(relations[0].isActionKnown);
}

TEST(Relations, LeadFromTheirHolderByRelativePaths) {
    const auto relations = relationsOf(child("A", relation("~/B")) + child("B", ""));

    ASSERT_EQ(relations.size(), 1u);
    EXPECT_EQ(relations[0].observer, "~/B");
    EXPECT_EQ(relations[0].target, "/B");
}

TEST(Relations, HaveNoTargetWhereTheirObserverIsNotThere) {
    const auto relations = relationsOf(child("A", relation("/Gone")));

    ASSERT_EQ(relations.size(), 1u);
    EXPECT_EQ(relations[0].observer, "/Gone");
    EXPECT_EQ(relations[0].target, "");
    EXPECT_EQ(relations[0].line, 11u);
}

TEST(Relations, TellAnActionThatIsNotKnown) {
    const auto relations = relationsOf(child("A", relation("/", "Dance")));

    ASSERT_EQ(relations.size(), 1u);
    EXPECT_FALSE(relations[0].isActionKnown);
}

TEST(Cycles, AreFoundBetweenTwoContainers) {
    const auto relations = relationsOf(child("A", relation("/B")) + child("B", relation("/A")));

    EXPECT_EQ(findCycles(relations), std::vector<Cycle>{(Cycle{"/A", "/B"})});
}

TEST(Cycles, AreFoundAlongThreeContainersWithTheirWayIn) {
    const auto cycles = findCycles(
        {between("/In", "/A"), between("/A", "/B"), between("/B", "/C"), between("/C", "/A")});

    EXPECT_EQ(cycles, std::vector<Cycle>{(Cycle{"/A", "/B", "/C"})});
}

TEST(Cycles, AreToldEachByItself) {
    const auto cycles = findCycles(
        {between("/A", "/B"), between("/B", "/A"), between("/C", "/D"), between("/D", "/C")});

    EXPECT_EQ(cycles, (std::vector<Cycle>{{"/A", "/B"}, {"/C", "/D"}}));
}

TEST(Cycles, AreNotMadeByAContainerThatWatchesItself) {
    EXPECT_TRUE(findCycles({between("/A", "/A")}).empty());
    EXPECT_TRUE(findCycles({between("/A", "/A/N")}).empty());
}

TEST(Cycles, AreNotMadeByTwoWaysToOnePlaceOrByDeadEnds) {
    EXPECT_TRUE(findCycles({between("/A", "/B"), between("/A", "/C"), between("/B", "/D"),
                            between("/C", "/D"), between("/D", "")})
                    .empty());
}

TEST(Cycles, AreFoundOverAHundredThousandContainers) {
    constexpr int number = 100'000;
    std::vector<Relation> relations;
    for (int i = 0; i < number; ++i)
        relations.push_back(
            between('/' + std::to_string(i), '/' + std::to_string((i + 1) % number)));

    const auto cycles = findCycles(relations);

    ASSERT_EQ(cycles.size(), 1u);
    EXPECT_EQ(cycles[0].size(), static_cast<std::size_t>(number));
}
