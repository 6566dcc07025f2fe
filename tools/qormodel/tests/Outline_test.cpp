// What the text of a model file holds, with the places of it all.
#include "outline/Outline.h"

#include "support/Sample.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;
using qormodel::testing::modelText;
using qormodel::testing::projectText;
using qormodel::testing::TemporaryFile;
using Strings = std::vector<std::string>;
using Kind = ElementText::Kind;

namespace {

Outline outlineOf(const std::string& text) {
    const TemporaryFile file(text);
    return readOutline(SourceFile(file.getName()));
}

// The only fault of a text, as "LINE PATH: TEXT".
std::string faultOf(const std::string& text) {
    const Outline outline = outlineOf(text);
    if (!outline.broken) return "";
    return std::to_string(outline.broken->line) + ' ' + outline.pathOf(outline.broken->element) +
           ": " + outline.broken->text;
}

std::string textAt(const std::string& text, const Slice& slice) {
    return text.substr(slice.begin, slice.end - slice.begin);
}

}  // namespace

TEST(Outline, HoldsTitleAndVersionOfTheHeader) {
    const Outline outline = outlineOf("\"A title\"\n\"kVLib\" 9.1.0.0\nAttrContainer { \n}\n");

    EXPECT_TRUE(outline.hasHeader);
    EXPECT_EQ(outline.title, "A title");
    EXPECT_EQ(outline.versions, Strings{"9.1.0.0"});
    EXPECT_EQ(outline.bodyLine, 3u);
    EXPECT_EQ(outline.bodyBegin, 26u);  // 9 characters and 15 characters, each with a line feed
}

TEST(Outline, HoldsTheVersionOfTheRootModelToo) {
    const Outline outline = outlineOf("\"T\"\n\"kVLib\" 9.1.0.0\n\"RootModel\" 2.0.0.0\n");

    EXPECT_EQ(outline.versions, (Strings{"9.1.0.0", "2.0.0.0"}));
}

TEST(Outline, TellsThatThereIsNoHeader) {
    EXPECT_FALSE(outlineOf("AttrContainer { \n}\n").hasHeader);
    EXPECT_FALSE(outlineOf("").hasHeader);
}

TEST(Outline, TellsTheXmlFormByItsFirstCharacter) {
    EXPECT_FALSE(outlineOf("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n").isTextForm);
    EXPECT_TRUE(outlineOf("\"T\"\n").isTextForm);
}

TEST(Outline, ListsElementsEachBehindItsParent) {
    const Outline outline = outlineOf(projectText);

    ASSERT_EQ(outline.elements.size(), 4u);
    EXPECT_EQ(outline.pathOf(0), "/");
    EXPECT_EQ(outline.pathOf(1), "/Scans");
    EXPECT_EQ(outline.pathOf(2), "/Scans/Box");
    EXPECT_EQ(outline.pathOf(3), "/Scans/First");
    EXPECT_EQ(outline.elements[1].kind, Kind::Child);
    EXPECT_EQ(outline.elements[2].kind, Kind::Field);
    EXPECT_EQ(outline.elements[2].className, "AttrContainer");
    EXPECT_EQ(outline.elements[1].fields, std::vector<std::size_t>{2});
    EXPECT_EQ(outline.elements[1].children, std::vector<std::size_t>{3});
    EXPECT_EQ(outline.elements[3].parent, 1u);
    EXPECT_FALSE(outline.broken);
}

TEST(Outline, KnowsTypeNameLineAndValueOfAttributes) {
    const std::string text = modelText(
        "AttrContainer { \nAttr<int> { \nName \"Count\"\nValue 12\n}\n"
        "Attr<IntVector> { \nName \"List\"\nValue { 1 \n2 } \n}\n"
        "Attr<String> { \nName \"Empty\"\n}\n}\n");

    const Outline outline = outlineOf(text);

    const auto& attributes = outline.elements[0].attributes;
    ASSERT_EQ(attributes.size(), 3u);
    EXPECT_EQ(attributes[0].type, "Attr<int>");
    EXPECT_EQ(attributes[0].name, "Count");
    EXPECT_EQ(attributes[0].line, 4u);
    EXPECT_EQ(attributes[0].value.line, 6u);
    EXPECT_EQ(textAt(text, attributes[0].value), "12");
    EXPECT_EQ(textAt(text, attributes[1].value), "{ 1 \n2 }");
    EXPECT_EQ(attributes[2].line, 13u);
    EXPECT_TRUE(attributes[2].value.isEmpty());
}

TEST(Outline, TakesAValueOverSeveralLinesWhole) {
    const std::string text = modelText(
        "AttrContainer { \nAttr<Vec3dd> { \nName \"At\"\nValue 1\n2\n3\nWrite 1\n}\n}\n");

    const Outline outline = outlineOf(text);

    EXPECT_EQ(textAt(text, outline.elements[0].attributes[0].value), "1\n2\n3");
    EXPECT_TRUE(outline.elements[0].attributes[0].isWrite);
}

TEST(Outline, TakesBracesInTheTextsOfAMapForText) {
    const std::string text = modelText(
        "AttrContainer { \nAttr<StringMap> { \nName \"Map\"\n"
        "Value 2 \"a } b\"=>\"c } d\" \"e\"=>\"{ \\\" }\"\n}\n}\n");

    const Outline outline = outlineOf(text);

    EXPECT_FALSE(outline.broken);
    EXPECT_EQ(textAt(text, outline.elements[0].attributes[0].value),
              "2 \"a } b\"=>\"c } d\" \"e\"=>\"{ \\\" }\"");
}

TEST(Outline, EndsNumbersAtABraceWithoutABlank) {
    const std::string text =
        modelText("AttrContainer { \nAttr<IntVector> { \nName \"L\"\nValue {1 2}\n}\n"
                  "Attr<int> { \nName \"N\"\nValue 5}\nAttr<int> { \nName \"M\"\n}\n}\n");

    const Outline outline = outlineOf(text);

    EXPECT_FALSE(outline.broken);
    const auto& attributes = outline.elements[0].attributes;
    ASSERT_EQ(attributes.size(), 3u);
    EXPECT_EQ(textAt(text, attributes[0].value), "{1 2}");
    EXPECT_EQ(textAt(text, attributes[1].value), "5");
}

TEST(Outline, EndsAListOfWordsAtABraceThatBeginsAWord) {
    const std::string body = "\nValue { true \"x {y }\n}\n";
    for (const char* const type : {"BoolVector", "Int8Vector", "UInt8Vector", "UuidSet",
                                   "UuidVector"}) {
        const std::string text = modelText("AttrContainer { \nAttr<" + std::string(type) +
                                           "> { \nName \"L\"" + body +
                                           "Attr<int> { \nName \"N\"\nValue 5\n}\n}\n");

        const Outline outline = outlineOf(text);

        EXPECT_FALSE(outline.broken) << type;
        const auto& attributes = outline.elements[0].attributes;
        ASSERT_EQ(attributes.size(), 2u) << type;
        EXPECT_EQ(textAt(text, attributes[0].value), "{ true \"x {y }");
        EXPECT_EQ(textAt(text, attributes[1].value), "5");
    }
}

TEST(Outline, TakesAnIdentifierInBracesWhole) {
    const std::string text =
        modelText("AttrContainer { \nAttr<Uuid> { \nName \"U\"\n"
                  "Value {00112233-4455-6677-8899-aabbccddeeff}\n}\n}\n");

    const Outline outline = outlineOf(text);

    EXPECT_FALSE(outline.broken);
    EXPECT_EQ(textAt(text, outline.elements[0].attributes[0].value),
              "{00112233-4455-6677-8899-aabbccddeeff}");
}

TEST(Outline, TakesKeywordsInATextForText) {
    const std::string text = modelText(
        "AttrContainer { \nAttr<String> { \nName \"T\"\nValue \"Child { \\\"Value\\\" }\"\n}\n}\n");

    const Outline outline = outlineOf(text);

    EXPECT_EQ(outline.elements.size(), 1u);
    EXPECT_EQ(textAt(text, outline.elements[0].attributes[0].value),
              "\"Child { \\\"Value\\\" }\"");
}

TEST(Outline, ListsRelationsOfAttributesAndOfContainers) {
    const Outline outline = outlineOf(modelText(
        "AttrContainer { \nAttr<int> { \nName \"A\"\nPreObserver \nObserverPath { \nPath \"/X\"\n"
        "Priority -2\nAction \"PreNotify\"\n}\n}\n"
        "PostObserver \nObserverPath { \nPath \"/Y\"\nAction \"Notify\"\n}\n}\n"));

    const ElementText& root = outline.elements[0];
    ASSERT_EQ(root.attributes.size(), 1u);
    ASSERT_EQ(root.attributes[0].relations.size(), 1u);
    const RelationText& asked = root.attributes[0].relations[0];
    EXPECT_TRUE(asked.isAsked);
    EXPECT_EQ(asked.path, "/X");
    EXPECT_EQ(asked.priority, "-2");
    EXPECT_EQ(asked.action, "PreNotify");
    EXPECT_EQ(asked.line, 7u);
    ASSERT_EQ(root.relations.size(), 1u);
    EXPECT_FALSE(root.relations[0].isAsked);
    EXPECT_EQ(root.relations[0].path, "/Y");
    EXPECT_EQ(root.relations[0].priority, "");
}

TEST(Outline, NotesWordsAndBlocksThatNoClassWrites) {
    const std::string text = modelText(
        "AttrContainer { \nStrange 5\nAlien { \n{ } \"}\"\n}\nAttr<int> { \nName \"A\"\n}\n}\n");

    const Outline outline = outlineOf(text);

    const auto& strays = outline.elements[0].strays;
    ASSERT_EQ(strays.size(), 3u);
    EXPECT_EQ(textAt(text, strays[0]), "Strange");
    EXPECT_EQ(textAt(text, strays[1]), "5");
    EXPECT_EQ(textAt(text, strays[2]), "Alien { \n{ } \"}\"\n}");
    EXPECT_EQ(strays[2].line, 5u);
    EXPECT_EQ(outline.elements[0].attributes.size(), 1u);
}

TEST(Outline, KnowsNumbersOfInstancesAndReferencesToThem) {
    const Outline outline = outlineOf(modelText(
        "SharedInstanceCollection { \nInstances { 7 \n}\n}\nAttrContainer { \n"
        "SubContainer { \n\"AttrContainer\" \"A\"\nInstanceID 7\nAttrContainer { \n}\n}\n"
        "SubContainer { \n\"AttrContainer\" \"B\"\nInstanceID 7\nReferenceToShared \n}\n}\n"));

    EXPECT_EQ(outline.instances, std::vector<std::uint64_t>{7});
    ASSERT_EQ(outline.elements.size(), 3u);
    EXPECT_EQ(outline.elements[1].instance, 7u);
    EXPECT_FALSE(outline.elements[1].isReference);
    EXPECT_EQ(outline.elements[2].instance, 7u);
    EXPECT_TRUE(outline.elements[2].isReference);
}

TEST(Outline, FindsTheInnermostElementAtAPlace) {
    const Outline outline = outlineOf(projectText);
    const auto pathAt = [&](const std::string& word) {
        return outline.pathOf(outline.elementAt(projectText.find(word)));
    };

    EXPECT_EQ(pathAt("\"Test\""), "/");
    EXPECT_EQ(pathAt("\"Origin\""), "/");
    EXPECT_EQ(pathAt("\"Count\""), "/Scans");
    EXPECT_EQ(pathAt("\"Size\""), "/Scans/Box");
    EXPECT_EQ(pathAt("\"Points\""), "/Scans/First");
    EXPECT_EQ(outline.pathOf(outline.elementAt(projectText.size() - 1)), "/");
}

TEST(Outline, TellsTheInnermostBlockThatHasNoEnd) {
    EXPECT_EQ(faultOf(modelText("AttrContainer { \n}\nChild { \n\"Object\" \"A\"\n"
                                "AttrContainer { \nAttr<int> { \nName \"N\"\n")),
              "8 /A: the block Attr<int> that begins here has no end: expected }");
    EXPECT_EQ(faultOf(modelText("AttrContainer { \n")),
              "3 /: the block AttrContainer that begins here has no end: expected }");
}

TEST(Outline, TellsAListThatHasNoEnd) {
    EXPECT_EQ(faultOf(modelText("AttrContainer { \nAttr<IntVector> { \nName \"L\"\nValue { 1 2")),
              "6 /: the list that begins here has no end: expected }");
}

TEST(Outline, TellsAStringThatIsCut) {
    EXPECT_EQ(faultOf(modelText("AttrContainer { \nAttr<String> { \nName \"N\"\nValue \"half")),
              "6 /: the string that begins here has no closing quote");
    EXPECT_EQ(faultOf("\"half a title"), "1 /: the header text has no closing quote");
}

TEST(Outline, TellsABraceTooMany) {
    EXPECT_EQ(faultOf(modelText("AttrContainer { \n}\n}\n")),
              "5 /: unexpected }: no block is open here");
}

TEST(Outline, TellsAForeignBlockThatHasNoEnd) {
    EXPECT_EQ(faultOf(modelText("AttrContainer { \nAlien { \n{ }\n")),
              "4 /: the block Alien that begins here has no end: expected }");
}

TEST(Outline, ReadsAHundredThousandNestedBlocks) {
    std::string text = modelText("AttrContainer { \n}\n");
    constexpr int depth = 100'000;
    for (int i = 0; i < depth; ++i) text += "Child { \n\"Object\" \"A\"\n";
    for (int i = 0; i < depth; ++i) text += "}\n";

    const Outline outline = outlineOf(text);

    EXPECT_FALSE(outline.broken);
    EXPECT_EQ(outline.elements.size(), depth + 1u);
    EXPECT_EQ(outline.pathOf(depth).size(), 2u * depth);
}

TEST(Outline, TellsTheFaultInsideAHundredThousandOpenBlocks) {
    std::string text = modelText("AttrContainer { \n}\n");
    constexpr int depth = 100'000;
    for (int i = 0; i < depth; ++i) text += "Child { \n\"Object\" \"A\"\n";

    const Outline outline = outlineOf(text);

    ASSERT_TRUE(outline.broken);
    EXPECT_EQ(outline.broken->element, depth + 0u);
    EXPECT_EQ(outline.broken->line, 5u + 2 * (depth - 1));
}

TEST(Outline, KeepsNoMoreOfAnUnnamedForeignBlockThanItsPlace) {
    const std::string text = modelText("AttrContainer { \n{ 1 { 2 } }\n}\n");

    const Outline outline = outlineOf(text);

    ASSERT_EQ(outline.elements[0].strays.size(), 1u);
    EXPECT_EQ(textAt(text, outline.elements[0].strays[0]), "{ 1 { 2 } }");
    EXPECT_EQ(outline.elements[0].strays[0].line, 4u);
}
