// The words by which people name the types of attributes.
#include "model/TypeWords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>

using namespace qormodel;

TEST(TypeWords, AreThoseOfAllTypesThatAStreamHolds) {
    const auto words = listTypeWords();

    // 54 tokens, of which two types come from no stream and one has the word of another.
    EXPECT_EQ(words.size(), 51u);
    for (const char* const word : {"int", "int32_t", "double", "String", "Vec3ddVector", "Uuid",
                                   "UInt32Vector", "Json::Value"})
        EXPECT_EQ(std::ranges::count(words, word), 1) << word;
    EXPECT_EQ(std::ranges::count(words, "ScanPt"), 0);
}

TEST(TypeWords, DifferInMoreThanCase) {
    std::set<std::string> lowered;
    for (std::string word : listTypeWords()) {
        for (char& letter : word)
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        lowered.insert(word);
    }

    EXPECT_EQ(lowered.size(), listTypeWords().size());
}

TEST(TypeWords, AreFoundInAnyCaseAndAsTheyStandInAFile) {
    EXPECT_EQ(inqTypeWord("string"), "String");
    EXPECT_EQ(inqTypeWord("DOUBLE"), "double");
    EXPECT_EQ(inqTypeWord("Attr<String>"), "String");
    EXPECT_EQ(inqTypeWord("attr<string>"), "String");
    EXPECT_EQ(inqTypeWord("json::value"), "Json::Value");
    for (const char* const text :
         {"", "strin", "strings", "Attr<String", "Attr<>", "ScanPt", " int"})
        EXPECT_EQ(inqTypeWord(text), std::nullopt) << text;
}
