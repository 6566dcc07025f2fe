// How an object and its children come back from a stream.
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/Point3d.h>
#include <AttributeContainer/ReferenceDictionary.h>

#include "support/Containers.h"
#include "support/ObjectText.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(ObjectPersistenceReading, ReadsBackWhatItWrote) {
    const auto root = named("root");
    root->Event("seen");
    root->setUuid(QOR::uuids::uuid::generate());
    const auto point = addNamed<Point3d>(*root, "point");
    point->Position({1, 2, 3});
    addCustom(*point, "Extra", std::string("text"));
    addCustom(*addNamedField(*point, "field"), "InField", 7);
    addNamed(*point, "inner");
    addNamed(*root, "second");
    const auto copy = Object::create();

    EXPECT_EQ(readText(*copy, written(*root)), std::nullopt);

    EXPECT_EQ(written(*copy), written(*root));
    EXPECT_EQ(childNames(*copy), (Names{"point", "second"}));
    EXPECT_EQ(copy->getChild(0)->getClassName(), "Point3d");
    EXPECT_EQ(copy->getChild(0)->getParent(), copy);
}

TEST(ObjectPersistenceReading, AddsTheChildrenThatItReadsToThoseThatAreThere) {
    const auto root = named("root");
    addNamed(*root, "child");

    EXPECT_EQ(readText(*root, child("child")), std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"child", "child"}));
}

TEST(ObjectPersistenceReading, PassesOverTheWordObject) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, "Object { " + body("inside") + child("child") + "\n}"), std::nullopt);

    EXPECT_EQ(root->getName(), "inside");
    EXPECT_EQ(childNames(*root), (Names{"child"}));
    EXPECT_EQ(written(*root), body("inside") + child("child"));
}

TEST(ObjectPersistenceReading, EndsAtTheBraceThatEndsTheWordObjectInsideAChild) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, "Child { \n\"Object\" \"child\"\nObject { " + body("inside") +
                                  "\n}\n}" + child("lost")),
              std::nullopt);

    // The brace of the word ends the child, the one of the child ends the root.
    EXPECT_EQ(childNames(*root), (Names{"inside"}));
}

TEST(ObjectPersistenceReading, ReadsTheContainerAndTheChildrenInAnyOrder) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, child("a") + body("root") + child("b")), std::nullopt);

    EXPECT_EQ(root->getName(), "root");
    EXPECT_EQ(childNames(*root), (Names{"a", "b"}));
}

TEST(ObjectPersistenceReading, EndsQuietlyWhereTheInputEnds) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, ""), std::nullopt);
    EXPECT_EQ(readText(*root, "AttrContainer { \n"), std::nullopt);
    EXPECT_EQ(readText(*root, "Child { \n\"Object\" \"cut\"\nAttrContainer { \n"), std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"cut"}));
}

TEST(ObjectPersistenceReading, LetsItsCallerSeeTheBraceAtWhichItEnds) {
    std::istringstream stream(body("root") + "\n} Next { ");
    {
        ModelInFormat imf(stream);
        const auto root = Object::create();
        EXPECT_EQ(root->readFrom(stream, std::make_shared<const ReadContextBase>()), nullptr);
        imf.nextKeyword();
        EXPECT_EQ(imf.getKeyword(), "}");
        imf.nextKeyword();
        EXPECT_EQ(imf.getKeyword(), "Next");
    }
    ModelInFormat::cleanPropagateKeyword();
}

TEST(ObjectPersistenceReading, BreaksOffBehindAnAttributeOfAnUnknownType) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, "AttrContainer { \nOdd { \n}\n}" + child("lost")),
              ErrorCode::ObjectBlockBroken);

    EXPECT_EQ(root->getNumChildren(), 0u);
    EXPECT_EQ(keywordOfNextRead(), "clean");
}

TEST(ObjectPersistenceReading, EndsAReadAtTheFirstHardErrorAndKeepsWhatWasRead) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, body("root") + child("first") +
                                  "\nChild { \n\"Object\" \"second\"\nReferenceToShared\n}" +
                                  child("lost")),
              ErrorCode::ElementUnresolved);

    EXPECT_EQ(root->getName(), "root");
    EXPECT_EQ(childNames(*root), (Names{"first"}));
    EXPECT_EQ(keywordOfNextRead(), "clean");
}

TEST(ObjectPersistenceReading, TellsOfTheFirstOfSeveralWarnings) {
    const auto root = Object::create();
    const auto dictionary = [] {
        const auto context = std::make_shared<ReadContextBase>();
        context->setReferenceDictionary(std::make_unique<ReferenceDictionary>());
        return context;
    };
    const std::string skipped = "\nChild { \n\"Object\" \"r\"\nInstanceID 5\nReferenceToShared\n}";
    const std::string unknown = "\nChild { \n\"Foo\" \"f\"\nAttrContainer { \n}\n}";

    EXPECT_EQ(readText(*root, skipped + unknown, dictionary()), ErrorCode::ElementSkipped);
    EXPECT_EQ(readText(*root, unknown + skipped, dictionary()), ErrorCode::ObjectNotCreated);
}

TEST(ObjectPersistenceReading, DropsAWarningWhereAHardErrorFollows) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, "\nChild { \n\"Foo\" \"f\"\nAttrContainer { \n}\n}"
                              "\nChild { \n\"Object\" \"r\"\nReferenceToShared\n}"),
              ErrorCode::ElementUnresolved);
}

TEST(ObjectPersistenceReading, LeavesNoKeywordBehindWhereANumberIsMalformed) {
    const auto root = Object::create();

    EXPECT_THROW(readText(*root, "Child { \n\"Point3d\" \"p\"\nAttrContainer { \nAttr<double> { "
                                 "\nName \"PositionDeviation\"\nValue 1e\n}\n}\n}"),
                 std::invalid_argument);

    EXPECT_EQ(childNames(*root), (Names{"p"}));
    EXPECT_EQ(keywordOfNextRead(), "clean");
}

TEST(ObjectPersistenceReading, ReadsChildrenDownToTheDeepestLevelThatTheContextAccepts) {
    const auto root = named("root");
    addChain(root, 20);
    const std::string text = written(*root);
    const auto context = std::make_shared<ReadContextBase>();

    context->setMaxDepth(20);
    EXPECT_EQ(readText(*Object::create(), text, context), std::nullopt);

    context->setMaxDepth(19);
    const auto copy = Object::create();
    EXPECT_EQ(readText(*copy, text, context), ErrorCode::ParseFailed);
    int depth = 0;
    for (std::shared_ptr<Object> at = copy; at->getNumChildren() > 0; ++depth) at = at->getChild(0);
    EXPECT_EQ(depth, 19);
    EXPECT_EQ(keywordOfNextRead(), "clean");
}

TEST(ObjectPersistenceReading, TakesTwentyThousandChildrenOfOneParent) {
    const auto root = Object::create();
    for (int i = 0; i < 20000; ++i) addNamed(*root, "c" + std::to_string(i));
    const std::string text = written(*root);
    const auto copy = Object::create();

    EXPECT_EQ(readText(*copy, text), std::nullopt);

    EXPECT_EQ(copy->getNumChildren(), 20000u);
    EXPECT_EQ(written(*copy), text);
}
