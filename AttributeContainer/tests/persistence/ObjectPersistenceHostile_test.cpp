// What is left behind by streams that are cut off, changed or nested without end.
#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/Point3d.h>

#include "support/Containers.h"
#include "support/HostileStreams.h"
#include "support/ObjectText.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

std::string sampleText() {
    const auto root = named("root");
    const auto point = addNamed<Point3d>(*root, "point");
    point->Position({1, 2.5, 3});
    addNamedField(*point, "field");
    addNamed(*point, "inner");
    addNamed<FallbackObject>(*root, "odd")->setOriginalClassName("Station");
    std::string text = written(*root);
    text.insert(text.size() - 2, "\nFoo \"{\\\"\" { 1 }" + body("x") + child("y"));
    text += "\nChild { \n\"Object\" \"shared\"\nInstanceID 1" + body("shared") + "\n}";
    text += "\nChild { \n\"Object\" \"again\"\nInstanceID 1\nReferenceToShared\n}";
    return text;
}

const std::vector<std::uint64_t> keys{1, 2, 3};

}  // namespace

TEST(ObjectPersistenceHostile, LeavesATreeThatCanBeWrittenWhereverTheStreamIsCut) {
    cutEverywhere<Object>(sampleText(), keys);
}

TEST(ObjectPersistenceHostile, LeavesATreeThatCanBeWrittenWhateverByteIsChanged) {
    changeEverywhere<Object>(sampleText(), "}{\" 9", keys);
}

TEST(ObjectPersistenceHostile, RefusesAHundredThousandLevels) {
    std::string text;
    for (int i = 0; i < 100000; ++i) text += "Child { \"Object\" \"c\" AttrContainer { } ";

    const auto root = Object::create();
    EXPECT_EQ(readText(*root, text), ErrorCode::ParseFailed);

    int depth = 0;
    for (std::shared_ptr<Object> at = root; at->getNumChildren() > 0; ++depth) at = at->getChild(0);
    EXPECT_EQ(depth, 1000);
}

TEST(ObjectPersistenceHostile, CannotNestBlocksOfUnknownAndKnownClassesWithoutEnd) {
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "Child { \"" + std::string(i % 2 == 0 ? "Object" : "Foo") +
                "\" \"c\" AttrContainer { } ";
    for (int i = 0; i < 20000; ++i) text += "} ";

    readAndWriteHostile<Object>(text, keys);
}

TEST(ObjectPersistenceHostile, CannotMakeEachSearchForANameBeginAnew) {
    // A child has the name that the attributes want, and others give up theirs all the time.
    const std::string wanting = "AttrContainer { Attr<int> { Name \"x\" } } ";
    const std::string renamed =
        "Child { \"Object\" \"y\" AttrContainer { Attr<String> { Name \"Name\" Value \"z\" } } } ";
    std::string text = "Child { \"Object\" \"x\" AttrContainer { } } ";
    for (int i = 0; i < 20000; ++i) text += wanting + renamed;
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, text), std::nullopt);

    EXPECT_EQ(root->getNumChildren(), 20001u);
    EXPECT_EQ(root->getNumAttributes(), 20006u);
    EXPECT_NE(root->getAttrToken("x20000"), AttrContainer::noToken);
}
