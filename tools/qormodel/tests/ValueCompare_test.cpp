// When two texts of a value are the same value, and what is said where they are not.
#include "survival/ValueCompare.h"

#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <string>

using namespace qormodel;
using qormodel::testing::TemporaryFile;

namespace {

std::optional<ValueDifference> compare(const std::string& type, const std::string& before,
                                       const std::string& after) {
    const TemporaryFile first(before);
    const TemporaryFile second(after);
    const SourceFile a(first.getName());
    const SourceFile b(second.getName());
    return compareValues("Attr<" + type + '>', a, {0, before.size(), 1}, b, {0, after.size(), 1});
}

bool isSame(const std::string& type, const std::string& before, const std::string& after) {
    return !compare(type, before, after);
}

std::string reason(const std::string& type, const std::string& before, const std::string& after) {
    const auto difference = compare(type, before, after);
    return difference ? difference->reason : "";
}

bool isDefault(const std::string& text) {
    const TemporaryFile file(text);
    return isDefaultText(SourceFile(file.getName()), {0, text.size(), 1});
}

}  // namespace

TEST(ValueCompare, TakesNumbersThatAreSpelledDifferentlyForTheSame) {
    EXPECT_TRUE(isSame("double", "1.0", "1"));
    EXPECT_TRUE(isSame("double", "+1e3", "1000"));
    EXPECT_TRUE(isSame("double", "-0", "0"));
    EXPECT_TRUE(isSame("int", "+5", "5"));
    EXPECT_TRUE(isSame("int", "007", "7"));
    EXPECT_TRUE(isSame("Vec3dd", "1  2\n3", "1 2 3"));
    EXPECT_TRUE(isSame("float", "1.#INF", "1.#INF"));
}

TEST(ValueCompare, TellsWholeNumbersOf64BitsApart) {
    EXPECT_FALSE(isSame("uint64_t", "18446744073709551615", "18446744073709551614"));
    EXPECT_FALSE(isSame("int64_t", "9007199254740993", "9007199254740992"));
}

TEST(ValueCompare, ComparesFloatsAsFloats) {
    EXPECT_TRUE(isSame("Vec3df", "0.1 1 2", "0.100000001 1 2"));
    EXPECT_FALSE(isSame("Vec3dd", "0.1 1 2", "0.100000001 1 2"));
    EXPECT_TRUE(isSame("Vec3dfVector", "{ 0.1 1 2 }", "{ 0.100000001 1 2 } "));
    EXPECT_TRUE(isSame("Mat4df", "0.1", "0.100000001"));
}

TEST(ValueCompare, TakesFlagsAndIdentifiersInAnyCaseForTheSame) {
    EXPECT_TRUE(isSame("bool", "True", "true"));
    EXPECT_TRUE(isSame("bool", "1", "false"));
    EXPECT_FALSE(isSame("bool", "true", "false"));
    EXPECT_TRUE(isSame("Uuid", "{00112233445566778899AABBCCDDEEFF}",
                       "00112233-4455-6677-8899-aabbccddeeff"));
    EXPECT_FALSE(isSame("Uuid", "00112233-4455-6677-8899-aabbccddeeff",
                        "00112233-4455-6677-8899-aabbccddeefe"));
}

TEST(ValueCompare, TakesWordsWithQuotesForWords) {
    EXPECT_TRUE(isSame("BoolVector", "{ \"true true }", "{ false true }"));
    EXPECT_FALSE(isSame("BoolVector", "{ \"false true }", "{ false false }"));
    EXPECT_FALSE(isSame("BoolVector", "{ true {true }", "{ true }"));
}

TEST(ValueCompare, MindsNoOrderInSetsAndMaps) {
    const std::string one = "11111111-1111-1111-1111-111111111111";
    const std::string two = "22222222-2222-2222-2222-22222222222a";
    const std::string capital = "22222222-2222-2222-2222-22222222222A";

    EXPECT_TRUE(isSame("UuidSet", "{ " + capital + ' ' + one + " }",
                       "{ " + one + ' ' + two + " }"));
    EXPECT_FALSE(isSame("UuidSet", "{ " + two + " }", "{ " + one + " }"));
    EXPECT_FALSE(
        isSame("UuidVector", "{ " + two + ' ' + one + " }", "{ " + one + ' ' + two + " }"));
    EXPECT_TRUE(isSame("StringSet", "2 \"b\" \"a\"", "2 \"a\" \"b\""));
    EXPECT_FALSE(isSame("StringSet", "2 \"b\" \"c\"", "2 \"a\" \"b\""));
    EXPECT_FALSE(isSame("StringArray", "2 \"b\" \"a\"", "2 \"a\" \"b\""));
    EXPECT_TRUE(isSame("StringMap", "2 \"b\"=>\"x y\" \"a\"=>\"}\"",
                       "2 \"a\"=>\"}\" \"b\"=>\"x y\""));
    EXPECT_FALSE(isSame("StringMap", "2 \"b\"=>\"x\" \"a\"=>\"y\"",
                        "2 \"a\"=>\"x\" \"b\"=>\"y\""));
}

TEST(ValueCompare, TellsWhatComesTwiceInASetOrAMap) {
    EXPECT_FALSE(isSame("StringSet", "2 \"a\" \"a\"", "1 \"a\""));
    EXPECT_FALSE(isSame("StringMap", "2 \"a\"=>\"x\" \"a\"=>\"y\"", "1 \"a\"=>\"y\""));
}

TEST(ValueCompare, TakesTextsWithTheSameCharactersForTheSame) {
    EXPECT_TRUE(isSame("String", "\"a\tb\"", "\"a\\tb\""));
    EXPECT_FALSE(isSame("String", "\"a\"", "\"A\""));
    EXPECT_FALSE(isSame("String", "\"1\"", "1"));
}

TEST(ValueCompare, TakesNothingAndADefaultForTheSame) {
    EXPECT_TRUE(isSame("int", "", "0"));
    EXPECT_TRUE(isSame("Vec3dd", "0 0 0", ""));
    EXPECT_TRUE(isSame("String", "\"\"", ""));
    EXPECT_TRUE(isSame("IntVector", "{ } ", ""));
    EXPECT_TRUE(isSame("StringArray", "0", ""));
}

TEST(ValueCompare, TellsThatAValueIsNotTakenOver) {
    EXPECT_EQ(reason("int", "5", ""), "the value is not taken over");
    EXPECT_EQ(reason("IntVector", "{ 0 } ", ""), "the value is not taken over");
}

TEST(ValueCompare, TellsThatTheRestOfAValueIsNotTakenOver) {
    EXPECT_EQ(reason("int", "5 6", "5"), "the rest of the value is not taken over");
}

TEST(ValueCompare, TellsThatAValueIsReadAsAnotherOne) {
    EXPECT_EQ(reason("bool", "true", "false"), "the value is read as another one");
    EXPECT_EQ(reason("String", "\"a\"", "\"b\""), "the value is read as another one");
}

TEST(ValueCompare, TellsOfInfinitiesAndNotANumbers) {
    EXPECT_EQ(reason("double", "1.#INF", "0"), "infinities and not-a-numbers are written as 0");
    EXPECT_EQ(reason("double", "-1.#INF", "0"), "infinities and not-a-numbers are written as 0");
    EXPECT_EQ(reason("double", "nan", "0"), "infinities and not-a-numbers are written as 0");
}

TEST(ValueCompare, TellsOfFloatsBelowTheSmallestNormalOne) {
    EXPECT_EQ(reason("Vec3df", "-1.5 1 1", "1.1754944e-38 1 1"),
              "a float is read as its smallest normal value at least");
    EXPECT_EQ(reason("SVec2df", "0 1", "1.1754944e-38 1"),
              "a float is read as its smallest normal value at least");
}

TEST(ValueCompare, TellsOfMoreDigitsThanTheStreamKeeps) {
    EXPECT_EQ(reason("double", "0.123456789", "0.12345679"),
              "the number has more digits than the stream keeps");
}

TEST(ValueCompare, TellsOfANumberBeyondItsType) {
    EXPECT_EQ(reason("int", "99999999999", "2147483647"), "the number is no value of its type");
}

TEST(ValueCompare, ShowsThePiecesThatPart) {
    const auto difference = compare("IntVector", "{ 1 2 3 } ", "{ 1 5 3 } ");

    ASSERT_TRUE(difference);
    EXPECT_EQ(difference->before, "2");
    EXPECT_EQ(difference->after, "5");
}

TEST(ValueCompare, ComparesTextsThatAreLongerThanAPieceOfThem) {
    const std::string text = '"' + std::string(200'000, 'x');

    EXPECT_TRUE(isSame("String", text + "a\"", text + "a\""));
    EXPECT_FALSE(isSame("String", text + "a\"", text + "b\""));
}

TEST(IsDefaultText, KnowsTheDefaultsOfAllFamilies) {
    for (const char* const text : {"", "0", "-0", "0 0 0", "false", "\"\"", "{ } ",
                                   "00000000-0000-0000-0000-000000000000"})
        EXPECT_TRUE(isDefault(text)) << text;
    for (const char* const text : {"1", "0 1", "true", "\"a\"", "{ 0 } ", "{ { } } ", "{ \"\" }",
                                   "00000000-0000-0000-0000-000000000001"})
        EXPECT_FALSE(isDefault(text)) << text;
}
