// What is told of two documents that differ.
#include "compare/Diff.h"

#include "support/Sample.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace qormodel {
namespace {

using namespace testing;

// The changes in short, each on a line.
std::string changesOf(const Document& first, const Document& second) {
    std::string text;
    for (const auto& change : compareDocuments(first, second)) {
        text += std::string(1, change.sign) + ' ' + wordFor(change.kind) + ' ' + change.path;
        if (!change.otherPath.empty()) text += " => " + change.otherPath;
        if (!change.before.empty()) text += " [" + change.before + ']';
        if (!change.after.empty()) text += " (" + change.after + ')';
        text += '\n';
    }
    return text;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(Diff, TakesPicturesWithoutATimeForTheSame) {
    const std::string text =
        modelText("AttrContainer { \n}\nChild { \n\"Picture\" \"P\"\nAttrContainer { \n}\n}\n");
    const LoadedText first(text);
    const LoadedText second(text);
    const LoadedText timed(
        replaced(text, "\"P\"\nAttrContainer { \n",
                 "\"P\"\nAttrContainer { \nAttr<double> { \nName \"TimeStamp\"\nValue 12.5\n}\n"));

    EXPECT_EQ(changesOf(first.document, second.document), "");
    const auto changes = compareDocuments(timed.document, first.document);
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].path, "/P/TimeStamp");
    EXPECT_EQ(changes[0].before, "12.5");
}

TEST(Diff, TellsAttributesByName) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    put(*first.root, "Same", 1);
    put(*first.root, "Other", 1);
    put(*first.root, "Gone", 1);
    put(*first.root, "Type", 1);
    put(*second.root, "New", "x");
    put(*second.root, "Other", 2);
    put(*second.root, "Same", 1);
    put(*second.root, "Type", "1");

    EXPECT_EQ(changesOf(first, second),
              "~ attribute /Other [1] (2)\n- attribute /Gone [1]\n"
              "~ attribute /Type [1 Attr<int>] (1 Attr<String>)\n+ attribute /New (x)\n");
}

TEST(Diff, TellsWhatOneSideAloneHasAsOneDifference) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*addObject(*first.root, "old"), "below");
    addField(*addObject(*second.root, "new"), "Box");
    addField(*second.root, "Extra");

    EXPECT_EQ(changesOf(first, second),
              "+ field /Extra (AttrContainer)\n+ object /new (Object with 1 below)\n"
              "- object /old [Object with 1 below]\n");
}

TEST(Diff, TellsMovedAndRenamedObjectsAsSuch) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    for (const auto* const document : {&first, &second}) addObject(*document->root, "Archive", 9);
    addObject(*first.root, "a", 1);
    addObject(*first.root, "b", 2);
    addObject(*first.root, "c", 3);
    const auto archive = second.root->inqObject("/Archive");
    addObject(*archive, "a", 1);
    addObject(*second.root, "bb", 2);
    addObject(*archive, "cc", 3);

    EXPECT_EQ(changesOf(first, second),
              "~ place /a => /Archive/a [moved]\n~ place /b => /bb [renamed]\n"
              "~ place /c => /Archive/cc [moved and renamed]\n");
}

TEST(Diff, TellsAnotherOrderOfChildren) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    for (const char* const name : {"a", "b"}) addObject(*first.root, name);
    for (const char* const name : {"b", "a"}) addObject(*second.root, name);

    EXPECT_EQ(changesOf(first, second), "~ order / [children in another order]\n");
}

TEST(Diff, TellsHowListsDiffer) {
    const LoadedText first(valueModel("Attr<Vec3ddVector>", "{ 1 2 3 4 5 6 }"));
    const LoadedText second(valueModel("Attr<Vec3ddVector>", "{ 1 2 3 4 5 7 8 8 8 }"));

    EXPECT_EQ(changesOf(first.document, second.document),
              "~ attribute /Tested [2 elements] (3 elements, 1 of them others, the first at 1: "
              "4 5 6 -> 4 5 7)\n");
}

TEST(Diff, TellsTitlesAndRelations) {
    const LoadedText first(projectText);
    const LoadedText second(
        replaced(replaced(projectText, "Priority 3", "Priority 4"), "\"Test\"", "\"Another\""));

    EXPECT_EQ(changesOf(first.document, second.document),
              "~ title  [Test] (Another)\n"
              "- relation /Scans/Count [tells / (Notify, 3)]\n"
              "+ relation /Scans/Count (tells / (Notify, 4))\n");
}

TEST(Diff, FindsTheRelationsOfARenamedObjectAgain) {
    const std::string id =
        "Name \"UUID\"\nValue 00000000-0000-0000-0000-000000000007\n}\nAttr<int>";
    const std::string text = replaced(projectText, "Name \"UUID\"\n}\nAttr<int>", id);
    const LoadedText first(text);
    const LoadedText second(
        replaced(replaced(text, "\"Object\" \"Scans\"", "\"Object\" \"Scenes\""), "Value \"Scans\"",
                 "Value \"Scenes\""));

    EXPECT_EQ(changesOf(first.document, second.document), "~ place /Scans => /Scenes [renamed]\n");
}

TEST(Diff, TellsContentThatIsNotUnderstood) {
    const LoadedText first(textWithUnknown("Echo"));
    const LoadedText second(textWithUnknown("Sound"));

    EXPECT_EQ(compareDocuments(first.document, first.document).size(), 0U);
    const auto changes = compareDocuments(first.document, second.document);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].sign, '?');
    EXPECT_EQ(changes[0].path, "/r");
}

}  // namespace
}  // namespace qormodel
