// That a broken file tells its line, its path and what was expected.
#include "model/Document.h"

#include "support/Sample.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace qormodel;
using namespace qormodel::testing;

namespace {

// What is said of a text that cannot be read, behind the name of its file.
std::string failureOf(const std::string& text) {
    const TemporaryFile file(text);
    try {
        loadDocument(file.getName());
    } catch (const Failure& failure) {
        const std::string what = failure.what();
        EXPECT_TRUE(what.starts_with(file.getName() + ':')) << what;
        return what.substr(file.getName().size() + 1);
    }
    return "";
}

// The text of a document whose root holds these lines from line 4 on.
std::string inRoot(const std::string& lines) {
    return modelText("AttrContainer { \n" + lines + "}\n");
}

std::string nested(int depth) {
    std::string text = modelText("AttrContainer { \n}\n");
    for (int i = 0; i < depth; ++i) text += "Child { \n\"Object\" \"A\"\nAttrContainer { \n}\n";
    for (int i = 0; i < depth; ++i) text += "}\n";
    return text;
}

std::string written(const Document& document, const WriteOptions& options = {}) {
    std::stringbuf buffer;
    writeDocument(document, buffer, "test", options);
    return buffer.str();
}

}  // namespace

TEST(Document, RefusesWhatIsNoModelFile) {
    const std::string expected =
        "1: /: is no model file: expected a header text in quotes and a version";
    EXPECT_EQ(failureOf(""), expected);
    EXPECT_EQ(failureOf("x,y,z\n1,2,3\n"), expected);
    EXPECT_EQ(failureOf("\"a title\"\n"), expected);
    EXPECT_EQ(failureOf(std::string("\0\x01\x02{}", 5)), expected);
}

TEST(Document, RefusesTheXmlForms) {
    EXPECT_EQ(failureOf("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- XML v. 2 -->\n"),
              "1: /: is an XML form, which nothing reads back whole; expected a header text in "
              "quotes");
}

TEST(Document, TellsABlockThatHasNoEnd) {
    EXPECT_EQ(failureOf(modelText("AttrContainer { \n}\nChild { \n\"Object\" \"A\"\n")),
              "5: /A: the block Child that begins here has no end: expected }");
}

TEST(Document, TellsABraceTooMany) {
    EXPECT_EQ(failureOf(inRoot("}\n")), "5: /: unexpected }: no block is open here");
}

TEST(Document, TellsATextThatIsCut) {
    EXPECT_EQ(failureOf(inRoot("Attr<String> { \nName \"half\n}\n")),
              "5: /: the string that begins here has no closing quote");
}

TEST(Document, TellsANumberThatIsNone) {
    EXPECT_EQ(failureOf(inRoot("Attr<double> { \nName \"D\"\nValue 1e\n}\n")),
              "6: /: expected a number");
    EXPECT_EQ(failureOf(inRoot("Attr<Vec3ddVector> { \nName \"D\"\nValue { 1 2 3\n1 2 3e } \n}\n")),
              "7: /: expected a number");
}

TEST(Document, TellsAWordInThePlaceOfANumber) {
    EXPECT_EQ(failureOf(inRoot("Attr<int> { \nName \"N\"\nValue many\n}\n")),
              "6: /: cannot be interpreted: expected a block of a model");
}

TEST(Document, TellsAnUnknownTypeOfAnAttribute) {
    EXPECT_EQ(failureOf(inRoot("Attr<quaternion> { \nName \"Q\"\n}\n")),
              "4: /Q: Attr<quaternion> is no type of an attribute: expected one such as "
              "Attr<double>");
    EXPECT_EQ(failureOf(modelText("AttrContainer { \n}\nChild { \n\"Object\" \"A\"\n"
                                  "AttrContainer { \nAttr<int> { \nName \"N\"\nValue 1\n}\n"
                                  "Attr<ScanPt> { \nName \"P\"\n}\n}\n}\n")),
              "12: /A/P: Attr<ScanPt> is no type of an attribute: expected one such as "
              "Attr<double>");
}

TEST(Document, TellsAnUnknownWordInAnAttribute) {
    EXPECT_EQ(failureOf(inRoot("Attr<int> { \nName \"N\"\nColour 5\n}\n")),
              "6: /: cannot be interpreted: expected a block of a model");
}

TEST(Document, TellsANameWithoutAType) {
    EXPECT_EQ(failureOf(inRoot("Name \"N\"\n")),
              "4: /: an attribute cannot be made: expected a known type");
}

TEST(Document, TellsAReferenceWithoutItsNumber) {
    EXPECT_EQ(
        failureOf(inRoot("SubContainer { \n\"AttrContainer\" \"F\"\nReferenceToShared \n}\n")),
        "6: /F: a container cannot be attached");
}

TEST(Document, TellsThePathOfTheObjectInWhichAFaultLies) {
    EXPECT_EQ(failureOf(modelText("AttrContainer { \n}\nChild { \n\"Object\" \"A\"\n"
                                  "AttrContainer { \nSubContainer { \n\"AttrContainer\" \"F\"\n"
                                  "AttrContainer { \nAttr<double> { \nName \"D\"\nValue x\n"
                                  "}\n}\n}\n}\n}\n")),
              "13: /A/F: cannot be interpreted: expected a block of a model");
}

TEST(Document, ReadsAsDeepAsTheLibraryAllowsAndFailsBelow) {
    EXPECT_EQ(failureOf(nested(900)), "");
    const std::string failure = failureOf(nested(100'000));
    EXPECT_TRUE(failure.ends_with(
        ": lies too deep: expected 1000 levels of objects and fields at most"))
        << failure;
    EXPECT_LT(failure.size(), 600u);
}

TEST(Document, ComesBackAsItsCanonicalText) {
    const LoadedText loaded(projectText);

    EXPECT_TRUE(loaded.document.warnings.empty());
    EXPECT_EQ(written(loaded.document), projectText);
}

TEST(Document, CountsInstancesFromOneWhereAFieldHangsInTwoPlaces) {
    const LoadedText loaded(
        inRoot("SubContainer { \n\"AttrContainer\" \"A\"\nInstanceID 70\n"
               "AttrContainer { \n}\n}\nSubContainer { \n\"AttrContainer\" "
               "\"B\"\nInstanceID 70\nReferenceToShared \n}\n"));

    const std::string first = written(loaded.document);

    EXPECT_NE(first.find("\nInstances { { 1 } "), std::string::npos) << first;
    EXPECT_NE(first.find("\nInstanceID 1\n"), std::string::npos) << first;
    EXPECT_EQ(first.find("InstanceID 2"), std::string::npos) << first;
    EXPECT_EQ(written(loaded.document), first);
}

TEST(Document, KeepsTheVersionOfTheRootModel) {
    const LoadedText loaded(
        "\"T\"\n\"kVLib\" 9.1.0.0\n\"RootModel\" 1.0.0.0\nAttrContainer { \n}\n");

    EXPECT_EQ(loaded.document.outline.versions.size(), 2u);
    EXPECT_NE(written(loaded.document).find("\n\"RootModel\" "), std::string::npos);
}

TEST(Document, KnowsThatAFormatIsNewer) {
    const auto isNewer = [](const std::string& version) {
        const LoadedText loaded("\"T\"\n\"kVLib\" " + version + "\nAttrContainer { \n}\n");
        return loaded.document.isNewerThanLibrary();
    };

    EXPECT_TRUE(isNewer("9.2.0.0"));
    EXPECT_TRUE(isNewer("10.0.0.0"));
    EXPECT_FALSE(isNewer("9.1.0.0"));
    EXPECT_FALSE(isNewer("8.9.9.9"));
}

TEST(Document, PlacesTheWarningOfAnUnknownClassAtItsObject) {
    const LoadedText loaded(
        modelText("AttrContainer { \n}\nChild { \n\"Station\" \"A\"\n"
                  "AttrContainer { \n}\n}\n"));

    ASSERT_EQ(loaded.document.warnings.size(), 1u);
    EXPECT_EQ(loaded.document.warnings[0].place.line, 5u);
    EXPECT_EQ(loaded.document.warnings[0].place.path, "/A");
    EXPECT_EQ(loaded.document.warnings[0].text, "the class of the object is not known");
}
