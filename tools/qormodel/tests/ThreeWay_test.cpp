// What comes of two versions of one document.
#include "merge/ThreeWay.h"

#include "compare/Diff.h"
#include "support/Sample.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qormodel {
namespace {

using namespace testing;

using Change = std::function<void(ac::Object& root)>;

// A document with two scans in a folder, a field and a value.
Document makeBase() {
    Document document = makeDocument();
    const auto scans = addObject(*document.root, "Scans", 1);
    put(*scans, "Count", 2);
    addField(*addObject(*scans, "a", 2), "Box");
    addObject(*scans, "b", 3);
    addObject(*document.root, "Archive", 4);
    return document;
}

std::shared_ptr<ac::Object> at(ac::Object& root, const std::string& path) {
    return root.inqObject(path);
}

void move(ac::Object& root, const std::string& path, const std::string& parent) {
    const auto object = at(root, path);
    object->getParent()->rmChild(*object, 0);
    (parent == "/" ? root : *at(root, parent)).addChild(object, 0);
}

void remove(ac::Object& root, const std::string& path) {
    const auto object = at(root, path);
    object->getParent()->rmChild(*object, 0);
}

struct Merged {
    Merged(const Change& here, const Change& there, std::optional<Side> preferred = std::nullopt)
        : base(makeBase()), ours(makeBase()), theirs(makeBase()) {
        here(*ours.root);
        there(*theirs.root);
        result = mergeThreeWays(base, ours, theirs, preferred);
    }
    std::string conflicts() const {
        std::string text;
        for (const auto& conflict : result.conflicts)
            text += conflict.path + ": " + conflict.text + '\n';
        return text;
    }

    Document base;
    Document ours;
    Document theirs;
    ThreeWayResult result;
};

const Change nothing = [](ac::Object&) {};

TEST(ThreeWayMerge, TakesAValueThatOneSideChanged) {
    const Change change = [](ac::Object& root) { put(*at(root, "/Scans"), "Count", 5); };

    const Merged fromThere(nothing, change);
    const Merged fromHere(change, nothing);

    EXPECT_EQ(valueAt(fromThere.ours, "/Scans/Count"), "5");
    EXPECT_EQ(valueAt(fromHere.ours, "/Scans/Count"), "5");
    EXPECT_EQ(fromThere.conflicts() + fromHere.conflicts(), "");
    EXPECT_EQ(fromThere.result.numAttributes, 1U);
    EXPECT_EQ(fromHere.result.numAttributes, 0U);
}

TEST(ThreeWayMerge, IsContentWhereBothChangedTheSame) {
    const Change change = [](ac::Object& root) { put(*at(root, "/Scans"), "Count", 5); };

    const Merged merged(change, change);

    EXPECT_EQ(valueAt(merged.ours, "/Scans/Count"), "5");
    EXPECT_EQ(merged.conflicts(), "");
}

TEST(ThreeWayMerge, KeepsOursInAConflictOrThePreferredSide) {
    const Change five = [](ac::Object& root) { put(*at(root, "/Scans"), "Count", 5); };
    const Change six = [](ac::Object& root) { put(*at(root, "/Scans"), "Count", 6); };

    const Merged merged(five, six);
    const Merged ours(five, six, Side::Ours);
    const Merged theirs(five, six, Side::Theirs);

    EXPECT_EQ(valueAt(merged.ours, "/Scans/Count"), "5");
    ASSERT_EQ(merged.conflicts(), "/Scans/Count: changed on both sides\n");
    EXPECT_EQ(merged.result.conflicts[0].base, "2");
    EXPECT_EQ(merged.result.conflicts[0].ours, "5");
    EXPECT_EQ(merged.result.conflicts[0].theirs, "6");
    EXPECT_EQ(valueAt(ours.ours, "/Scans/Count"), "5");
    EXPECT_EQ(valueAt(theirs.ours, "/Scans/Count"), "6");
    EXPECT_EQ(ours.conflicts() + theirs.conflicts(), "");
}

TEST(ThreeWayMerge, AddsAndRemovesAttributes) {
    const Merged merged([](ac::Object& root) { put(*at(root, "/Scans/a"), "Mine", 1); },
                        [](ac::Object& root) {
                            put(*at(root, "/Scans/a"), "Yours", "x");
                            at(root, "/Scans")->rmAttribute("Count");
                        });

    EXPECT_EQ(valueAt(merged.ours, "/Scans/a/Mine"), "1");
    EXPECT_EQ(valueAt(merged.ours, "/Scans/a/Yours"), "x");
    EXPECT_EQ(valueAt(merged.ours, "/Scans/Count"), "none");
    EXPECT_EQ(merged.conflicts(), "");
}

TEST(ThreeWayMerge, TakesTheTypeWithTheValue) {
    const Merged merged(nothing, [](ac::Object& root) {
        at(root, "/Scans")->rmAttribute("Count");
        put(*at(root, "/Scans"), "Count", "two");
    });

    EXPECT_EQ(valueAt(merged.ours, "/Scans/Count"), "two");
}

TEST(ThreeWayMerge, FindsAConflictWhereOneSideRemovedTheAttribute) {
    const Merged merged([](ac::Object& root) { at(root, "/Scans")->rmAttribute("Count"); },
                        [](ac::Object& root) { put(*at(root, "/Scans"), "Count", 6); });

    EXPECT_EQ(merged.conflicts(), "/Scans/Count: changed on both sides\n");
    EXPECT_EQ(valueAt(merged.ours, "/Scans/Count"), "none");
}

TEST(ThreeWayMerge, AddsObjectsAndFieldsOfBothSides) {
    const Merged merged([](ac::Object& root) { addObject(*at(root, "/Scans"), "mine", 10); },
                        [](ac::Object& root) {
                            const auto added = addObject(*at(root, "/Scans"), "yours", 11);
                            put(*addObject(*added, "below", 12), "Deep", 7);
                            addField(*at(root, "/Scans/b"), "Extra");
                        });

    EXPECT_EQ(pathsOf(merged.ours),
              "/\n/Scans\n/Scans/a\n/Scans/a/Box\n/Scans/b\n/Scans/b/Extra\n/Scans/mine\n"
              "/Scans/yours\n/Scans/yours/below\n/Archive\n");
    EXPECT_EQ(valueAt(merged.ours, "/Scans/yours/below/Deep"), "7");
    EXPECT_EQ(merged.result.numAdded, 3U);
    EXPECT_EQ(merged.conflicts(), "");
}

TEST(ThreeWayMerge, KeepsBothOfTwoNewObjectsThatHaveOneName) {
    const Merged merged([](ac::Object& root) { addObject(*at(root, "/Scans"), "c", 10); },
                        [](ac::Object& root) { addObject(*at(root, "/Scans"), "c", 11); });

    EXPECT_EQ(at(*merged.ours.root, "/Scans")->getNumChildren(), 4U);
    EXPECT_EQ(merged.result.conflicts.size(), 1U);
    EXPECT_NE(at(*merged.ours.root, "/Scans")->getChild(3)->getName(), "c");
}

TEST(ThreeWayMerge, TakesANewObjectThatBothHaveForOne) {
    const Change add = [](ac::Object& root) { addObject(*at(root, "/Scans"), "c", 10); };

    const Merged merged(add, add);

    EXPECT_EQ(at(*merged.ours.root, "/Scans")->getNumChildren(), 3U);
    EXPECT_EQ(merged.conflicts(), "");
}

TEST(ThreeWayMerge, RemovesWhatOneSideRemovedAndTheOtherLeftAlone) {
    const Change change = [](ac::Object& root) {
        remove(root, "/Scans/b");
        at(root, "/Scans/a")->rmField("Box");
    };

    const Merged fromThere(nothing, change);
    const Merged fromHere(change, nothing);

    EXPECT_EQ(pathsOf(fromThere.ours), "/\n/Scans\n/Scans/a\n/Archive\n");
    EXPECT_EQ(pathsOf(fromHere.ours), "/\n/Scans\n/Scans/a\n/Archive\n");
    EXPECT_EQ(fromThere.conflicts() + fromHere.conflicts(), "");
    EXPECT_EQ(fromThere.result.numRemoved, 2U);
}

TEST(ThreeWayMerge, FindsAConflictWhereTheRemovedWasChangedFurtherDown) {
    const Change change = [](ac::Object& root) { put(*at(root, "/Scans/a"), "Note", "x"); };
    const Change rm = [](ac::Object& root) { remove(root, "/Scans"); };

    const Merged keptHere(change, rm);
    const Merged goneHere(rm, change);
    const Merged theirs(change, rm, Side::Theirs);
    const Merged theirsBack(rm, change, Side::Theirs);

    EXPECT_EQ(pathsOf(keptHere.ours), pathsOf(makeBase()));
    EXPECT_EQ(keptHere.conflicts(), "/Scans: removed there, changed here\n");
    EXPECT_EQ(pathsOf(goneHere.ours), "/\n/Archive\n");
    EXPECT_EQ(goneHere.conflicts(), "/Scans: removed here, changed there\n");
    EXPECT_EQ(pathsOf(theirs.ours), "/\n/Archive\n");
    EXPECT_EQ(valueAt(theirsBack.ours, "/Scans/a/Note"), "x");
}

TEST(ThreeWayMerge, FindsAConflictWhereSomethingWasAddedToTheRemoved) {
    const Change add = [](ac::Object& root) { addObject(*at(root, "/Archive"), "new", 10); };
    const Change rm = [](ac::Object& root) { remove(root, "/Archive"); };

    const Merged kept(add, rm);
    const Merged gone(rm, add);

    EXPECT_TRUE(at(*kept.ours.root, "/Archive/new"));
    EXPECT_EQ(kept.conflicts(), "/Archive: removed there, changed here\n");
    EXPECT_FALSE(at(*gone.ours.root, "/Archive"));
    EXPECT_EQ(gone.conflicts(), "/Archive: removed here, changed there\n");
}

TEST(ThreeWayMerge, CombinesARenameAMoveAndAValue) {
    const Merged merged([](ac::Object& root) { at(root, "/Scans/b")->name("renamed"); },
                        [](ac::Object& root) {
                            put(*at(root, "/Scans/b"), "Note", "x");
                            move(root, "/Scans/b", "/Archive");
                        });

    EXPECT_EQ(valueAt(merged.ours, "/Archive/renamed/Note"), "x");
    EXPECT_FALSE(at(*merged.ours.root, "/Scans/b"));
    EXPECT_EQ(merged.conflicts(), "");
}

TEST(ThreeWayMerge, MovesAnObjectOutOfWhatIsRemovedAndIntoWhatIsNew) {
    const Merged merged(nothing, [](ac::Object& root) {
        addObject(root, "Fresh", 10);
        move(root, "/Scans/b", "/Fresh");
        remove(root, "/Scans");
    });

    EXPECT_EQ(pathsOf(merged.ours), "/\n/Archive\n/Fresh\n/Fresh/b\n");
    EXPECT_EQ(merged.conflicts(), "");
}

TEST(ThreeWayMerge, KeepsAnObjectWhereOursHasItWhenBothMovedIt) {
    const Merged merged([](ac::Object& root) { move(root, "/Scans/b", "/Archive"); },
                        [](ac::Object& root) { move(root, "/Scans/b", "/"); });

    EXPECT_TRUE(at(*merged.ours.root, "/Archive/b"));
    EXPECT_FALSE(at(*merged.ours.root, "/b"));
    EXPECT_EQ(merged.result.conflicts.size(), 1U);
}

TEST(ThreeWayMerge, ClosesNoCircle) {
    const Merged merged([](ac::Object& root) { move(root, "/Archive", "/Scans"); },
                        [](ac::Object& root) { move(root, "/Scans", "/Archive"); });

    EXPECT_EQ(pathsOf(merged.ours),
              "/\n/Scans\n/Scans/a\n/Scans/a/Box\n/Scans/b\n/Scans/Archive\n");
    EXPECT_EQ(merged.conflicts(), "/Scans: the moves of both sides would close a circle\n");
}

TEST(ThreeWayMerge, LeavesNoTwoSiblingsOfOneName) {
    const Merged merged([](ac::Object& root) { at(root, "/Scans/a")->name("same"); },
                        [](ac::Object& root) { at(root, "/Scans/b")->name("Same"); });

    const auto scans = at(*merged.ours.root, "/Scans");
    EXPECT_EQ(scans->getChild(0)->getName(), "same");
    EXPECT_NE(scans->getChild(1)->getName(), "Same");
    EXPECT_EQ(merged.result.conflicts.size(), 1U);
}

TEST(ThreeWayMerge, TakesOverRelationsOfAttributes) {
    LoadedText base(textWithoutRelation());
    LoadedText ours(textWithoutRelation());
    LoadedText theirs(projectText);

    const auto added = mergeThreeWays(base.document, ours.document, theirs.document, std::nullopt);
    LoadedText oursWith(projectText);
    const auto removed =
        mergeThreeWays(theirs.document, oursWith.document, base.document, std::nullopt);

    EXPECT_TRUE(added.conflicts.empty());
    EXPECT_TRUE(removed.conflicts.empty());
    EXPECT_EQ(numRelations(ours.document), 1U);
    EXPECT_EQ(numRelations(oursWith.document), 0U);
}

TEST(ThreeWayMerge, TellsOfContentThatIsNotUnderstoodAndWasChangedThere) {
    const LoadedText base(textWithUnknown("Echo"));
    LoadedText ours(textWithUnknown("Echo"));
    LoadedText theirs(textWithUnknown("Sound"));
    LoadedText changedHere(textWithUnknown("Sound"));

    const auto there = mergeThreeWays(base.document, ours.document, theirs.document, Side::Ours);
    const auto here =
        mergeThreeWays(base.document, changedHere.document, ours.document, std::nullopt);

    ASSERT_EQ(there.conflicts.size(), 1U);
    EXPECT_EQ(there.conflicts[0].path, "/r");
    EXPECT_TRUE(here.conflicts.empty());
}

}  // namespace
}  // namespace qormodel
