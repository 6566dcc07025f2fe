#include <QOR/TextEscapes.h>

#include <QOR/Text.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace QOR;

std::string escaped(std::string text, bool quotes = true) {
    controlsToEsc(text, quotes);
    return text;
}

std::string unescaped(std::string text, bool quotes = true) {
    escToControls(text, quotes);
    return text;
}

int conversions(std::string text, bool quotes = true) { return escToControls(text, quotes); }

TEST(NeedsEscapes, IsTrueOfTheTextsThatEscapingChangesWhereverTheCharacterStands) {
    for (int code = 0; code < 256; ++code) {
        for (std::size_t size = 1; size <= 20; ++size) {
            for (std::size_t position = 0; position < size; ++position) {
                std::string text(size, static_cast<char>(0x80 + size));
                text[position] = static_cast<char>(code);
                ASSERT_EQ(needsEscapes(text), escaped(text) != text) << code << ' ' << position;
            }
        }
    }
    EXPECT_FALSE(needsEscapes(""));
}

TEST(ControlsToEsc, SpellsControlCharactersQuotesAndBackslashes) {
    EXPECT_EQ(escaped("a\nb"), R"(a\nb)");
    EXPECT_EQ(escaped("a\rb"), R"(a\rb)");
    EXPECT_EQ(escaped("a\tb"), R"(a\tb)");
    EXPECT_EQ(escaped("a\\b"), R"(a\\b)");
    EXPECT_EQ(escaped("a\"b"), R"(a\"b)");
    EXPECT_EQ(escaped(std::string("a\0b", 3)), R"(a\x00b)");
    EXPECT_EQ(escaped("\x1b\x7f\v"), R"(\x1b\x7f\x0b)");
}

TEST(ControlsToEsc, LeavesEverythingElse) {
    EXPECT_EQ(escaped(""), "");
    EXPECT_EQ(escaped("text, 'single' <tag> & /path/"), "text, 'single' <tag> & /path/");
    EXPECT_EQ(escaped("\xc3\xa4\xff\x80"), "\xc3\xa4\xff\x80");
}

TEST(ControlsToEsc, LeavesQuotesIfToldSo) { EXPECT_EQ(escaped("\"a\\\n\"", false), R"("a\\\n")"); }

TEST(ControlsToEsc, LeavesNoQuoteThatWouldEndAString) {
    std::string all;
    for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
    all += "\\\"\\\\\"";

    const auto text = escaped(all);

    bool afterBackslash = false;
    for (const char character : text) {
        EXPECT_FALSE(character == '"' && !afterBackslash);
        EXPECT_FALSE(static_cast<unsigned char>(character) < 0x20 || character == 0x7f);
        afterBackslash = character == '\\' && !afterBackslash;
    }
    EXPECT_FALSE(afterBackslash);
}

TEST(EscToControls, ReadsEverySpelling) {
    EXPECT_EQ(unescaped(R"(a\nb\rc\td\\e\"f)"), "a\nb\rc\td\\e\"f");
    EXPECT_EQ(unescaped(R"(\x00\x1b\x7F)"), std::string("\0\x1b\x7f", 3));
    EXPECT_EQ(unescaped(R"(\xE4)"), "\xe4");
}

TEST(EscToControls, CountsItsConversions) {
    EXPECT_EQ(conversions(""), 0);
    EXPECT_EQ(conversions("plain"), 0);
    EXPECT_EQ(conversions(R"(\n)"), 1);
    EXPECT_EQ(conversions(R"(a\\b\"c\x41)"), 3);
    EXPECT_EQ(conversions(R"(\q\n\)"), 1);
}

TEST(EscToControls, LeavesUnknownSequences) {
    for (const auto* text : {R"(\q)", R"(\')", R"(\0)", R"(\xg0)", R"(\x0g)", R"(\x)", R"(\x1)"}) {
        EXPECT_EQ(unescaped(text), text);
        EXPECT_EQ(conversions(text), 0) << text;
    }
}

TEST(EscToControls, LeavesABackslashAtTheEnd) {
    EXPECT_EQ(unescaped("a\\"), "a\\");
    EXPECT_EQ(unescaped(R"(\n)"
                        "\\"),
              "\n\\");
}

TEST(EscToControls, ReadsADoubledBackslashAsOneWhateverFollows) {
    EXPECT_EQ(unescaped(R"(\\n)"), R"(\n)");
    EXPECT_EQ(unescaped(R"(\\\n)"), "\\\n");
    EXPECT_EQ(unescaped(R"(C:\\temp)"), R"(C:\temp)");
}

TEST(EscToControls, TakesNoMoreThanTwoHexadecimalDigits) { EXPECT_EQ(unescaped(R"(\x410)"), "A0"); }

TEST(EscToControls, LeavesSpelledQuotesIfToldSo) {
    EXPECT_EQ(unescaped(R"(\"a\n)", false), "\\\"a\n");
}

TEST(Escapes, BringEveryByteBack) {
    for (const bool quotes : {true, false})
        for (int i = 0; i < 256; ++i) {
            const std::string text{'a', static_cast<char>(i), 'b'};
            EXPECT_EQ(unescaped(escaped(text, quotes), quotes), text) << "byte " << i;
        }
}

TEST(Escapes, BringBackWhatLooksLikeASequence) {
    for (const bool quotes : {true, false})
        for (const std::string text : {R"(\n)", R"(\\)", R"(\x41)", R"(\")", R"(\)", R"(\\\")"})
            EXPECT_EQ(unescaped(escaped(text, quotes), quotes), text);
}

TEST(Escapes, BringRandomTextsBack) {
    std::mt19937 random(1);
    const std::string mostTelling = "\\\"nrtx0a\n\r\t'";
    for (int i = 0; i < 20'000; ++i) {
        std::string text(random() % 12, ' ');
        for (auto& character : text)
            character = random() % 2 ? mostTelling[random() % mostTelling.size()]
                                     : static_cast<char>(random());
        for (const bool quotes : {true, false})
            ASSERT_EQ(unescaped(escaped(text, quotes), quotes), text);
    }
}

}  // namespace
