#include <AttributeContainer/FallbackObject.h>

#include <AttributeContainer/Point3d.h>

#include "objects/FallbackBlocks.h"
#include "support/Containers.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

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

TEST(FallbackObject, BeginsWithThePlaceholderAndGoesOnWithTheObject) {
    const auto object = FallbackObject::create();

    EXPECT_EQ(static_cast<void*>(static_cast<IFallbackObject*>(object.get())),
              dynamic_cast<void*>(object.get()));
}

TEST(FallbackObject, PreparesAReadAsAnyContainer) {
    EXPECT_TRUE((std::is_same_v<decltype(&FallbackObject::initRead), void (AttrContainer::*)()>));
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
        EXPECT_EQ(codeOf(object->writeTo(stream, std::make_shared<const WriteContextBase>())),
                  ErrorCode::StreamFailed);
    }
}
