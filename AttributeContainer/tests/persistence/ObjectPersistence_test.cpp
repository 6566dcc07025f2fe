#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/Point3d.h>
#include <AttributeContainer/SharedInstanceCollection.h>

#include "support/Containers.h"
#include "support/ObjectText.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Gives a prepared result from its writes, and does something first.
class Writer : public ContainerClass<Writer, Object, "Writer"> {
public:
    using Block::Block;
    ErrorPtr writeTo(std::ostream& stream,
                     std::shared_ptr<const WriteContextBase> context) override {
        ++numWrites;
        act(stream);
        if (answer) return QOR_ERROR(ParseFailed, "Writer::writeTo");
        if (warning) return QOR_ERROR(ElementSkipped, "Writer::writeTo");
        return Object::writeTo(stream, context);
    }

    int numWrites = 0;
    bool answer = false;
    bool warning = false;
    std::function<void(std::ostream&)> act = [](std::ostream&) {};
};

}  // namespace

// The words ---------------------------------------------------------------------------------------

TEST(ObjectPersistence, HasAWordForEachPartOfABlock) {
    EXPECT_EQ(Object::keyTable.keyToToken("Object"), 0u);
    EXPECT_EQ(Object::keyTable.keyToToken("Child"), 1u);
    EXPECT_EQ(Object::keyTable.keyToToken("MajorVersion"), 2u);
    EXPECT_EQ(Object::keyTable.keyToToken("MinorVersion"), 3u);
    EXPECT_EQ(Object::keyTable.keyToToken(""), 4u);
    EXPECT_EQ(Object::keyTable.size(), 5u);
}

// Writing -----------------------------------------------------------------------------------------

TEST(ObjectPersistence, WritesATreeBlockByBlock) {
    const auto root = named("root");
    const auto scan = addNamed<Point3d>(*root, "scan");
    scan->Event("seen");
    scan->Position({1, 0.5, -2});
    addNamed(*scan, "inner");
    addNamedField(*root, "field");

    EXPECT_EQ(written(*root), R"(
AttrContainer { 
Attr<String> { 
Name "Name"
Value "root"
}
Attr<String> { 
Name "Action"
}
Attr<String> { 
Name "Event"
}
Attr<uint16_t> { 
Name "MajorVersion"
}
Attr<uint16_t> { 
Name "MinorVersion"
}
Attr<Uuid> { 
Name "UUID"
}
SubContainer { 
"AttrContainer" "field"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "AttrContainer"
}
}
}
}
Child { 
"Point3d" "scan"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "scan"
}
Attr<String> { 
Name "Action"
}
Attr<String> { 
Name "Event"
Value "seen"
}
Attr<uint16_t> { 
Name "MajorVersion"
}
Attr<uint16_t> { 
Name "MinorVersion"
}
Attr<Uuid> { 
Name "UUID"
}
Attr<Vec3dd> { 
Name "Position"
Value 1 0.5 -2
}
Attr<double> { 
Name "PositionDeviation"
}
}
Child { 
"Object" "inner"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "inner"
}
Attr<String> { 
Name "Action"
}
Attr<String> { 
Name "Event"
}
Attr<uint16_t> { 
Name "MajorVersion"
}
Attr<uint16_t> { 
Name "MinorVersion"
}
Attr<Uuid> { 
Name "UUID"
}
}
}
})");
}

TEST(ObjectPersistence, WritesChildrenInTheOrderOfTheList) {
    const auto root = named("root");
    addNamed(*root, "b");
    addNamed(*root, "a");

    EXPECT_EQ(written(*root), body("root") + child("b") + child("a"));
}

TEST(ObjectPersistence, WritesNoChildWhereTheContextSaysSo) {
    const auto root = named("root");
    addNamed(*root, "child");
    const auto context = std::make_shared<WriteContextBase>();
    context->setWriteChildren(false);

    EXPECT_EQ(written(*root, context), body("root"));
}

TEST(ObjectPersistence, WritesOnlyChildrenWhoseNameIsMarkedWhereTheContextSaysSo) {
    const auto root = named("root");
    const auto marked = addNamed(*root, "marked");
    marked->Attr_Name().setMarked(true);
    addNamed(*marked, "below");
    const auto unmarked = addNamed(*root, "unmarked");
    unmarked->Attr_Event().setMarked(true);
    addNamed(*unmarked, "lost")->Attr_Name().setMarked(true);
    const auto context = std::make_shared<WriteContextBase>();
    context->setWriteOnlyMarkedObjects(true);

    EXPECT_EQ(written(*root, context), body("root") + child("marked"));
}

TEST(ObjectPersistence, WritesItsOwnAttributesAlsoWhereNoChildIsMarked) {
    const auto root = named("root");
    addNamed(*root, "child");
    const auto context = std::make_shared<WriteContextBase>();
    context->setWriteOnlyMarkedObjects(true);

    EXPECT_EQ(written(*root, context), body("root"));
}

TEST(ObjectPersistence, GivesEveryWrittenObjectAUuidWhereTheContextSaysSo) {
    const auto root = named("root");
    const auto first = addNamed(*root, "child");
    const auto below = addNamed(*first, "below");
    const auto context = std::make_shared<WriteContextBase>();
    context->setCreateObjectUuid(true);

    const std::string text = written(*root, context);

    for (const auto& object : {root, first, below}) {
        EXPECT_FALSE(object->UUID().is_nil());
        EXPECT_NE(text.find("\nName \"UUID\"\nValue " + object->Attr_UUID().getValueString()),
                  std::string::npos);
    }
    EXPECT_EQ(written(*root, context), text);
}

TEST(ObjectPersistence, MakesNoUuidByItself) {
    const auto root = named("root");

    written(*root);

    EXPECT_TRUE(root->UUID().is_nil());
}

TEST(ObjectPersistence, NamesTheClassThatAPlaceholderStandsFor) {
    const auto root = named("root");
    const auto odd = addNamed<FallbackObject>(*root, "odd");
    odd->setOriginalClassName("Station");

    EXPECT_EQ(written(*root), body("root") + "\nChild { \n\"Station\" \"odd\"\n}");
}

TEST(ObjectPersistence, EscapesTheNamesThatItWrites) {
    const auto root = named("root");
    const auto odd = addNamed<FallbackObject>(*root, "odd");
    odd->setOriginalClassName("a \"b\"");
    {
        const BlockObserver unasked;
        odd->name("x\ny");
    }

    EXPECT_EQ(written(*root), body("root") + "\nChild { \n\"a \\\"b\\\"\" \"x\\ny\"\n}");
}

TEST(ObjectPersistence, WritesAnInstanceOnceWhereInstancesAreShared) {
    const auto root = named("root");
    const auto first = addNamed(*root, "first");
    const std::string id = "\nInstanceID " + std::to_string(first->getInstanceIdentifier());
    SharedInstanceCollection instances;
    const auto context = sharing(instances);
    std::vector<std::uint64_t> keys;

    EXPECT_EQ(written(*root, context),
              body("root") + "\nChild { \n\"Object\" \"first\"" + id + body("first") + "\n}");
    EXPECT_TRUE(first->isSerialized());
    EXPECT_FALSE(root->isSerialized());
    instances.copyToVector(keys);
    EXPECT_TRUE(keys.empty());

    EXPECT_EQ(written(*root, context), body("root") + "\nChild { \n\"Object\" \"first\"" + id +
                                           "\nReferenceToShared \n}");
    instances.copyToVector(keys);
    EXPECT_EQ(keys, std::vector<std::uint64_t>{first->getInstanceIdentifier()});
}

TEST(ObjectPersistence, LeavesTheSerializedStateAloneWhereNothingIsShared) {
    const auto root = named("root");
    const auto first = addNamed(*root, "first");
    first->setIsSerialized(true);

    EXPECT_EQ(written(*root), body("root") + child("first"));

    EXPECT_TRUE(first->isSerialized());
}

TEST(ObjectPersistence, KeepsTheVersionOfAChild) {
    const auto root = named("root");
    const auto versioned = addNamed(*root, "child");
    versioned->setClassVersion({3, 4});

    const std::string text = written(*root);

    EXPECT_EQ(versioned->getStoredClassVersion(), (ClassVersion{3, 4}));
    EXPECT_NE(text.find("\nName \"MajorVersion\"\nValue 3"), std::string::npos);
    EXPECT_NE(text.find("\nName \"MinorVersion\"\nValue 4"), std::string::npos);
    EXPECT_NE(text.find("\"Object\" \"child\"\nAttrContainer"), std::string::npos);
}

TEST(ObjectPersistence, WritesATreeAsXmlElements) {
    const auto root = named("root");
    addNamed(*root, "child");
    const auto context = std::make_shared<WriteContextBase>(2);

    const std::string text = written(*root, context);

    EXPECT_NE(text.find("</AttrContainer>\n<Child>\n<Object value=\"'child'\" />\n<AttrContainer>"),
              std::string::npos);
    EXPECT_TRUE(text.ends_with("</AttrContainer>\n</Child>\n"));
}

TEST(ObjectPersistence, EndsAWriteAtTheFirstHardError) {
    const auto root = named("root");
    addNamed<Writer>(*root, "first")->warning = true;
    addNamed<Writer>(*root, "second")->answer = true;
    const auto third = addNamed<Writer>(*root, "third");
    std::ostringstream stream;

    EXPECT_EQ(codeOf(root->writeTo(stream, std::make_shared<const WriteContextBase>())),
              ErrorCode::ParseFailed);

    EXPECT_EQ(third->numWrites, 0);
    EXPECT_TRUE(stream.str().ends_with("\nChild { \n\"Writer\" \"second\""));
}

TEST(ObjectPersistence, GoesOnBehindAWarningAndTellsOfItAtTheEnd) {
    const auto root = named("root");
    addNamed<Writer>(*root, "first")->warning = true;
    addNamed(*root, "second");
    std::ostringstream stream;

    EXPECT_EQ(codeOf(root->writeTo(stream, std::make_shared<const WriteContextBase>())),
              ErrorCode::ElementSkipped);

    EXPECT_EQ(stream.str(),
              body("root") + "\nChild { \n\"Writer\" \"first\"\n}" + child("second"));
}

TEST(ObjectPersistence, TellsOfAFailedStreamRatherThanOfAWarning) {
    const auto root = named("root");
    const auto last = addNamed<Writer>(*root, "last");
    last->warning = true;
    last->act = [](std::ostream& stream) { stream.setstate(std::ios::badbit); };
    std::ostringstream stream;

    EXPECT_EQ(codeOf(root->writeTo(stream, std::make_shared<const WriteContextBase>())),
              ErrorCode::StreamFailed);
}

TEST(ObjectPersistence, WritesOnWhileChildrenComeAndGo) {
    const auto root = named("root");
    const auto first = addNamed<Writer>(*root, "first");
    addNamed(*root, "second");
    addNamed(*root, "third");
    first->act = [&](std::ostream&) {
        root->rmChild(*first, 0);
        addNamed(*root, "late");
    };

    const std::string text = written(*root);

    // The third one has moved to the place of the second, and the late one to that of the third.
    EXPECT_EQ(text.find("\"second\""), std::string::npos);
    EXPECT_NE(text.find("\"third\""), std::string::npos);
    EXPECT_NE(text.find("\"late\""), std::string::npos);
}

TEST(ObjectPersistence, NeedsAContext) {
    const auto root = named("root");
    std::istringstream in("AttrContainer { }");
    std::ostringstream out;

    EXPECT_EQ(codeOf(root->writeTo(out, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(codeOf(root->readFrom(in, nullptr)), ErrorCode::ContextMissing);

    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(in.tellg(), 0);
}
