#include "store/StoreText.h"

#include "Failure.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;

namespace {

using Bytes = std::vector<unsigned char>;

std::string failureOf(const std::string& text, unsigned long type) {
    try {
        parseStored(text, type);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "none";
}

}  // namespace

TEST(StoreText, NamesTypesByWordsAndOthersByNumber) {
    const struct {
        unsigned long type;
        std::string word;
    } rows[]{{0, "none"},  {1, "text"},  {2, "expand"}, {3, "binary"},
             {4, "dword"}, {7, "multi"}, {11, "qword"}, {5, "5"}};
    for (const auto& row : rows) {
        EXPECT_EQ(typeWordOf(row.type), row.word);
        EXPECT_EQ(typeOfWord(row.word), row.type);
    }
    EXPECT_THROW(typeOfWord("string"), Failure);
    EXPECT_THROW(typeOfWord("-1"), Failure);
}

TEST(StoreText, ParsesTheTextOfEachType) {
    EXPECT_EQ(parseStored("ab", 1).data, (Bytes{'a', 0, 'b', 0, 0, 0}));
    EXPECT_EQ(parseStored("", 2).data, (Bytes{0, 0}));
    EXPECT_EQ(parseStored("258", 4).data, (Bytes{2, 1, 0, 0}));
    EXPECT_EQ(parseStored("0xFFFFFFFF", 4).data, (Bytes{255, 255, 255, 255}));
    EXPECT_EQ(parseStored("1", 11).data, (Bytes{1, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(parseStored("a\nb", 7).data, (Bytes{'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0}));
    EXPECT_EQ(parseStored("01 ff,2A", 3).data, (Bytes{1, 255, 42}));
    EXPECT_EQ(parseStored("", 3).data, Bytes{});
}

TEST(StoreText, TellsWhatWasExpected) {
    EXPECT_EQ(failureOf("4294967296", 4),
              "\"4294967296\" is no value of type dword: expected a whole number from 0 to "
              "4294967295, or 0x and its digits");
    EXPECT_NE(failureOf("", 4), "none");
    EXPECT_NE(failureOf("1x", 11), "none");
    EXPECT_EQ(failureOf("012", 3),
              "\"012\" is no value of type binary: expected pairs of hexadecimal digits");
    EXPECT_EQ(failureOf("\xFF", 1), "\"\xEF\xBF\xBD\" is no UTF-8");
}

TEST(StoreText, GivesATextWithAndWithoutItsTerminator) {
    EXPECT_EQ(valueText({1, {'a', 0, 0, 0}}), "a");
    EXPECT_EQ(valueText({2, {'a', 0}}), "a");
    EXPECT_EQ(valueText({1, {}}), "");
}

TEST(StoreText, GivesBytesForWhatIsNoValueOfItsType) {
    EXPECT_EQ(valueText({1, {'a', 0, 'b'}}), "61 00 62");
    EXPECT_EQ(valueText({4, {1, 2}}), "01 02");
    EXPECT_EQ(valueText({3, {1, 0xff}}), "01 ff");
}

TEST(StoreText, GivesTheLinesOfAList) {
    EXPECT_EQ(valueText(textsValue({L"a", L"b"})), "a\nb");
    EXPECT_EQ(valueText(textsValue({})), "");
    EXPECT_EQ(valueText({7, {'a', 0, 0, 0}}), "a");  // without the terminator of the list
    EXPECT_EQ(shortText(textsValue({L"a", L"b"})), "a\\nb");
    EXPECT_EQ(valueJson(textsValue({L"a", L"b"})).dump(), R"(["a","b"])");
}

TEST(StoreText, CutsLongTextsBetweenCharacters) {
    std::wstring text(79, L'x');
    text += std::wstring(40, L'\u00EB');

    EXPECT_EQ(shortText(textValue(text)), std::string(79, 'x') + "...");
}

TEST(StoreText, GivesNumbersAsJsonNumbers) {
    EXPECT_EQ(valueJson(numberValue(~0ull, 11, 8)).dump(), "18446744073709551615");
    EXPECT_EQ(valueJson({3, {1, 2}}).dump(), "\"01 02\"");
}

TEST(StoreText, JoinsPairsOfSurrogates) {
    EXPECT_EQ(joinPairs({L'a', wchar_t(0xD83D), wchar_t(0xDE00)}),
              (std::wstring{L'a', wchar_t(0x1F600)}));
    EXPECT_EQ(joinPairs({wchar_t(0xD83D), L'a'}), (std::wstring{wchar_t(0xD83D), L'a'}));
    EXPECT_EQ(joinPairs({wchar_t(0xDE00)}), (std::wstring{wchar_t(0xDE00)}));
}
