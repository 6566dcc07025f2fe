#include <AttributeContainer/FallbackObject.h>

#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/Point3d.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/ObjectText.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

const auto readContext = std::make_shared<const ReadContextBase>();
const auto writeContext = std::make_shared<const WriteContextBase>();

// A container part that can be read, and what the object then writes in its place.
const std::string countBlock = R"(AttrContainer { 
Attr<int> { 
Name "Count"
Value 5
}
}
)";
const std::string countBlockRewritten =
    body("FallbackObject", attributeBlock("int", "Count", "5"));

// A container part that ends in a hard error, behind an attribute, a field and a child that can be
// read.
const std::string brokenBlock = R"(AttrContainer { 
Attr<int> { 
Name "Count"
Value 5
}
SubContainer { 
"AttrContainer" "field"
AttrContainer { 
}
}
}
Child { 
"Object" "child"
AttrContainer { 
}
}
AttrContainer { 
Attr<Foo> { 
Name "odd"
Value 1
}
}
)";

// Blocks of an unknown class, one inside the other.
std::string nestedBlocks(int depth) {
    std::string text = "AttrContainer { \nAttr<String> { \nName \"Deepest\"\nValue \"x\"\n}\n}\n";
    for (int i = 1; i < depth; ++i)
        text = "AttrContainer { \n}\nChild { \n\"Foo\" \"f\"\n" + text + "}\n";
    return text;
}

}  // namespace

// The class ---------------------------------------------------------------------------------------

TEST(FallbackObject, KnowsItsClassName) {
    EXPECT_EQ(FallbackObject::getStaticClassName(), "FallbackObject");
    EXPECT_EQ(FallbackObject::create()->getClassName(), "FallbackObject");
    EXPECT_EQ(FallbackObject::create()->getName(), "FallbackObject");
}

TEST(FallbackObject, HasNoRowsOfItsOwn) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(object->getMaxAttrToken(), 5u);
    EXPECT_EQ(object->getNumAttributes(), 6u);
    EXPECT_EQ(object->getAttrToken("UUID"), 5u);
}

TEST(FallbackObject, IsAnObjectAndAPlaceholder) {
    const std::shared_ptr<AttrContainer> object = FallbackObject::create();

    EXPECT_NE(std::dynamic_pointer_cast<Object>(object), nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<IFallbackObject>(object), nullptr);
}

TEST(FallbackObject, KeepsTheNameOfTheClassThatItStandsFor) {
    const auto object = FallbackObject::create();
    EXPECT_EQ(object->getOriginalClassName(), "");

    object->setOriginalClassName("Station");

    EXPECT_EQ(object->getOriginalClassName(), "Station");
}

TEST(FallbackObject, TakesNameAndAttributesFromAnyObject) {
    const auto source = named<Point3d>("source");
    source->Event("arrived");
    source->PositionDeviation(0.5);
    addCustom(*source, "Extra", 3);

    const auto object = FallbackObject::create(CreateDeep, *source);

    EXPECT_EQ(object->getName(), "source");
    EXPECT_EQ(object->Event(), "arrived");
    EXPECT_EQ(object->getAttrToken("PositionDeviation"), AttrContainer::noToken);
    EXPECT_EQ(object->getAttrToken("Extra"), 6u);
}

TEST(FallbackObject, IsDuplicatedWithoutItsTexts) {
    const auto object = named<FallbackObject>("odd");
    object->setOriginalClassName("Station");
    ASSERT_EQ(readText(*object, "Foo 1 }"), ErrorCode::ElementSkipped);

    const auto copy = std::dynamic_pointer_cast<FallbackObject>(object->duplicate(CreateDeep));
    const auto fresh = std::dynamic_pointer_cast<FallbackObject>(object->duplicate(CreateEmpty));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getName(), "odd");
    EXPECT_EQ(copy->getOriginalClassName(), "");
    EXPECT_TRUE(copy->holdsNoUnknownData());
    EXPECT_EQ(written(*copy), "");
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->getName(), "FallbackObject");
}

TEST(FallbackObject, HoldsUnknownDataOnceItWasRead) {
    const auto fresh = FallbackObject::create();
    EXPECT_TRUE(fresh->holdsNoUnknownData());

    for (const auto& text : {std::string("Foo 1 }"), countBlock + "}", brokenBlock + "}"}) {
        const auto object = FallbackObject::create();
        readText(*object, text);
        EXPECT_FALSE(object->holdsNoUnknownData()) << text;
    }
}

TEST(FallbackObject, WritesNothingBeforeItWasRead) {
    EXPECT_EQ(written(*FallbackObject::create()), "");
}

// Raw text ----------------------------------------------------------------------------------------

TEST(FallbackObject, GivesABlockWithNoContainerBackAsItCame) {
    ModelInFormat::cleanPropagateKeyword();
    const auto object = FallbackObject::create();
    std::istringstream stream("Foo 1\t{ a { b } }\n  \"x\" tail\n} behind ");

    EXPECT_EQ(codeOf(object->readFrom(stream, readContext)), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo 1\t{ a { b } }\n  \"x\" tail\n");
    std::string behind;
    std::getline(stream, behind);
    EXPECT_EQ(behind, " behind ");
}

TEST(FallbackObject, DoesNotCountBracesInQuotes) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, R"(Foo "}}}{" "{{{{" { "}" } })"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo \"}}}{\" \"{{{{\" { \"}\" } ");
}

TEST(FallbackObject, GoesOnBehindAnEscapedQuote) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, R"(Foo "a\"}b" c })"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo \"a\\\"}b\" c ");
}

TEST(FallbackObject, EndsAQuotedTextBehindAnEscapedBackslash) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, R"(Foo "C:\\" { "D:\\" } })"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), R"(
Foo "C:\\" { "D:\\" } )");
}

TEST(FallbackObject, BeginsAQuotedTextOnlyWhereATokenBegins) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo a\"b}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo a\"b");
}

TEST(FallbackObject, TakesBracesAsTokensWhereverTheyStand) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo a{b}c}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo a{b}c");
}

TEST(FallbackObject, LetsItsCallerSeeTheBraceThatEndsTheBlock) {
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

TEST(FallbackObject, FailsWhereTheInputEndsInsideTheBlock) {
    for (const char* const text : {"", "Foo", "Foo ", "Foo { }", "Foo \"}", "AttrContainer { } "}) {
        const auto object = FallbackObject::create();
        EXPECT_EQ(readText(*object, text), ErrorCode::StreamFailed) << text;

        std::istringstream next("clean ");
        EXPECT_EQ(ModelInFormat(next).getKeyword(), "clean") << text;
    }
}

TEST(FallbackObject, TakesAMillionTokensAndAHundredThousandBraces) {
    std::string text = "Foo ";
    for (int i = 0; i < 500000; ++i) text += "a ";
    text += std::string(100000, '{') + std::string(100000, '}');
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, text + "}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\n" + text);
}

// The container part ------------------------------------------------------------------------------

TEST(FallbackObject, TakesPartWithAContainerThatItCanRead) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, countBlock + "}"), ErrorCode::ElementSkipped);

    const auto count = std::dynamic_pointer_cast<Attr<int>>(object->getAttribute("Count").lock());
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->get(), 5);
    EXPECT_EQ(written(*object), countBlockRewritten);
}

TEST(FallbackObject, TakesPartWithTheChildrenBehindTheContainer) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object,
                       countBlock + "Child { \n\"Point3d\" \"p\"\nAttrContainer { \n}\n}\n}"),
              ErrorCode::ElementSkipped);

    EXPECT_EQ(childNames(*object), (Names{"p"}));
    EXPECT_EQ(object->getChild(0)->getClassName(), "Point3d");
    EXPECT_EQ(object->getChild(0)->getParent(), object);
}

TEST(FallbackObject, KeepsWhatStandsAheadOfTheContainerAsText) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo { 1 }\n" + countBlock + "}"), ErrorCode::ElementSkipped);

    EXPECT_NE(object->getAttrToken("Count"), AttrContainer::noToken);
    EXPECT_EQ(written(*object), "\nFoo { 1 }\n" + countBlockRewritten);
}

TEST(FallbackObject, FindsTheContainerWhateverTheCaseOfItsWord) {
    // The reader of containers knows the word in one case only, so that the part stays text.
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo 1\nATTRCONTAINER { \n} }"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo 1\n\nATTRCONTAINER { \n} ");
}

TEST(FallbackObject, DoesNotTakeAQuotedWordForTheContainer) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo \"AttrContainer\" { } }"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo \"AttrContainer\" { } ");
}

TEST(FallbackObject, KeepsAContainerThatItCannotReadAsText) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, brokenBlock + "}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(object->getAttrToken("Count"), AttrContainer::noToken);
    EXPECT_EQ(object->getNumAttributes(), 6u);
    EXPECT_EQ(object->getNumChildren(), 0u);
    EXPECT_EQ(object->getNumFields(), 1u);
    EXPECT_EQ(written(*object), "\n" + brokenBlock);
}

TEST(FallbackObject, KeepsTheTextAlsoWhereANumberInItIsMalformed) {
    const std::string text =
        "AttrContainer { \nAttr<double> { \nName \"x\"\nValue 1e\n}\n}\n";
    const auto object = FallbackObject::create();

    EXPECT_THROW(readText(*object, text + "}"), std::invalid_argument);

    EXPECT_EQ(written(*object), "\n" + text);
}

TEST(FallbackObject, GivesUpWhatItHeldWhenItIsReadAgain) {
    const auto object = FallbackObject::create();
    readText(*object, "Foo 1\n" + countBlock + "}");

    readText(*object, "Bar 2 }");

    EXPECT_EQ(written(*object), "\nBar 2 ");
}

TEST(FallbackObject, ParsesSixteenBlocksInsideOneAnotherAndKeepsDeeperOnesAsText) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, nestedBlocks(40) + "}"), ErrorCode::ElementSkipped);

    std::shared_ptr<Object> last = object;
    int depth = 0;
    for (; last->getNumChildren() > 0; ++depth) last = last->getChild(0);
    EXPECT_EQ(depth, 16);
    EXPECT_EQ(written(*last), "\n" + nestedBlocks(24));
}

TEST(FallbackObject, ParsesSixteenBlocksOfANewRead) {
    readText(*FallbackObject::create(), nestedBlocks(40) + "}");
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, nestedBlocks(16) + "}"), ErrorCode::ElementSkipped);

    std::shared_ptr<Object> last = object;
    while (last->getNumChildren() > 0) last = last->getChild(0);
    EXPECT_NE(last->getAttrToken("Deepest"), AttrContainer::noToken);
}

TEST(FallbackObject, TakesTenThousandBlocksInsideOneAnother) {
    std::string text = "AttrContainer { \n";
    for (int i = 0; i < 10000; ++i) text += "}\nChild { \n\"Foo\" \"f\"\nAttrContainer { \n";
    text += "}\n";
    for (int i = 0; i < 10000; ++i) text += "}\n";
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, text + "}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(object->getNumChildren(), 1u);
}

// Failures ----------------------------------------------------------------------------------------

TEST(FallbackObject, NeedsAContext) {
    const auto object = FallbackObject::create();
    std::istringstream in("Foo }");
    std::ostringstream out;

    EXPECT_EQ(codeOf(object->readFrom(in, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(codeOf(object->writeTo(out, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(in.tellg(), 0);
}

TEST(FallbackObject, TellsOfAStreamThatTakesNoMore) {
    const auto raw = FallbackObject::create();
    readText(*raw, "Foo }");
    const auto parsed = FallbackObject::create();
    readText(*parsed, countBlock + "}");

    for (const auto& object : {raw, parsed, FallbackObject::create()}) {
        std::ostringstream stream;
        stream.setstate(std::ios::failbit);
        EXPECT_EQ(codeOf(object->writeTo(stream, writeContext)), ErrorCode::StreamFailed);
    }
}
