#include <QOR/BufferedSink.h>

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using QOR::BufferedSink;

namespace {

/// Keeps each piece that it is given, and can refuse them.
class Pieces : public BufferedSink {
public:
    explicit Pieces(std::size_t capacity) : BufferedSink(capacity) {}

    std::vector<std::string> pieces;
    bool doesRefuse = false;
    bool doesThrow = false;
    int numFlushed = 0;

protected:
    bool pass(const char* data, std::size_t size) override {
        if (doesThrow) throw std::runtime_error("no room");
        if (doesRefuse) return false;
        pieces.emplace_back(data, size);
        return true;
    }
    bool flushTarget() override {
        ++numFlushed;
        return true;
    }
};

/// Counts how often it is flushed.
class FlushCounter : public std::stringbuf {
public:
    int numFlushed = 0;
    bool doesFail = false;

protected:
    int sync() override {
        ++numFlushed;
        return doesFail ? -1 : 0;
    }
};

using Texts = std::vector<std::string>;

}  // namespace

TEST(BufferedSink, PassesNothingOnAtAFlush) {
    Pieces sink(100);
    std::ostream stream(&sink);
    stream << "one\n" << std::flush << "two\n" << std::flush;
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(sink.pieces, Texts{});
}

TEST(BufferedSink, PassesEverythingOnWhenItIsFinished) {
    FlushCounter target;
    BufferedSink sink(target);
    std::ostream stream(&sink);
    stream << "one\n" << std::flush << "two\n" << std::flush;
    EXPECT_EQ(target.str(), "");
    EXPECT_EQ(target.numFlushed, 0);
    EXPECT_TRUE(sink.finish());
    EXPECT_EQ(target.str(), "one\ntwo\n");
    EXPECT_EQ(target.numFlushed, 1);
}

TEST(BufferedSink, PassesOnWhatWouldNotFit) {
    Pieces sink(4);
    std::ostream stream(&sink);
    stream << "abc" << "de";
    EXPECT_EQ(sink.pieces, Texts{"abc"});
    stream << 'f' << 'g' << 'h';
    EXPECT_EQ(sink.pieces, (Texts{"abc", "defg"}));
    sink.finish();
    EXPECT_EQ(sink.pieces, (Texts{"abc", "defg", "h"}));
}

TEST(BufferedSink, PassesOnAsOnePieceWhatIsLargerThanItsOwn) {
    Pieces sink(4);
    std::ostream stream(&sink);
    stream << "ab" << "cdefgh" << 'i';
    EXPECT_EQ(sink.pieces, (Texts{"ab", "cdefgh"}));
    sink.finish();
    EXPECT_EQ(sink.pieces, (Texts{"ab", "cdefgh", "i"}));
}

TEST(BufferedSink, HoldsAtLeastOneByte) {
    Pieces sink(0);
    std::ostream stream(&sink);
    stream << 'a' << 'b';
    sink.finish();
    EXPECT_EQ(sink.pieces, (Texts{"a", "b"}));
}

TEST(BufferedSink, CanBeWrittenToBehindItsFinish) {
    Pieces sink(10);
    std::ostream stream(&sink);
    stream << "one";
    EXPECT_TRUE(sink.finish());
    stream << "two";
    EXPECT_TRUE(sink.finish());
    EXPECT_EQ(sink.pieces, (Texts{"one", "two"}));
    EXPECT_EQ(sink.numFlushed, 2);
}

TEST(BufferedSink, PassesNothingOnWhereItIsNotFinished) {
    std::stringbuf target;
    {
        BufferedSink sink(target);
        std::ostream stream(&sink);
        stream << "left";
    }
    EXPECT_EQ(target.str(), "");
}

TEST(BufferedSink, MakesTheStreamBadOnceAPieceIsRefused) {
    Pieces sink(4);
    std::ostream stream(&sink);
    sink.doesRefuse = true;
    stream << "abcd";
    EXPECT_TRUE(stream.good());
    stream << "e";
    EXPECT_TRUE(stream.bad());
    EXPECT_FALSE(sink.isGood());
    EXPECT_FALSE(sink.finish());
    EXPECT_EQ(sink.numFlushed, 0);
}

TEST(BufferedSink, TellsOfARefusedPieceAtEveryLaterFlush) {
    Pieces sink(4);
    sink.doesRefuse = true;
    std::ostream(&sink) << "abcde";
    sink.doesRefuse = false;
    std::ostream stream(&sink);
    stream.flush();
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(sink.pieces, Texts{}) << "no hole in what was written";
}

TEST(BufferedSink, FailsWhereItsTargetThrows) {
    Pieces sink(4);
    std::ostream stream(&sink);
    sink.doesThrow = true;
    stream << "abcdefgh";
    EXPECT_TRUE(stream.bad());
    sink.doesThrow = false;
    EXPECT_FALSE(sink.finish());
    EXPECT_EQ(sink.pieces, Texts{});
}

TEST(BufferedSink, FailsWhereItsTargetCannotBeFlushed) {
    FlushCounter target;
    target.doesFail = true;
    BufferedSink sink(target);
    EXPECT_FALSE(sink.finish());
    EXPECT_FALSE(sink.isGood());
}
