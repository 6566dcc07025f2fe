#include <AttributeContainer/ModelInFormat.h>

#include <AttributeContainer/ModelFormat.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;

namespace {

using Keyword = std::optional<const std::string>;

constexpr int endOfFile = std::char_traits<char>::eof();

// A reader that looks into its keywords.
class Peeker : public ModelInFormat {
public:
    using ModelInFormat::ModelInFormat;
    using ModelInFormat::setPosition;
};

std::string keywordOf(ModelInFormat& imf) { return imf.getKeyword().value_or("(none)"); }

}  // namespace

TEST(ModelInFormat, BeginsInTheTextFormWithoutHavingRead) {
    std::istringstream in("one two ");
    ModelInFormat imf(in);
    EXPECT_EQ(imf.getFormat(), ModelFormat::Text);
    EXPECT_EQ(in.tellg(), std::streampos(0));
}

TEST(ModelInFormat, GivesTheSameKeywordUntilItMovesOn) {
    std::istringstream in("one two ");
    ModelInFormat imf(in);
    EXPECT_EQ(keywordOf(imf), "one");
    EXPECT_EQ(keywordOf(imf), "one");
    ASSERT_NE(imf.peekKeyword(), nullptr);
    EXPECT_EQ(*imf.peekKeyword(), "one");
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "two");
}

TEST(ModelInFormat, HasNoKeywordOnAnEmptyStream) {
    std::istringstream in("");
    ModelInFormat imf(in);
    EXPECT_EQ(imf.getKeyword(), std::nullopt);
    EXPECT_EQ(imf.peekKeyword(), nullptr);
}

TEST(ModelInFormat, StaysWithoutAKeywordAtTheEnd) {
    std::istringstream in("one ");
    ModelInFormat imf(in);
    imf.nextKeyword();
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "(none)");
    EXPECT_EQ(keywordOf(imf), "(none)");
}

TEST(ModelInFormat, LeavesTheValueBehindAKeywordToItsCodec) {
    std::istringstream in("Value 5\n}\n");
    ModelInFormat imf(in);
    EXPECT_EQ(keywordOf(imf), "Value");
    int value = 0;
    in >> value;
    EXPECT_EQ(value, 5);
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "}");
}

TEST(ModelInFormat, CutsTheKeywordToItsRestAfterRawReads) {
    std::istringstream in("abcdef next ");
    Peeker imf(in);
    EXPECT_EQ(keywordOf(imf), "abcdef");
    imf.setPosition(2);

    EXPECT_EQ(imf.rawRead(true), 'c');
    EXPECT_EQ(keywordOf(imf), "def");
    EXPECT_EQ(keywordOf(imf), "def");
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "next");
}

TEST(ModelInFormat, LeavesAnEmptyKeywordWhereThePositionLiesBehindIt) {
    std::istringstream in("abc next ");
    Peeker imf(in);
    EXPECT_EQ(keywordOf(imf), "abc");
    imf.setPosition(7);
    EXPECT_EQ(imf.rawRead(true), ' ');  // from the stream
    EXPECT_EQ(imf.getKeyword(), Keyword(""));
}

TEST(ModelInFormat, ReadsRawFromTheRestOfTheKeywordAndThenFromTheStream) {
    std::istringstream in("abc xyz");
    Peeker imf(in);
    EXPECT_EQ(keywordOf(imf), "abc");
    imf.setPosition(1);

    EXPECT_EQ(imf.rawRead(false), 'b');
    EXPECT_EQ(imf.rawRead(true), 'b');
    EXPECT_EQ(imf.rawRead(true), 'c');  // the last one drops the keyword
    EXPECT_EQ(imf.rawRead(false), ' ');
    EXPECT_EQ(imf.rawRead(true), ' ');
    EXPECT_EQ(imf.rawRead(true), 'x');
    EXPECT_TRUE(in.good());
}

TEST(ModelInFormat, ReadsRawFromTheStreamWhereTheKeywordIsWholeOrMissing) {
    std::istringstream in("abc xyz");
    ModelInFormat imf(in);
    EXPECT_EQ(imf.rawRead(true), 'a');
    EXPECT_EQ(keywordOf(imf), "bc");
    EXPECT_EQ(imf.rawRead(false), ' ');
    EXPECT_EQ(keywordOf(imf), "bc");
}

TEST(ModelInFormat, ReadsTheSameBytesRawFromAKeywordAndFromAStream) {
    const std::string bytes("x\xC3\xA4\xFF\x80", 5);
    std::istringstream in(bytes + " " + bytes);
    Peeker imf(in);
    ASSERT_EQ(keywordOf(imf), bytes);
    imf.setPosition(1);

    for (const int byte : {0xC3, 0xA4, 0xFF, 0x80}) EXPECT_EQ(imf.rawRead(true), byte);
    EXPECT_EQ(imf.rawRead(true), ' ');
    EXPECT_EQ(imf.rawRead(true), 'x');
    for (const int byte : {0xC3, 0xA4, 0xFF, 0x80}) EXPECT_EQ(imf.rawRead(true), byte);
    EXPECT_EQ(imf.rawRead(true), endOfFile);
    EXPECT_TRUE(in.fail());
}

TEST(ModelInFormat, DropsOneCharacterOfTheStream) {
    std::istringstream in("abc ");
    ModelInFormat imf(in);
    imf.readBeforeBuf();
    EXPECT_EQ(keywordOf(imf), "bc");
}

TEST(ModelInFormat, SkipsTheRestOfALineAndDropsTheKeyword) {
    std::istringstream in("one } \"x\ntwo three ");
    ModelInFormat imf(in);
    EXPECT_EQ(keywordOf(imf), "one");
    EXPECT_TRUE(imf.skipRestOfLine());
    EXPECT_EQ(keywordOf(imf), "two");
}

TEST(ModelInFormat, SkipsToTheFirstClosingBraceWhereverItStands) {
    std::istringstream in("Block { \"a } b\" { } } ");
    ModelInFormat imf(in);
    EXPECT_EQ(keywordOf(imf), "Block");
    EXPECT_TRUE(imf.skipToEndOfBlock());
    EXPECT_EQ(keywordOf(imf), "b\"");
}

TEST(ModelInFormat, ReportsTheEndOfTheStreamWhenItSkips) {
    std::istringstream line("one two");
    ModelInFormat first(line);
    EXPECT_FALSE(first.skipRestOfLine());
    EXPECT_TRUE(line.eof());

    std::istringstream block("one two");
    ModelInFormat second(block);
    EXPECT_FALSE(second.skipToEndOfBlock());
    EXPECT_TRUE(block.eof());
}

TEST(ModelInFormat, SkipsNothingOnAStreamThatHasFailed) {
    std::istringstream in("one\n}two ");
    in.setstate(std::ios::failbit);
    ModelInFormat imf(in);
    EXPECT_FALSE(imf.skipRestOfLine());
    EXPECT_FALSE(imf.skipToEndOfBlock());
    in.clear();
    EXPECT_EQ(keywordOf(imf), "one");
}
