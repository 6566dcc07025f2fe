#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>

using namespace QOR::AttributeContainer;

namespace {

// Leaves the thread as it found it, whatever a test stores.
class LookaheadTest : public testing::Test {
protected:
    void SetUp() override { ModelInFormat::cleanPropagateKeyword(); }
    void TearDown() override { ModelInFormat::cleanPropagateKeyword(); }
};

using Lookahead = LookaheadTest;
using PropagateKeyword = LookaheadTest;

std::string keywordOf(ModelInFormat& imf) { return imf.getKeyword().value_or("(none)"); }

}  // namespace

TEST_F(Lookahead, GoesToAnInnerReaderAndBack) {
    std::istringstream in("one two three ");
    ModelInFormat outer(in);
    EXPECT_EQ(keywordOf(outer), "one");
    {
        ModelInFormat inner(in);
        EXPECT_EQ(keywordOf(inner), "one");
        inner.nextKeyword();
        EXPECT_EQ(keywordOf(inner), "two");
    }
    EXPECT_EQ(keywordOf(outer), "two");
    outer.nextKeyword();
    EXPECT_EQ(keywordOf(outer), "three");
}

TEST_F(Lookahead, GoesThroughManyReaders) {
    std::istringstream in("one two ");
    ModelInFormat a(in);
    EXPECT_EQ(keywordOf(a), "one");
    {
        ModelInFormat b(in);
        {
            ModelInFormat c(in);
            EXPECT_EQ(keywordOf(c), "one");
            c.nextKeyword();
        }
    }
    EXPECT_EQ(keywordOf(a), "two");
}

TEST_F(Lookahead, LeavesTheOuterReaderWithNoneWhileAnInnerOneLives) {
    std::istringstream in("one two ");
    ModelInFormat outer(in);
    EXPECT_EQ(keywordOf(outer), "one");

    const ModelInFormat inner(in);

    EXPECT_EQ(keywordOf(outer), "two");  // fetched, since it holds none
}

TEST_F(Lookahead, OfAnInnerReaderAtTheEndLeavesTheOuterOneWithNone) {
    std::istringstream in("one ");
    ModelInFormat outer(in);
    EXPECT_EQ(keywordOf(outer), "one");
    {
        ModelInFormat inner(in);
        inner.nextKeyword();
    }
    EXPECT_EQ(keywordOf(outer), "(none)");
}

TEST_F(Lookahead, IsNotSharedBetweenStreams) {
    std::istringstream in("one two ");
    std::istringstream other("uno due ");
    ModelInFormat outer(in);
    EXPECT_EQ(keywordOf(outer), "one");
    {
        ModelInFormat inner(other);
        EXPECT_EQ(keywordOf(inner), "uno");
        inner.nextKeyword();
        EXPECT_EQ(keywordOf(inner), "due");
    }
    EXPECT_EQ(keywordOf(outer), "one");
}

TEST_F(Lookahead, IsHandedOnOnlyByTheInnermostReader) {
    std::istringstream in("one two ");
    std::istringstream other("uno ");
    ModelInFormat outer(in);
    EXPECT_EQ(keywordOf(outer), "one");
    const ModelInFormat between(other);
    {
        ModelInFormat inner(in);
        EXPECT_EQ(keywordOf(inner), "two");
    }
    EXPECT_EQ(keywordOf(outer), "one");
}

TEST_F(Lookahead, DoesNotCarryTheFormWithIt) {
    std::istringstream in("one two ");
    ModelInFormat outer(in);
    outer.setFormat(ModelFormat::XmlV2);
    {
        ModelInFormat inner(in);
        EXPECT_EQ(inner.getFormat(), ModelFormat::Text);
        inner.setFormat(ModelFormat::XmlV1);
    }
    EXPECT_EQ(outer.getFormat(), ModelFormat::XmlV2);
}

TEST_F(Lookahead, StaysWithTheInnerReaderWhenTheOuterOneGoesFirst) {
    std::istringstream in("one two three ");
    auto outer = std::make_unique<ModelInFormat>(in);
    EXPECT_EQ(keywordOf(*outer), "one");
    auto inner = std::make_unique<ModelInFormat>(in);

    outer.reset();

    EXPECT_EQ(keywordOf(*inner), "one");
    inner->nextKeyword();
    EXPECT_EQ(keywordOf(*inner), "two");
    inner.reset();
    ModelInFormat next(in);
    EXPECT_EQ(keywordOf(next), "three");
}

TEST_F(Lookahead, PassesOverAReaderThatWentOutOfTurn) {
    std::istringstream in("one two ");
    ModelInFormat outer(in);
    EXPECT_EQ(keywordOf(outer), "one");
    auto middle = std::make_unique<ModelInFormat>(in);
    auto inner = std::make_unique<ModelInFormat>(in);
    inner->nextKeyword();

    middle.reset();
    inner.reset();

    EXPECT_EQ(keywordOf(outer), "two");
}

TEST_F(Lookahead, BelongsToTheThread) {
    std::istringstream in("one two ");
    ModelInFormat outer(in);
    EXPECT_EQ(keywordOf(outer), "one");
    std::string seen;

    std::thread([&] {
        ModelInFormat other(in);
        seen = keywordOf(other);
    }).join();

    EXPECT_EQ(seen, "two");
    EXPECT_EQ(keywordOf(outer), "one");
}

TEST_F(PropagateKeyword, WinsOverTheStreamOnce) {
    std::istringstream in("one two ");
    ModelInFormat imf(in);
    imf.setPropagateKeyword("}");

    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "}");
    EXPECT_EQ(in.tellg(), std::streampos(0));
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "one");
}

TEST_F(PropagateKeyword, WinsOverTheStreamInTheXmlFormToo) {
    std::istringstream in("<One>");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    imf.setPropagateKeyword("}");
    EXPECT_EQ(keywordOf(imf), "}");
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "One");
}

TEST_F(PropagateKeyword, IsGivenEvenWhereTheStreamHasFailed) {
    std::istringstream in("");
    in.setstate(std::ios::failbit);
    ModelInFormat imf(in);
    ModelInFormat::setPropagateKeyword("}");
    EXPECT_EQ(keywordOf(imf), "}");
}

TEST_F(PropagateKeyword, DoesNotReplaceTheKeywordThatIsHeld) {
    std::istringstream in("one two ");
    ModelInFormat imf(in);
    EXPECT_EQ(keywordOf(imf), "one");
    imf.setPropagateKeyword("}");
    EXPECT_EQ(keywordOf(imf), "one");
}

TEST_F(PropagateKeyword, IsIgnoredWhileItIsEmpty) {
    std::istringstream in("one two three ");
    ModelInFormat imf(in);
    imf.setPropagateKeyword("");
    EXPECT_EQ(keywordOf(imf), "one");
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "two");
    ModelInFormat::cleanPropagateKeyword();
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "three");
}

TEST_F(PropagateKeyword, IsClearedByAnEmptyOptional) {
    std::istringstream in("one ");
    ModelInFormat imf(in);
    imf.setPropagateKeyword("}");
    imf.setPropagateKeyword(std::nullopt);
    EXPECT_EQ(keywordOf(imf), "one");
}

TEST_F(PropagateKeyword, IsClearedByCleaning) {
    std::istringstream in("one ");
    ModelInFormat imf(in);
    imf.setPropagateKeyword("}");
    ModelInFormat::cleanPropagateKeyword();
    EXPECT_EQ(keywordOf(imf), "one");
}

TEST_F(PropagateKeyword, IsReplacedByALaterOne) {
    std::istringstream in("one ");
    ModelInFormat imf(in);
    imf.setPropagateKeyword("first");
    imf.setPropagateKeyword("second");
    EXPECT_EQ(keywordOf(imf), "second");
    imf.nextKeyword();
    EXPECT_EQ(keywordOf(imf), "one");
}

TEST_F(PropagateKeyword, OfANestedReaderReachesItsCallerAtTheNextKeyword) {
    std::istringstream in("inner } outer ");
    ModelInFormat caller(in);
    EXPECT_EQ(keywordOf(caller), "inner");
    {
        ModelInFormat nested(in);
        nested.nextKeyword();
        nested.setPropagateKeyword(nested.getKeyword());
    }
    caller.nextKeyword();
    EXPECT_EQ(keywordOf(caller), "}");
    caller.nextKeyword();
    EXPECT_EQ(keywordOf(caller), "outer");
}

TEST_F(PropagateKeyword, BelongsToTheThread) {
    ModelInFormat::setPropagateKeyword("}");
    std::string seen;

    std::thread([&] {
        std::istringstream in("one ");
        ModelInFormat imf(in);
        seen = keywordOf(imf);
        ModelInFormat::setPropagateKeyword("other");
    }).join();

    EXPECT_EQ(seen, "one");
    std::istringstream in("two ");
    ModelInFormat imf(in);
    EXPECT_EQ(keywordOf(imf), "}");
}

TEST_F(PropagateKeyword, IsClearedWhenAnExceptionEndsTheRead) {
    std::istringstream in("one ");
    ModelInFormat client(in);  // the client's own, which outlives the read
    try {
        const ModelInFormat outer(in);
        const ModelInFormat inner(in);
        inner.setPropagateKeyword("}");
        throw std::invalid_argument("Invalid number format");
    } catch (const std::invalid_argument&) {
        EXPECT_EQ(keywordOf(client), "one");
    }
}

TEST_F(PropagateKeyword, OfAReadDuringTheFlightOfAnExceptionIsKept) {
    // Reads while it is destroyed, as a host's clean-up may do; nothing goes wrong in that read.
    struct ReadsWhenItGoes {
        ~ReadsWhenItGoes() {
            std::istringstream in("");
            const ModelInFormat imf(in);
            imf.setPropagateKeyword("}");
        }
    };
    try {
        const ReadsWhenItGoes reader;
        throw std::runtime_error("elsewhere");
    } catch (const std::runtime_error&) {
        std::istringstream in("one ");
        ModelInFormat imf(in);
        EXPECT_EQ(keywordOf(imf), "}");
    }
}
