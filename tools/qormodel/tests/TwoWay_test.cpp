// What becomes of a document that is brought to the state of another.
#include "merge/TwoWay.h"

#include "compare/Diff.h"
#include "support/Sample.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace qormodel {
namespace {

using namespace testing;

Document makeTarget() {
    Document document = makeDocument();
    put(*document.root, "Only", 1);
    const auto scans = addObject(*document.root, "Scans", 1);
    put(*scans, "Count", 2);
    addField(*addObject(*scans, "a", 2), "Box");
    addObject(*scans, "b", 3);
    addObject(*document.root, "Gone", 4);
    return document;
}

// Another value, another name, another place, something new, something that is missing.
Document makeSource() {
    Document document = makeDocument();
    const auto scans = addObject(*document.root, "Scans", 1);
    put(*scans, "Count", "two");
    put(*scans, "Note", "x");
    addObject(*scans, "first", 2);
    const auto fresh = addObject(*document.root, "Fresh", 5);
    addObject(*fresh, "b", 3);
    put(*addField(*fresh, "Extra"), "Size", 7);
    return document;
}

TEST(TwoWayMerge, BringsTheTargetToTheStateOfTheSource) {
    Document target = makeTarget();
    Document source = makeSource();

    const auto result = mergeTwoWays(target, source, {});

    EXPECT_EQ(compareDocuments(target, makeSource()).size(), 0U);
    EXPECT_EQ(result.notes.size(), 0U);
    EXPECT_EQ(result.numObjectsAdded, 1U);
    EXPECT_EQ(result.numObjectsRemoved, 1U);
    EXPECT_EQ(result.numObjectsMoved, 1U);
    EXPECT_EQ(result.values.numChanged, 2U);  // the count, and the name of the first scan
    EXPECT_EQ(result.values.numAttributesAdded, 1U);
    EXPECT_EQ(result.values.numAttributesRemoved, 1U);
    EXPECT_EQ(result.values.numFieldsRemoved, 1U);
}

TEST(TwoWayMerge, ChangesNothingInWhatIsTheSame) {
    Document target = makeTarget();
    Document source = makeTarget();

    const auto result = mergeTwoWays(target, source, {});

    EXPECT_EQ(result.values.numChanged, 0U);
    EXPECT_EQ(result.numObjectsAdded + result.numObjectsRemoved + result.numObjectsMoved, 0U);
    EXPECT_EQ(compareDocuments(target, makeTarget()).size(), 0U);
}

TEST(TwoWayMerge, BringsTheChildrenIntoTheOrderOfTheSource) {
    Document target = makeDocument();
    Document source = makeDocument();
    for (const char* const name : {"a", "b", "c"}) addObject(*target.root, name);
    for (const char* const name : {"c", "a", "b"}) addObject(*source.root, name);

    mergeTwoWays(target, source, {});

    EXPECT_EQ(pathsOf(target), "/\n/c\n/a\n/b\n");
}

TEST(TwoWayMerge, KeepsWhatTheSourceDoesNotHave) {
    Document target = makeTarget();
    Document source = makeSource();

    mergeTwoWays(target, source, {true, {}, Telling::Never});

    EXPECT_EQ(valueAt(target, "/Only"), "1");
    EXPECT_TRUE(target.root->inqObject("/Gone"));
    EXPECT_EQ(valueAt(target, "/Scans/Note"), "x");
    EXPECT_EQ(valueAt(target, "/Fresh/Extra/Size"), "7");
    EXPECT_EQ(pathsOf(target),
              "/\n/Scans\n/Scans/first\n/Scans/first/Box\n/Gone\n/Fresh\n/Fresh/Extra\n/Fresh/b\n");
}

TEST(TwoWayMerge, TakesOverOnlyWhatIsMarked) {
    Document target = makeTarget();
    Document source = makeSource();

    mergeTwoWays(target, source, {false, {"/Scans/Note"}, Telling::Never});

    EXPECT_EQ(valueAt(target, "/Scans/Note"), "x");
    EXPECT_EQ(valueAt(target, "/Scans/Count"), "2");
    EXPECT_EQ(pathsOf(target), pathsOf(makeTarget()));
}

TEST(TwoWayMerge, TakesOverAMarkedObjectWithAllBelowIt) {
    Document target = makeTarget();
    Document source = makeSource();

    mergeTwoWays(target, source, {false, {"/Fresh"}, Telling::Never});

    EXPECT_EQ(valueAt(target, "/Fresh/Extra/Size"), "7");
    EXPECT_TRUE(target.root->inqObject("/Fresh/b"));
    EXPECT_EQ(valueAt(target, "/Scans/Note"), "none");
}

TEST(TwoWayMerge, RefusesAMarkThatLeadsNowhere) {
    Document target = makeTarget();
    Document source = makeSource();

    EXPECT_THROW(mergeTwoWays(target, source, {false, {"/None"}, Telling::Never}), Failure);
}

TEST(TwoWayMerge, NotesAValueThatAnObserverRefuses) {
    Document target = makeDocument();
    Document source = makeDocument();
    {
        const ac::BlockObserver block;
        source.root->name("no name/");
    }

    const auto told = mergeTwoWays(target, source, {false, {}, Telling::Each});

    ASSERT_EQ(told.notes.size(), 1U);
    EXPECT_EQ(told.notes[0], "/Name: the value was refused, or is of another type");
    EXPECT_EQ(target.root->getName(), "Project");
}

TEST(TwoWayMerge, LeavesTwoSiblingsOfOneNameThatTheSourceHas) {
    Document target = makeTarget();
    Document source = makeTarget();
    source.root->inqObject("/Scans/b")->name("a");

    const auto result = mergeTwoWays(target, source, {});

    EXPECT_TRUE(result.notes.empty());
    EXPECT_EQ(target.root->inqObject("/Scans")->getChild(1)->getName(), "a");
}

TEST(TwoWayMerge, BringsTheRelationsOver) {
    LoadedText with(projectText);
    LoadedText bare(textWithoutRelation());
    LoadedText source(projectText);
    LoadedText bareSource(textWithoutRelation());
    EXPECT_TRUE(mergeTwoWays(bare.document, source.document, {}).notes.empty());
    EXPECT_TRUE(mergeTwoWays(with.document, bareSource.document, {}).notes.empty());

    EXPECT_EQ(numRelations(bare.document), 1U);
    EXPECT_EQ(numRelations(with.document), 0U);
}

TEST(TwoWayMerge, BringsTheChildrenOfAnObjectThatIsAFieldOfTheSourceAlone) {
    const auto make = [] {
        Document document = makeTarget();
        const auto place = ac::Object::create();
        place->name("Place");
        document.root->addField(place, "Place", 0);
        put(*addObject(*addObject(*place, "Room", 8), "Desk", 9), "Legs", 4);
        return document;
    };
    Document source = make();
    Document target = makeTarget();

    const auto result = mergeTwoWays(target, source, {});

    EXPECT_EQ(compareDocuments(target, make()).size(), 0U);
    EXPECT_EQ(valueAt(target, "/Place/Room/Desk/Legs"), "4");
    EXPECT_EQ(result.numObjectsAdded, 2U);
    EXPECT_EQ(result.values.numFieldsAdded, 1U);
}

}  // namespace
}  // namespace qormodel
