#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/Point3d.h>
#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/SharedInstanceCollection.h>

#include "support/Containers.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// The body of a plain object of that name.
std::string body(const std::string& name) {
    return "\nAttrContainer { "
           "\nAttr<String> { \nName \"Name\"\nValue \"" +
           name +
           "\"\n}"
           "\nAttr<String> { \nName \"Action\"\n}"
           "\nAttr<String> { \nName \"Event\"\n}"
           "\nAttr<uint16_t> { \nName \"MajorVersion\"\n}"
           "\nAttr<uint16_t> { \nName \"MinorVersion\"\n}"
           "\nAttr<Uuid> { \nName \"UUID\"\n}"
           "\n}";
}

std::string child(const std::string& name, const std::string& below = {}) {
    return "\nChild { \n\"Object\" \"" + name + "\"" + body(name) + below + "\n}";
}

// The keyword that the thread's next read finds on a stream of its own.
std::string keywordOfNextRead() {
    std::istringstream in("clean ");
    return ModelInFormat(in).getKeyword().value_or("(none)");
}

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
    const auto context = std::make_shared<WriteContextBase>();
    context->setSharedInstances(&instances);
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

// Reading -----------------------------------------------------------------------------------------

TEST(ObjectPersistence, ReadsBackWhatItWrote) {
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

TEST(ObjectPersistence, AddsTheChildrenThatItReadsToThoseThatAreThere) {
    const auto root = named("root");
    addNamed(*root, "child");

    EXPECT_EQ(readText(*root, child("child")), std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"child", "child"}));
}

TEST(ObjectPersistence, PassesOverTheWordObject) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, "Object { " + body("inside") + child("child") + "\n}"), std::nullopt);

    EXPECT_EQ(root->getName(), "inside");
    EXPECT_EQ(childNames(*root), (Names{"child"}));
    EXPECT_EQ(written(*root), body("inside") + child("child"));
}

TEST(ObjectPersistence, EndsAtTheBraceThatEndsTheWordObjectInsideAChild) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, "Child { \n\"Object\" \"child\"\nObject { " + body("inside") +
                                  "\n}\n}" + child("lost")),
              std::nullopt);

    // The brace of the word ends the child, the one of the child ends the root.
    EXPECT_EQ(childNames(*root), (Names{"inside"}));
}

TEST(ObjectPersistence, ReadsTheContainerAndTheChildrenInAnyOrder) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, child("a") + body("root") + child("b")), std::nullopt);

    EXPECT_EQ(root->getName(), "root");
    EXPECT_EQ(childNames(*root), (Names{"a", "b"}));
}

TEST(ObjectPersistence, EndsQuietlyWhereTheInputEnds) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, ""), std::nullopt);
    EXPECT_EQ(readText(*root, "AttrContainer { \n"), std::nullopt);
    EXPECT_EQ(readText(*root, "Child { \n\"Object\" \"cut\"\nAttrContainer { \n"), std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"cut"}));
}

TEST(ObjectPersistence, LetsItsCallerSeeTheBraceAtWhichItEnds) {
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

TEST(ObjectPersistence, BreaksOffBehindAnAttributeOfAnUnknownType) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, "AttrContainer { \nOdd { \n}\n}" + child("lost")),
              ErrorCode::ObjectBlockBroken);

    EXPECT_EQ(root->getNumChildren(), 0u);
    EXPECT_EQ(keywordOfNextRead(), "clean");
}

TEST(ObjectPersistence, EndsAReadAtTheFirstHardErrorAndKeepsWhatWasRead) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, body("root") + child("first") +
                                  "\nChild { \n\"Object\" \"second\"\nReferenceToShared\n}" +
                                  child("lost")),
              ErrorCode::ElementUnresolved);

    EXPECT_EQ(root->getName(), "root");
    EXPECT_EQ(childNames(*root), (Names{"first"}));
    EXPECT_EQ(keywordOfNextRead(), "clean");
}

TEST(ObjectPersistence, TellsOfTheFirstOfSeveralWarnings) {
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

TEST(ObjectPersistence, DropsAWarningWhereAHardErrorFollows) {
    const auto root = Object::create();

    EXPECT_EQ(readText(*root, "\nChild { \n\"Foo\" \"f\"\nAttrContainer { \n}\n}"
                              "\nChild { \n\"Object\" \"r\"\nReferenceToShared\n}"),
              ErrorCode::ElementUnresolved);
}

TEST(ObjectPersistence, LeavesNoKeywordBehindWhereANumberIsMalformed) {
    const auto root = Object::create();

    EXPECT_THROW(readText(*root, "Child { \n\"Point3d\" \"p\"\nAttrContainer { \nAttr<double> { "
                                 "\nName \"PositionDeviation\"\nValue 1e\n}\n}\n}"),
                 std::invalid_argument);

    EXPECT_EQ(childNames(*root), (Names{"p"}));
    EXPECT_EQ(keywordOfNextRead(), "clean");
}

TEST(ObjectPersistence, ReadsChildrenDownToTheDeepestLevelThatTheContextAccepts) {
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

TEST(ObjectPersistence, RefusesAHundredThousandLevels) {
    std::string text;
    for (int i = 0; i < 100000; ++i) text += "Child { \"Object\" \"c\" AttrContainer { } ";

    const auto root = Object::create();
    EXPECT_EQ(readText(*root, text), ErrorCode::ParseFailed);

    int depth = 0;
    for (std::shared_ptr<Object> at = root; at->getNumChildren() > 0; ++depth) at = at->getChild(0);
    EXPECT_EQ(depth, 1000);
}

TEST(ObjectPersistence, TakesFiftyThousandChildrenOfOneParent) {
    const auto root = Object::create();
    for (int i = 0; i < 50000; ++i) addNamed(*root, "c" + std::to_string(i));
    const std::string text = written(*root);
    const auto copy = Object::create();

    EXPECT_EQ(readText(*copy, text), std::nullopt);

    EXPECT_EQ(copy->getNumChildren(), 50000u);
    EXPECT_EQ(written(*copy), text);
}

// A stream that is cut off or changed at any byte gives some result and leaves a tree that can be
// written.
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
    return text;
}

void readAndWrite(const std::string& text) {
    const auto root = Object::create();
    const auto context = std::make_shared<ReadContextBase>();
    auto dictionary = std::make_unique<ReferenceDictionary>();
    std::vector<std::uint64_t> keys{1, 2, 3};
    dictionary->initializeFromVector(keys);
    context->setReferenceDictionary(std::move(dictionary));
    bool isEndedHard = true;
    try {
        const auto code = readText(*root, text, context);
        isEndedHard = code && !isWarning(*code);
    } catch (const std::invalid_argument&) {
        // A malformed number.
    }
    if (isEndedHard) EXPECT_EQ(keywordOfNextRead(), "clean") << text;
    std::ostringstream out;
    EXPECT_EQ(codeOf(root->writeTo(out, std::make_shared<const WriteContextBase>())), std::nullopt);
}
}  // namespace

TEST(ObjectPersistence, LeavesATreeThatCanBeWrittenWhereverTheStreamIsCut) {
    const std::string text = sampleText();

    for (std::size_t size = 0; size < text.size(); ++size) readAndWrite(text.substr(0, size));
}

TEST(ObjectPersistence, LeavesATreeThatCanBeWrittenWhateverByteIsChanged) {
    const std::string text = sampleText();

    for (std::size_t at = 0; at < text.size(); ++at)
        for (const char byte : {'}', '{', '"', ' ', '9'}) {
            std::string changed = text;
            changed[at] = byte;
            readAndWrite(changed);
        }
}
