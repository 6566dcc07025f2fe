// What of a file would not come back, one reason a test.
#include "survival/Survival.h"

#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;
using namespace qormodel::testing;
using Strings = std::vector<std::string>;

namespace {

// The losses of a text, each as "PATH:LINE: REPORT".
Strings lossesOf(const std::string& text) {
    const LoadedText loaded(text);
    Strings found;
    for (const auto& loss : findLosses(loaded.document))
        found.push_back(loss.path + ':' + std::to_string(loss.line) + ": " + describe(loss));
    return found;
}

Strings lossOfValue(const std::string& type, const std::string& value) {
    return lossesOf(valueModel("Attr<" + type + '>', value));
}

std::string attribute(const std::string& name, const std::string& rest) {
    return "Attr<int> { \nName \"" + name + "\"\n" + rest + "}\n";
}

}  // namespace

TEST(Survival, FindsNothingInACanonicalFile) { EXPECT_EQ(lossesOf(projectText), Strings{}); }

TEST(Survival, FindsNothingWhereAValueIsOnlySpelledInAnotherWay) {
    EXPECT_EQ(lossOfValue("double", "1.50"), Strings{});
    EXPECT_EQ(lossOfValue("bool", "TRUE"), Strings{});
    EXPECT_EQ(lossOfValue("String", "\"\""), Strings{});
}

TEST(Survival, ReportsDigitsThatTheStreamDoesNotKeep) {
    EXPECT_EQ(lossOfValue("double", "0.123456789"),
              Strings{"/Tested:6: \"0.123456789\" would be \"0.12345679\": the number has more "
                      "digits than the stream keeps"});
}

TEST(Survival, ReportsInfinities) {
    EXPECT_EQ(lossOfValue("double", "1.#INF"),
              Strings{"/Tested:6: \"1.#INF\" would be \"0\": infinities and not-a-numbers are "
                      "written as 0"});
}

TEST(Survival, ReportsFloatsThatAreRaised) {
    EXPECT_EQ(lossOfValue("SVec2df", "-1.5 2"),
              Strings{"/Tested:6: \"-1.5\" would be \"1.175494351e-38\": a float is read as its "
                      "smallest normal value at least"});
}

TEST(Survival, ReportsNumbersBeyondTheirType) {
    EXPECT_EQ(lossOfValue("int", "99999999999"),
              Strings{"/Tested:6: \"99999999999\" would be \"2147483647\": the number is no value "
                      "of its type"});
}

TEST(Survival, ReportsTheRestOfAValueThatIsTooLong) {
    EXPECT_EQ(lossOfValue("StringSet", "2 \"a\" \"a\""),
              Strings{"/Tested:6: \"2\" would be \"1\": the number is no value of its type"});
}

TEST(Survival, ReportsTheFirstOfTwoAttributesOfOneName) {
    EXPECT_EQ(lossesOf(modelText("AttrContainer { \n" + attribute("MajorVersion", "Value 1\n") +
                                 attribute("MajorVersion", "Value 2\n") + "}\n")),
              (Strings{"/MajorVersion:6: \"1\" would be \"\": an attribute of that name comes "
                       "again further down",
                       "/MajorVersion:8: \"Attr<int>\" would be \"Attr<uint16_t>\": the class "
                       "holds another type"}));
}

TEST(Survival, ReportsAnAttributeWithoutAUsableName) {
    EXPECT_EQ(lossesOf(modelText("AttrContainer { \n" + attribute("a b", "Value 1\n") + "}\n")),
              Strings{"/a b:6: \"1\" would be \"\": the attribute is not taken over"});
}

TEST(Survival, ReportsAChildWithoutABody) {
    EXPECT_EQ(lossesOf(modelText("AttrContainer { \n}\nChild { \n\"Object\" \"A\"\n}\n")),
              Strings{"/A:5: \"Child {  \"Object\" \"A\" }\" would be \"\": the element is not "
                      "taken over"});
}

TEST(Survival, ReportsWordsThatNothingWritesAgain) {
    EXPECT_EQ(
        lossesOf(modelText("AttrContainer { \nSubContainer { \n\"AttrContainer\" \"F\"\n"
                           "FieldToken 77\nAttrContainer { \n}\n}\n}\n")),
        (Strings{"/F:6: \"FieldToken\" would be \"\": the content is not understood and is "
                 "dropped",
                 "/F:6: \"77\" would be \"\": the content is not understood and is dropped"}));
}

TEST(Survival, ReportsARelationWithoutAKnownAction) {
    EXPECT_EQ(lossesOf(modelText("AttrContainer { \nAttr<int> { \nName \"A\"\nPostObserver \n"
                                 "ObserverPath { \nPath \"/\"\nAction \"Dance\"\n}\n}\n}\n")),
              Strings{"/A:7: \"relation to / (Dance)\" would be \"\": the relation is not taken "
                      "over"});
}

TEST(Survival, ShowsNoMoreThanTheBeginningOfALongText) {
    const std::string text(100, 'x');
    const Strings losses =
        lossesOf(modelText("AttrContainer { \nAttr<String> { \nName \"a b\"\n"
                           "Value \"" +
                           text + "\"\n}\n}\n"));

    EXPECT_EQ(losses, Strings{"/a b:6: \"\"" + text.substr(0, 79) +
                              "...\" would be \"\": the attribute is not taken over"});
}

TEST(Survival, KeepsObjectsOfUnknownClassesWithAllThatTheyHold) {
    EXPECT_EQ(lossesOf(modelText("AttrContainer { \n}\nChild { \n\"Station\" \"A\"\n"
                                 "AttrContainer { \nAttr<double> { \nName \"Height\"\nValue 1.75\n"
                                 "}\nSubContainer { \n\"Tripod\" \"Legs\"\nAttrContainer { \n"
                                 "Attr<int> { \nName \"Number\"\nValue 3\n}\n}\n}\n}\n}\n")),
              Strings{});
}

TEST(Survival, KeepsWhatHangsInTwoPlaces) {
    EXPECT_EQ(lossesOf(modelText(
                  "AttrContainer { \nSubContainer { \n\"AttrContainer\" \"A\"\nInstanceID 7\n"
                  "AttrContainer { \nAttr<int> { \nName \"N\"\nValue 1\n}\n}\n}\n"
                  "SubContainer { \n\"AttrContainer\" \"B\"\nInstanceID 7\nReferenceToShared \n"
                  "}\n}\n")),
              Strings{});
}
