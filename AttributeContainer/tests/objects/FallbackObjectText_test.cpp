// What a placeholder keeps as text.
#include <AttributeContainer/FallbackObject.h>

#include <AttributeContainer/ModelInFormat.h>

#include "support/Streams.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {
const auto readContext = std::make_shared<const ReadContextBase>();
}  // namespace

TEST(FallbackObjectText, GivesABlockWithNoContainerBackAsItCame) {
    ModelInFormat::cleanPropagateKeyword();
    const auto object = FallbackObject::create();
    std::istringstream stream("Foo 1\t{ a { b } }\n  \"x\" tail\n} behind ");

    EXPECT_EQ(codeOf(object->readFrom(stream, readContext)), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo 1\t{ a { b } }\n  \"x\" tail\n");
    std::string behind;
    std::getline(stream, behind);
    EXPECT_EQ(behind, " behind ");
}

TEST(FallbackObjectText, DoesNotCountBracesInQuotes) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, R"(Foo "}}}{" "{{{{" { "}" } })"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo \"}}}{\" \"{{{{\" { \"}\" } ");
}

TEST(FallbackObjectText, GoesOnBehindAnEscapedQuote) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, R"(Foo "a\"}b" c })"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo \"a\\\"}b\" c ");
}

TEST(FallbackObjectText, EndsAQuotedTextBehindAnEscapedBackslash) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, R"(Foo "C:\\" { "D:\\" } })"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), R"(
Foo "C:\\" { "D:\\" } )");
}

TEST(FallbackObjectText, KeepsAQuotedTextThatBeginsTheBlock) {
    for (const std::string text : {R"("a } b" 1 )", R"("a \" } b" { 1 } )", R"("} " { } )",
                                   R"("C:\\" "}" )", R"("" "}" )"}) {
        const auto object = FallbackObject::create();

        EXPECT_EQ(readText(*object, text + "}"), ErrorCode::ElementSkipped) << text;

        EXPECT_EQ(written(*object), "\n" + text);
    }
}

TEST(FallbackObjectText, CountsABraceThatBeginsTheBlock) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "{ a } b }"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\n{ a } b ");
}

TEST(FallbackObjectText, BeginsAQuotedTextOnlyWhereATokenBegins) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo a\"b}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo a\"b");
}

TEST(FallbackObjectText, TakesBracesAsTokensWhereverTheyStand) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo a{b}c}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo a{b}c");
}

TEST(FallbackObjectText, LetsItsCallerSeeTheBraceThatEndsTheBlock) {
    ModelInFormat::cleanPropagateKeyword();
    std::istringstream stream("Foo 1 } Next { ");
    ModelInFormat imf(stream);
    ASSERT_EQ(imf.getKeyword(), "Foo");

    EXPECT_EQ(codeOf(FallbackObject::create()->readFrom(stream, readContext)),
              ErrorCode::ElementSkipped);

    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "}");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "Next");
}

TEST(FallbackObjectText, FailsWhereTheInputEndsInsideTheBlock) {
    for (const char* const text : {"", "Foo", "Foo ", "Foo { }", "Foo \"}", "AttrContainer { } "}) {
        const auto object = FallbackObject::create();
        EXPECT_EQ(readText(*object, text), ErrorCode::StreamFailed) << text;

        std::istringstream next("clean ");
        EXPECT_EQ(ModelInFormat(next).getKeyword(), "clean") << text;
    }
}

TEST(FallbackObjectText, FailsOnAStreamThatHasFailedBefore) {
    ModelInFormat::cleanPropagateKeyword();
    const auto object = FallbackObject::create();
    std::istringstream stream("Foo 1 }");
    stream.setstate(std::ios::failbit);

    EXPECT_EQ(codeOf(object->readFrom(stream, readContext)), ErrorCode::StreamFailed);

    EXPECT_EQ(written(*object), "");
}

TEST(FallbackObjectText, TakesAMillionTokensAndAHundredThousandBraces) {
    std::string text = "Foo ";
    for (int i = 0; i < 500000; ++i) text += "a ";
    text += std::string(100000, '{') + std::string(100000, '}');
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, text + "}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\n" + text);
}
