// White space and words read from streams, and what happens where the source breaks.
#include <QOR/Text.h>

#include "BreakingBuffer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using namespace QOR;
using Testing::BreakingBuffer;

// What goes on out of `read` where the stream asks for exceptions of its bad bit.
template <class Read> std::string exceptionOf(std::istream& stream, Read read) {
    stream.exceptions(std::ios::badbit);
    try {
        read();
    } catch (const std::runtime_error& error) {  // a failure of the stream's own is one too
        return error.what();
    }
    return "none";
}

TEST(EatWS, StopsAtTheFirstOtherCharacter) {
    std::istringstream stream(" \t\n\v\f\r x y");

    EXPECT_EQ(&eatWS(stream), &stream);

    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.get(), 'x');
}

TEST(EatWS, LeavesAStreamThatHasNoWhiteSpace) {
    std::istringstream stream("x");

    eatWS(stream);

    EXPECT_EQ(stream.get(), 'x');
}

TEST(EatWS, SetsTheEndBitButNotTheFailBitAtTheEnd) {
    std::istringstream blank("  \n");
    std::istringstream empty("");

    eatWS(blank);
    eatWS(empty);
    eatWS(empty);

    EXPECT_TRUE(blank.eof());
    EXPECT_FALSE(blank.fail());
    EXPECT_TRUE(empty.eof());
    EXPECT_FALSE(empty.fail());
}

TEST(EatWS, LeavesAFailedStreamAlone) {
    std::istringstream stream("  x");
    stream.setstate(std::ios::failbit);

    eatWS(stream);

    stream.clear();
    EXPECT_EQ(stream.get(), ' ');
}

TEST(EatWS, MakesAStreamBadWhoseBufferThrows) {
    for (const auto* text : {"", "  \n"}) {
        BreakingBuffer buffer(text);
        std::istream stream(&buffer);

        EXPECT_NO_THROW(eatWS(stream));

        EXPECT_EQ(stream.rdstate(), std::ios::badbit);
    }
}

TEST(EatWS, LetsAnExceptionOfTheBufferThroughWhereTheStreamAsksForIt) {
    BreakingBuffer buffer(" ");
    std::istream stream(&buffer);

    EXPECT_EQ(exceptionOf(stream, [&] { eatWS(stream); }), "disk gone");

    EXPECT_EQ(stream.rdstate(), std::ios::badbit);
}

TEST(EatWS, LetsTheStreamThrowForItsEndWhereItIsAskedTo) {
    std::istringstream stream(" ");
    stream.exceptions(std::ios::eofbit);

    EXPECT_THROW(eatWS(stream), std::ios::failure);

    EXPECT_EQ(stream.rdstate(), std::ios::eofbit);
}

TEST(OptionalWord, ReadsWordsOneByOne) {
    std::istringstream stream("  first\tsecond\"}\n");
    std::optional<std::string> word;

    stream >> word;
    EXPECT_EQ(word, "first");
    EXPECT_EQ(stream.peek(), '\t');

    stream >> word;
    EXPECT_EQ(word, "second\"}");
    EXPECT_TRUE(stream.good());
}

TEST(OptionalWord, ReadsTheLastWordUpToTheEnd) {
    std::istringstream stream("last");
    std::optional<std::string> word;

    EXPECT_TRUE(static_cast<bool>(stream >> word));

    EXPECT_EQ(word, "last");
    EXPECT_TRUE(stream.eof());
}

TEST(OptionalWord, IsEmptyWhenThereIsNone) {
    for (const auto* text : {"", "  \n"}) {
        std::istringstream stream(text);
        std::optional<std::string> word = "former";

        EXPECT_FALSE(static_cast<bool>(stream >> word));

        EXPECT_FALSE(word.has_value());
        EXPECT_TRUE(stream.eof());
    }
}

TEST(OptionalWord, IsEmptyWhenTheStreamHasFailedBefore) {
    std::istringstream stream("word");
    stream.setstate(std::ios::failbit);
    std::optional<std::string> word = "former";

    stream >> word;

    EXPECT_FALSE(word.has_value());
}

TEST(OptionalWord, IsEmptyWhereTheBufferThrows) {
    for (const auto* text : {"", "  ", "wor"}) {
        BreakingBuffer buffer(text);
        std::istream stream(&buffer);
        std::optional<std::string> word = "former";

        EXPECT_NO_THROW(stream >> word);

        EXPECT_FALSE(word.has_value());
        EXPECT_TRUE(stream.bad());
        EXPECT_FALSE(stream.eof());
    }
}

TEST(OptionalWord, LetsAnExceptionOfTheBufferThroughWhereTheStreamAsksForIt) {
    for (const auto* text : {" ", "wor"}) {
        BreakingBuffer buffer(text);
        std::istream stream(&buffer);
        std::optional<std::string> word = "former";

        EXPECT_EQ(exceptionOf(stream, [&] { stream >> word; }), "disk gone");

        EXPECT_FALSE(word.has_value());
        EXPECT_TRUE(stream.bad());
    }
}

TEST(OptionalWord, IsGivenBeforeABreakBehindIt) {
    BreakingBuffer buffer("word ");
    std::istream stream(&buffer);
    std::optional<std::string> word;

    stream >> word;

    EXPECT_EQ(word, "word");
    EXPECT_TRUE(stream.good());
}

TEST(OptionalWord, KeepsZeroAndHighBytes) {
    const std::string text(
        "a\0\xff"
        "b",
        4);
    std::istringstream stream(text + " ");
    std::optional<std::string> word;

    stream >> word;

    EXPECT_EQ(word, text);
}

}  // namespace
