#include "persistence/ChildReader.h"

#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/FieldFactory.h>
#include <AttributeContainer/GenericBinaryObjectV2.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ReferenceDictionary.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/LogCapture.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Answers a read of its body with the code that the test sets.
class Answering : public ContainerClass<Answering, Object, "Answering"> {
public:
    using Block::Block;
    ErrorPtr readFrom(std::istream& stream,
                      std::shared_ptr<const ReadContextBase> context) override {
        auto error = Object::readFrom(stream, std::move(context));
        if (error || !answer) return error;
        return makeError(__FILE__, __LINE__, *answer, "Answering::readFrom");
    }

    static inline std::optional<ErrorCode> answer;
};

// A placeholder of the host's own, which the factory makes.
class HostFallback : public IFallbackObject,
                     public ContainerClass<HostFallback, Object, "HostFallback"> {
public:
    using Block::Block;
    void setOriginalClassName(const std::string& name) override { original = name; }
    const std::string& getOriginalClassName() const override { return original; }

    std::string original;
};

// Remembers the version that it had when its body was read.
class Versioned : public ContainerClass<Versioned, Object, "Versioned"> {
public:
    using Block::Block;
    ErrorPtr readFrom(std::istream& stream,
                      std::shared_ptr<const ReadContextBase> context) override {
        versionAtRead = getStoredClassVersion();
        nameAtRead = getName();
        parentAtRead = getParent();
        return Object::readFrom(stream, std::move(context));
    }

    ClassVersion versionAtRead;
    std::string nameAtRead;
    std::weak_ptr<Object> parentAtRead;
};

class Opened : public ContainerClass<Opened, Object, "Opened"> {
public:
    using Block::Block;
    using Object::readChild;
};

class ChildReaderTest : public testing::Test {
protected:
    std::unique_ptr<const FieldFactory::FactoryRegistration> registrations[3] = {
        FieldFactory::addField<Answering>("Answering"),
        FieldFactory::addField<HostFallback>("HostFallback"),
        FieldFactory::addField<Versioned>("Versioned")};
    std::shared_ptr<Object> root = Object::create();
    std::shared_ptr<ReadContextBase> context = std::make_shared<ReadContextBase>();

    ~ChildReaderTest() override {
        Answering::answer.reset();
        ModelInFormat::cleanPropagateKeyword();
    }

    std::optional<ErrorCode> read(const std::string& text) {
        return readText(*root, text, context);
    }
};

}  // namespace

// Creating ----------------------------------------------------------------------------------------

TEST_F(ChildReaderTest, MakesAChildOfTheClassAndTheNameInTheBlock) {
    EXPECT_EQ(read(childBlock("Point3d", "p")), std::nullopt);

    ASSERT_EQ(root->getNumChildren(), 1u);
    EXPECT_EQ(root->getChild(0)->getClassName(), "Point3d");
    EXPECT_EQ(root->getChild(0)->getName(), "p");
    EXPECT_EQ(root->getChild(0)->getParent(), root);
}

TEST_F(ChildReaderTest, LetsTheNameInTheBodyWin) {
    EXPECT_EQ(read(childBlock(
                  "Object", "outside",
                  "\nAttrContainer { \nAttr<String> { \nName \"Name\"\nValue \"inside\"\n}\n}")),
              std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"inside"}));
}

TEST_F(ChildReaderTest, KeepsTheNameOfTheClassWhereThatOfTheBlockIsNotValid) {
    EXPECT_EQ(read(childBlock("Object", "not valid")), std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"Object"}));
}

TEST_F(ChildReaderTest, TakesChildrenOfEqualNames) {
    EXPECT_EQ(read(childBlock("Object", "twin") + childBlock("Object", "twin") +
                   childBlock("Object", "Event")),
              std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"twin", "twin", "Event"}));
}

TEST_F(ChildReaderTest, MakesNoChildOfABlockWithoutABody) {
    EXPECT_EQ(read(childBlock("Object", "empty", "") + childBlock("Object", "full")), std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"full"}));
}

TEST_F(ChildReaderTest, MakesAPlaceholderForAnUnknownClass) {
    EXPECT_EQ(read(childBlock("Station", "s")), ErrorCode::ObjectNotCreated);

    ASSERT_EQ(root->getNumChildren(), 1u);
    const auto fallback = std::dynamic_pointer_cast<FallbackObject>(root->getChild(0));
    ASSERT_NE(fallback, nullptr);
    EXPECT_EQ(fallback->getOriginalClassName(), "Station");
    EXPECT_EQ(fallback->getName(), "s");
    const std::string text = written(*root);
    EXPECT_NE(text.find("\nChild { \n\"Station\" \"s\"\nAttrContainer { "), std::string::npos);
}

TEST_F(ChildReaderTest, MakesAPlaceholderForAClassThatIsNoObject) {
    EXPECT_EQ(read(childBlock("ArrayContainer", "a")), ErrorCode::ObjectNotCreated);

    EXPECT_EQ(root->getChild(0)->getClassName(), "FallbackObject");
}

TEST_F(ChildReaderTest, TellsAPlaceholderOfTheFactoryWhatItStandsFor) {
    EXPECT_EQ(read(childBlock("HostFallback", "h")), ErrorCode::ObjectNotCreated);

    const auto fallback = std::dynamic_pointer_cast<HostFallback>(root->getChild(0));
    ASSERT_NE(fallback, nullptr);
    EXPECT_EQ(fallback->original, "HostFallback");
}

TEST_F(ChildReaderTest, TakesAnUnknownClassThroughAWholeRound) {
    const std::string text = childBlock("Station", "s",
                                        "\nFoo { 1 \"}\" }\nAttrContainer { \nAttr<int> { \nName "
                                        "\"Count\"\nValue 5\n}\n}" +
                                            childBlock("Object", "inner"));
    read(text);
    const auto second = Object::create();
    const std::string once = written(*root);

    EXPECT_EQ(readText(*second, once), ErrorCode::ObjectNotCreated);

    const auto station = second->inqChild("s");
    ASSERT_NE(station, nullptr);
    EXPECT_EQ(station->getClassName(), "FallbackObject");
    EXPECT_NE(station->getAttrToken("Count"), AttrContainer::noToken);
    EXPECT_EQ(childNames(*station), (Names{"inner"}));
    EXPECT_NE(once.find("Foo { 1 \"}\" }"), std::string::npos);
}

// The words ahead of the body ---------------------------------------------------------------------

TEST_F(ChildReaderTest, StoresTheVersionAheadOfTheBody) {
    EXPECT_EQ(read(childBlock("Versioned", "v",
                              "\nMajorVersion 3\nMinorVersion 65535\nAttrContainer { \n}")),
              std::nullopt);

    const auto child = std::dynamic_pointer_cast<Versioned>(root->getChild(0));
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(child->versionAtRead, (ClassVersion{3, 65535}));
    EXPECT_EQ(child->getStoredClassVersion(), (ClassVersion{3, 65535}));
}

TEST_F(ChildReaderTest, ClampsAVersionToSixteenBits) {
    EXPECT_EQ(read(childBlock("Object", "v", "\nMajorVersion 70000\nAttrContainer { \n}")),
              std::nullopt);

    EXPECT_EQ(root->getChild(0)->getStoredClassVersion(), (ClassVersion{65535, 0}));
}

TEST_F(ChildReaderTest, StoresVersion0WhereTheBlockHasNone) {
    EXPECT_EQ(read(childBlock("Versioned", "v")), std::nullopt);

    const auto child = std::dynamic_pointer_cast<Versioned>(root->getChild(0));
    EXPECT_EQ(child->versionAtRead, (ClassVersion{0, 0}));
    EXPECT_EQ(child->nameAtRead, "v");
    EXPECT_EQ(child->parentAtRead.lock(), root);
}

TEST_F(ChildReaderTest, ConvertsTheOlderBinaryObject) {
    EXPECT_EQ(
        read(childBlock("GenericBinaryObject", "outside",
                        "\nMajorVersion 2\nOldHead \"inside\"\nAttrContainer { \nAttr<String> { "
                        "\nName \"MimeType\"\nValue \"image/png\"\n}\n}")),
        std::nullopt);

    ASSERT_EQ(root->getNumChildren(), 1u);
    const auto binary = std::dynamic_pointer_cast<GenericBinaryObjectV2>(root->getChild(0));
    ASSERT_NE(binary, nullptr);
    EXPECT_EQ(binary->getName(), "inside");
    EXPECT_EQ(binary->MimeType(), "image/png");
    EXPECT_EQ(binary->getStoredClassVersion(), (ClassVersion{0, 0}));
}

TEST_F(ChildReaderTest, ConvertsTheOlderBinaryObjectByItsExactNameOnly) {
    EXPECT_EQ(read(childBlock("genericbinaryobject", "g")), ErrorCode::ObjectNotCreated);
    EXPECT_EQ(read(childBlock("GenericBinaryObjectV2", "h")), std::nullopt);

    EXPECT_EQ(root->getChild(0)->getClassName(), "FallbackObject");
    EXPECT_EQ(root->getChild(1)->getClassName(), "GenericBinaryObjectV2");
    EXPECT_EQ(root->getChild(1)->getName(), "h");
}

TEST_F(ChildReaderTest, EndsWithTheInputInAnOlderBinaryObject) {
    for (const char* const content : {"", "\nOldHead", "\nOldHead \"", "\nOldHead { { {"}) {
        read("Child { \n\"GenericBinaryObject\" \"g\"" + std::string(content));
        EXPECT_EQ(root->getNumChildren(), 0u) << content;
    }
}

// Results of a body -------------------------------------------------------------------------------

TEST_F(ChildReaderTest, RemovesAChildWhoseBlockIsBroken) {
    EXPECT_EQ(read(childBlock("Object", "good") +
                   childBlock("Object", "bad", "\nAttrContainer { \nOdd 1\n}") +
                   childBlock("Object", "lost")),
              ErrorCode::ObjectBlockBroken);

    EXPECT_EQ(childNames(*root), (Names{"good"}));
}

TEST_F(ChildReaderTest, PutsAPlaceholderInThePlaceOfAChildWithAnUnknownAttributeType) {
    Answering::answer = ErrorCode::UnknownAttributeType;

    EXPECT_EQ(read(childBlock(
                  "Answering", "a",
                  "\nAttrContainer { \nAttr<String> { \nName \"Event\"\nValue \"seen\"\n}\n}")),
              ErrorCode::ElementSkipped);

    ASSERT_EQ(root->getNumChildren(), 1u);
    const auto fallback = std::dynamic_pointer_cast<FallbackObject>(root->getChild(0));
    ASSERT_NE(fallback, nullptr);
    EXPECT_EQ(fallback->getName(), "a");
    EXPECT_EQ(fallback->Event(), "seen");
    EXPECT_EQ(fallback->getOriginalClassName(), "Answering");
    EXPECT_TRUE(fallback->holdsNoUnknownData());
}

TEST_F(ChildReaderTest, LeavesNoTraceOfAChildThatIsNotMarked) {
    Answering::answer = ErrorCode::AttributeNotMarked;
    context = resolving({7});

    EXPECT_EQ(read(childBlock("Answering", "a", "\nInstanceID 7\nAttrContainer { \n}") +
                   childBlock("Object", "b")),
              std::nullopt);

    EXPECT_EQ(childNames(*root), (Names{"b"}));
    EXPECT_EQ(context->getReferenceDictionary()->resolveReference(7), nullptr);
}

TEST_F(ChildReaderTest, KeepsAChildWhoseBodyEndsInAnotherWarning) {
    Answering::answer = ErrorCode::ElementSkipped;

    EXPECT_EQ(read(childBlock("Answering", "a") + childBlock("Object", "b")),
              ErrorCode::ElementSkipped);

    EXPECT_EQ(childNames(*root), (Names{"a", "b"}));
}

TEST_F(ChildReaderTest, ReturnsAHardErrorOfABodyAndKeepsTheChild) {
    Answering::answer = ErrorCode::StreamFailed;

    EXPECT_EQ(read(childBlock("Answering", "a") + childBlock("Object", "lost")),
              ErrorCode::StreamFailed);

    EXPECT_EQ(childNames(*root), (Names{"a"}));
}

TEST_F(ChildReaderTest, LetsAHardErrorOfAPlaceholderWin) {
    EXPECT_EQ(read("Child { \n\"Station\" \"s\"\nFoo { "), ErrorCode::StreamFailed);
}

// Log and failures --------------------------------------------------------------------------------

TEST_F(ChildReaderTest, LogsEachChild) {
    const LogCapture log;

    read(childBlock("Point3d", "p", "\nAttrContainer { \n}" + childBlock("Station", "s")));

    EXPECT_EQ(log.messages(8),
              (std::vector<std::string>{"Object::readChild - p of type Point3d ...",
                                        "Object::readChild - s of type Station ...",
                                        "... Object::readChild - s of type Station done",
                                        "... Object::readChild - p of type Point3d done"}));
    for (const auto& record : log.records) {
        EXPECT_EQ(record.function == nullptr, record.level == 8) << record.message;
    }
}

TEST_F(ChildReaderTest, LogsTheEndOfAChildThatFailed) {
    Answering::answer = ErrorCode::StreamFailed;
    const LogCapture log;

    read(childBlock("Answering", "a"));

    EXPECT_EQ(log.messages(8).back(), "... Object::readChild - a of type Answering done");
}

TEST_F(ChildReaderTest, NeedsAContext) {
    const auto opened = Opened::create();
    std::istringstream stream("\"Object\" \"a\" AttrContainer { } }");

    EXPECT_EQ(codeOf(opened->readChild(stream, nullptr)), ErrorCode::ContextMissing);

    EXPECT_EQ(stream.tellg(), 0);
}

TEST_F(ChildReaderTest, LeavesTheBraceOfTheBlockToItsCaller) {
    const auto opened = Opened::create();
    std::istringstream stream("{ \"Object\" \"a\" AttrContainer { } } behind ");
    ModelInFormat imf(stream);
    ASSERT_EQ(imf.getKeyword(), "{");

    EXPECT_EQ(codeOf(opened->readChild(stream, context)), std::nullopt);

    EXPECT_EQ(imf.getKeyword(), "}");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "behind");
}
