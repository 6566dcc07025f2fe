// What a placeholder makes its own of the block that it stands for.
#include <AttributeContainer/FallbackObject.h>

#include "objects/FallbackBlocks.h"
#include "support/BlockText.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {
// Blocks of an unknown class, one inside the other.
std::string nestedBlocks(int depth) {
    std::string text = "AttrContainer { \nAttr<String> { \nName \"Deepest\"\nValue \"x\"\n}\n}\n";
    for (int i = 1; i < depth; ++i)
        text = "AttrContainer { \n}\nChild { \n\"Foo\" \"f\"\n" + text + "}\n";
    return text;
}
}  // namespace

TEST(FallbackObjectContainer, TakesPartWithAContainerThatItCanRead) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, countBlock + "}"), ErrorCode::ElementSkipped);

    const auto count = std::dynamic_pointer_cast<Attr<int>>(object->getAttribute("Count").lock());
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->get(), 5);
    EXPECT_EQ(written(*object), countBlockRewritten);
}

TEST(FallbackObjectContainer, TakesPartWithTheChildrenBehindTheContainer) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(
        readText(*object, countBlock + "Child { \n\"Point3d\" \"p\"\nAttrContainer { \n}\n}\n}"),
        ErrorCode::ElementSkipped);

    EXPECT_EQ(childNames(*object), (Names{"p"}));
    EXPECT_EQ(object->getChild(0)->getClassName(), "Point3d");
    EXPECT_EQ(object->getChild(0)->getParent(), object);
}

TEST(FallbackObjectContainer, KeepsWhatStandsAheadOfTheContainerAsText) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo { 1 }\n" + countBlock + "}"), ErrorCode::ElementSkipped);

    EXPECT_NE(object->getAttrToken("Count"), AttrContainer::noToken);
    EXPECT_EQ(written(*object), "\nFoo { 1 }\n" + countBlockRewritten);
}

TEST(FallbackObjectContainer, ReadsTheContainerInTheContextOfTheWholeRead) {
    // A field inside the unknown block is referred to from outside of it.
    const std::string part =
        containerBlock(fieldBlock("AttrContainer", "a", instanceLine(7) + containerBlock()));
    const auto root = Object::create();

    EXPECT_EQ(readText(*root,
                       containerBlock(fieldBlock("Foo", "f", part) +
                                      fieldBlock("AttrContainer", "b", referenceTo(7))),
                       resolving({7})),
              ErrorCode::ElementSkipped);

    const auto unknown = root->getField("f").lock();
    ASSERT_NE(unknown, nullptr);
    ASSERT_FALSE(unknown->getField("a").expired());
    EXPECT_EQ(root->getField("b").lock(), unknown->getField("a").lock());
}

TEST(FallbackObjectContainer, FindsTheContainerWhateverTheCaseOfItsWord) {
    // The reader of containers knows the word in one case only, so that the part stays text.
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo 1\nATTRCONTAINER { \n} }"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo 1\n\nATTRCONTAINER { \n} ");
}

TEST(FallbackObjectContainer, LeavesAContainerInsideAnotherBlockToThatBlock) {
    const std::string text = "Wrapper { \n" + countBlock + "}\n";
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, text + "}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(object->getAttrToken("Count"), AttrContainer::noToken);
    EXPECT_EQ(written(*object), "\n" + text);
}

TEST(FallbackObjectContainer, FindsItsContainerBehindABlockThatHoldsAnother) {
    const std::string wrapper = "Wrapper { \nAttrContainer { \n}\n}\n";
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, wrapper + countBlock + "}"), ErrorCode::ElementSkipped);

    EXPECT_NE(object->getAttrToken("Count"), AttrContainer::noToken);
    EXPECT_EQ(written(*object), "\n" + wrapper + countBlockRewritten);
}

TEST(FallbackObjectContainer, DoesNotTakeAQuotedWordForTheContainer) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, "Foo \"AttrContainer\" { } }"), ErrorCode::ElementSkipped);

    EXPECT_EQ(written(*object), "\nFoo \"AttrContainer\" { } ");
}

TEST(FallbackObjectContainer, KeepsAContainerThatItCannotReadAsText) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, brokenBlock + "}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(object->getAttrToken("Count"), AttrContainer::noToken);
    EXPECT_EQ(object->getNumAttributes(), 6u);
    EXPECT_EQ(object->getNumChildren(), 0u);
    EXPECT_EQ(object->getNumFields(), 1u);
    EXPECT_EQ(written(*object), "\n" + brokenBlock);
}

TEST(FallbackObjectContainer, KeepsTheTextAlsoWhereANumberInItIsMalformed) {
    const std::string text = "AttrContainer { \nAttr<double> { \nName \"x\"\nValue 1e\n}\n}\n";
    const auto object = FallbackObject::create();

    EXPECT_THROW(readText(*object, text + "}"), std::invalid_argument);

    EXPECT_EQ(written(*object), "\n" + text);
}

TEST(FallbackObjectContainer, GivesUpWhatItHeldWhenItIsReadAgain) {
    const auto object = FallbackObject::create();
    readText(*object, "Foo 1\n" + countBlock + "}");

    readText(*object, "Bar 2 }");

    EXPECT_EQ(written(*object), "\nBar 2 ");
}

TEST(FallbackObjectContainer, ParsesSixteenBlocksInsideOneAnotherAndKeepsDeeperOnesAsText) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, nestedBlocks(40) + "}"), ErrorCode::ElementSkipped);

    std::shared_ptr<Object> last = object;
    int depth = 0;
    for (; last->getNumChildren() > 0; ++depth) last = last->getChild(0);
    EXPECT_EQ(depth, 16);
    EXPECT_EQ(written(*last), "\n" + nestedBlocks(24));
}

TEST(FallbackObjectContainer, ParsesSixteenBlocksOfANewRead) {
    readText(*FallbackObject::create(), nestedBlocks(40) + "}");
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, nestedBlocks(16) + "}"), ErrorCode::ElementSkipped);

    std::shared_ptr<Object> last = object;
    while (last->getNumChildren() > 0) last = last->getChild(0);
    EXPECT_NE(last->getAttrToken("Deepest"), AttrContainer::noToken);
}

TEST(FallbackObjectContainer, TakesTenThousandBlocksInsideOneAnother) {
    std::string text = "AttrContainer { \n";
    for (int i = 0; i < 10000; ++i) text += "}\nChild { \n\"Foo\" \"f\"\nAttrContainer { \n";
    text += "}\n";
    for (int i = 0; i < 10000; ++i) text += "}\n";
    const auto object = FallbackObject::create();

    EXPECT_EQ(readText(*object, text + "}"), ErrorCode::ElementSkipped);

    EXPECT_EQ(object->getNumChildren(), 1u);
}
