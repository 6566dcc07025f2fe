#include <QOR/Text.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using namespace QOR;

TEST(Text, WhiteSpaceIsThatOfAscii) {
    for (const char character : std::string(" \t\n\v\f\r")) EXPECT_TRUE(isWhiteSpace(character));
    for (const char character : std::string("a0_.\"\xa0\x1f\0", 8))
        EXPECT_FALSE(isWhiteSpace(character));
}

TEST(Text, ANumberIsMadeOfDigitsSignsPointAndExponent) {
    const std::string inNumbers = "0123456789+-.eE";
    for (int i = 0; i < 256; ++i) {
        const auto character = static_cast<char>(i);
        const bool expected = inNumbers.find(character) != std::string::npos;
        EXPECT_EQ(isValidNumberChar(character), expected) << "character " << i;
    }
}

TEST(Text, AStringEndsAtAQuote) { EXPECT_EQ(getStringEnd<char>(), '"'); }

TEST(ReplaceAll, ReplacesEveryOccurrence) {
    const auto replaced = [](std::string text, const std::string& from, const std::string& to) {
        replaceAll(text, from, to);
        return text;
    };

    EXPECT_EQ(replaced("a/b/c", "/", "::"), "a::b::c");
    EXPECT_EQ(replaced("a::b::c", "::", "/"), "a/b/c");
    EXPECT_EQ(replaced("abc", "abc", ""), "");
    EXPECT_EQ(replaced("&lt;&lt;", "&lt;", "<"), "<<");
    EXPECT_EQ(replaced("abc", "x", "y"), "abc");
    EXPECT_EQ(replaced("", "x", "y"), "");
}

TEST(ReplaceAll, DoesNotSearchWhatItPutIn) {
    std::string text = "aaa";

    replaceAll(text, "a", "aa");

    EXPECT_EQ(text, "aaaaaa");
}

TEST(ReplaceAll, TakesOverlappingOccurrencesFromTheLeft) {
    std::string text = "aaa";

    replaceAll(text, "aa", "b");

    EXPECT_EQ(text, "ba");
}

TEST(ReplaceAll, ChangesNothingForAnEmptyText) {
    std::string text = "abc";

    replaceAll(text, "", "x");

    EXPECT_EQ(text, "abc");
}

TEST(CompareIgnoreCase, IsZeroForTextsThatDifferInCaseOnly) {
    EXPECT_EQ(compareIgnoreCase("Scan", "sCAN"), 0);
    EXPECT_EQ(compareIgnoreCase("", ""), 0);
    EXPECT_EQ(compareIgnoreCase("a1_Z", "A1_z"), 0);
}

TEST(CompareIgnoreCase, HasTheSignOfTheFirstDifference) {
    EXPECT_LT(compareIgnoreCase("apple", "Banana"), 0);
    EXPECT_GT(compareIgnoreCase("Banana", "apple"), 0);
    EXPECT_LT(compareIgnoreCase("scan", "scanner"), 0);
    EXPECT_GT(compareIgnoreCase("scanner", "scan"), 0);
    EXPECT_LT(compareIgnoreCase("", "a"), 0);
    EXPECT_GT(compareIgnoreCase("\xff", "a"), 0);
    EXPECT_LT(compareIgnoreCase("_", "A"), 0);  // '_' comes before 'a'
}

TEST(CompareIgnoreCase, FoldsNothingButTheLettersOfAscii) {
    EXPECT_NE(compareIgnoreCase("[", "{"), 0);
    EXPECT_NE(compareIgnoreCase("@", "`"), 0);
    EXPECT_NE(compareIgnoreCase("\xc4", "\xe4"), 0);
}

TEST(CompareIgnoreCase, GoesOnBehindAZeroByte) {
    EXPECT_LT(compareIgnoreCase(std::string("a\0b", 3), std::string("a\0c", 3)), 0);
    EXPECT_GT(compareIgnoreCase(std::string("a\0", 2), "a"), 0);
}

TEST(FindNonWS, FindsTheFirstAtOrAfterTheStart) {
    EXPECT_EQ(findNonWS("  \t/x", 0), 3);
    EXPECT_EQ(findNonWS("x y", 0), 0);
    EXPECT_EQ(findNonWS("x y", 1), 2);
    EXPECT_EQ(findNonWS("x y", 2), 2);
}

TEST(FindNonWS, FindsNothingInABlankTextOrBehindTheEnd) {
    EXPECT_EQ(findNonWS("", 0), -1);
    EXPECT_EQ(findNonWS(" \n", 0), -1);
    EXPECT_EQ(findNonWS("x", 1), -1);
    EXPECT_EQ(findNonWS("x", 100), -1);
}

TEST(FindNonWS, TakesANegativeStartForTheFirstPosition) { EXPECT_EQ(findNonWS(" x", -5), 1); }

TEST(FindAlphaNum, FindsTheFirstLetterOrDigitAtOrAfterTheStart) {
    EXPECT_EQ(findAlphaNum("/~#a", 0), 3);
    EXPECT_EQ(findAlphaNum("_Z", 0), 1);
    EXPECT_EQ(findAlphaNum("a 7", 1), 2);
    EXPECT_EQ(findAlphaNum("-9", -1), 1);
}

TEST(FindAlphaNum, FindsNothingElse) {
    EXPECT_EQ(findAlphaNum("", 0), -1);
    EXPECT_EQ(findAlphaNum("@[`{/:_-. ", 0), -1);
    EXPECT_EQ(findAlphaNum("\xc3\xa4", 0), -1);
    EXPECT_EQ(findAlphaNum("a", 1), -1);
}

TEST(FindLastOf, FindsTheLastCharacterOfTheSet) {
    EXPECT_EQ(findLastOf("Attr<int>", "<"), 4);
    EXPECT_EQ(findLastOf("Attr<int>", ">"), 8);
    EXPECT_EQ(findLastOf("a/b\\c", "/\\"), 3);
    EXPECT_EQ(findLastOf("<<", "<"), 1);
}

TEST(FindLastOf, FindsNothingWhereNoneStands) {
    EXPECT_EQ(findLastOf("abc", "<"), -1);
    EXPECT_EQ(findLastOf("", "<"), -1);
    EXPECT_EQ(findLastOf("abc", ""), -1);
}

TEST(IncrementIndex, CountsUpOrAppendsAFirstNumber) {
    const std::pair<std::string, std::string> table[] = {
        {"scan", "scan1"}, {"scan1", "scan2"},   {"a9", "a10"},   {"a09", "a10"},
        {"a099", "a100"},  {"a007", "a008"},     {"a99", "a100"}, {"9", "10"},
        {"", "1"},         {"1a", "1a1"},        {"a1_", "a1_1"}, {"v1.9", "v1.10"},
        {"a1b2", "a1b3"},  {"scan-1", "scan-2"}, {"00", "01"},
    };
    for (const auto& [before, after] : table) {
        auto name = before;
        incrementIndex(name);
        EXPECT_EQ(name, after) << "from \"" << before << '"';
    }
}

TEST(IncrementIndex, CountsNumbersOfAnyLength) {
    std::string name = "a" + std::string(40, '9');

    incrementIndex(name);

    EXPECT_EQ(name, "a1" + std::string(40, '0'));
}

}  // namespace
