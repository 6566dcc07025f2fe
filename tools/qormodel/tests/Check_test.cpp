// What is wrong with documents that can be read, one finding a test.
#include "model/Check.h"

#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;
using namespace qormodel::testing;
using Strings = std::vector<std::string>;

namespace {

// The findings of a text, each as "SEVERITY KIND LINE PATH: TEXT".
Strings findingsOf(const std::string& text) {
    const LoadedText loaded(text);
    Strings found;
    for (const auto& finding : checkDocument(loaded.document)) {
        EXPECT_EQ(finding.place.file, loaded.file.getName());
        const bool isProblem = finding.severity == Finding::Severity::Problem;
        found.push_back((isProblem ? "problem " : "warning ") + finding.kind + ' ' +
                        std::to_string(finding.place.line) + ' ' + finding.place.path + ": " +
                        finding.text);
    }
    return found;
}

// Whether a finding is among those of a text.
::testing::AssertionResult finds(const std::string& text, const std::string& finding) {
    std::string all;
    for (const auto& each : findingsOf(text)) {
        if (each == finding) return ::testing::AssertionSuccess();
        all += each + '\n';
    }
    return ::testing::AssertionFailure() << "found:\n" << all;
}

std::string object(const std::string& className, const std::string& name,
                   const std::string& attributes = "") {
    return "Child { \n\"" + className + "\" \"" + name + "\"\nAttrContainer { \n" + attributes +
           "}\n}\n";
}

std::string relation(const std::string& path, const std::string& action) {
    return "Attr<int> { \nName \"N\"\nPostObserver \nObserverPath { \nPath \"" + path +
           "\"\nAction \"" + action + "\"\n}\n}\n";
}

const std::string root = "AttrContainer { \n}\n";

}  // namespace

TEST(Check, FindsNothingInACleanFile) { EXPECT_EQ(findingsOf(projectText), Strings{}); }

TEST(Check, FindsAFormatThatIsNewer) {
    EXPECT_EQ(findingsOf("\"T\"\n\"kVLib\" 99.0.0.0\n" + root),
              Strings{"problem version 1 /: format 99.0.0.0 is newer than this program"});
}

TEST(Check, FindsAnObjectOfAnUnknownClass) {
    EXPECT_EQ(findingsOf(modelText(root + object("Station", "A"))),
              Strings{"warning class 5 /A: the class Station is not known to this program"});
}

TEST(Check, FindsAFieldOfAnUnknownClass) {
    EXPECT_EQ(findingsOf(modelText("AttrContainer { \nSubContainer { \n\"Tripod\" \"Legs\"\n"
                                   "AttrContainer { \n}\n}\n}\n")),
              Strings{"warning class 4 /Legs: the class Tripod is not known to this program"});
}

TEST(Check, FindsAnAttributeOfAnUnknownTypeInAnObjectOfAnUnknownClass) {
    const std::string attribute = "Attr<quaternion> { \nName \"Q\"\n}\n";
    EXPECT_TRUE(finds(modelText(root + object("Station", "A", attribute)),
                      "problem type 8 /A: Attr<quaternion> is no type of an attribute"));
}

TEST(Check, FindsANameThatIsNotValid) {
    EXPECT_TRUE(finds(modelText(root + object("Object", "a b")),
                      "problem name 5 /a b: \"a b\" is no valid name"));
}

TEST(Check, FindsTwoNeighboursWhoseNamesDifferOnlyInCase) {
    EXPECT_TRUE(finds(modelText(root + object("Object", "scan") + object("Object", "SCAN")),
                      "problem name 10 /SCAN: the name is taken already in /"));
}

TEST(Check, FindsAChildWithTheNameOfAnAttribute) {
    EXPECT_TRUE(finds(
        modelText("AttrContainer { \nAttr<int> { \nName \"A\"\n}\n}\n" + object("Object", "A")),
        "problem name 8 /A: the name is taken already in /"));
}

TEST(Check, FindsAnAttributeThatIsThereTwice) {
    EXPECT_TRUE(finds(modelText("AttrContainer { \nAttr<int> { \nName \"A\"\nValue 1\n}\n"
                                "Attr<int> { \nName \"A\"\nValue 2\n}\n}\n"),
                      "problem name 8 /: the attribute A is there twice"));
}

TEST(Check, FindsARelationWhoseObserverIsNotThere) {
    EXPECT_TRUE(finds(modelText(root + object("Object", "A", relation("/Gone", "Notify"))),
                      "problem relation 11 /A/N: the observer /Gone is not there"));
}

TEST(Check, FindsARelationWhoseActionIsNotKnown) {
    EXPECT_TRUE(finds(modelText(root + object("Object", "A", relation("/", "Dance"))),
                      "problem relation 11 /A/N: the action \"Dance\" is not known"));
}

TEST(Check, FindsAReferenceToWhatDoesNotStandAheadOfIt) {
    EXPECT_TRUE(finds(modelText("AttrContainer { \nSubContainer { \n\"AttrContainer\" \"F\"\n"
                                "InstanceID 7\nReferenceToShared \n}\n}\n"),
                      "problem reference 4 /F: refers to instance 7, which does not stand ahead "
                      "of it"));
}

TEST(Check, FindsTwoInstancesOfOneNumber) {
    const std::string field = "InstanceID 7\nAttrContainer { \n}\n}\n";
    EXPECT_TRUE(
        finds(modelText("AttrContainer { \nSubContainer { \n\"AttrContainer\" \"F\"\n" + field +
                        "SubContainer { \n\"AttrContainer\" \"G\"\n" + field + "}\n"),
              "problem reference 10 /G: has the number 7 of another instance"));
}

TEST(Check, FindsContentThatNoClassWrites) {
    EXPECT_TRUE(finds(modelText("AttrContainer { \nSubContainer { \n\"AttrContainer\" \"F\"\n"
                                "FieldToken 77\nAttrContainer { \n}\n}\n}\n"),
                      "warning class 6 /F: holds content that no class of this program writes"));
}

TEST(Check, FindsAValueThatWouldNotComeBack) {
    EXPECT_EQ(findingsOf(valueModel("Attr<double>", "1.#INF")),
              Strings{"problem survival 6 /Tested: \"1.#INF\" would be \"0\": infinities and "
                      "not-a-numbers are written as 0"});
}

TEST(Check, TellsWhatTheReaderWarnedOf) {
    EXPECT_TRUE(finds(modelText("AttrContainer { \nAttr<int> { \nName \"A\"\nPostObserver \n"
                                "ObserverPath { \nPath \"/\"\nAction \"Dance\"\n}\n}\n}\n"),
                      "warning read 9 /: a relation cannot be kept: expected the name of a known "
                      "action"));
}
