// What a container takes out of the block of a field.
#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/LogCapture.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// The block of a field with a body.
std::string field(const std::string& type, const std::string& name, const std::string& body = "",
                  const std::string& ahead = "") {
    return "SubContainer { \n\"" + type + "\" \"" + name + "\"\n" + ahead +
           "AttrContainer { \n" + body + "}\n}\n";
}
std::string container(const std::string& blocks) {
    return "\nAttrContainer { \n" + blocks + "}\n";
}
std::string count(int value) {
    return "Attr<int> { \nName \"Count\"\nValue " + std::to_string(value) + "\n}\n";
}

/// A context that knows how to resolve these keys.
std::shared_ptr<ReadContextBase> resolving(std::vector<std::uint64_t> keys) {
    const auto context = std::make_shared<ReadContextBase>();
    auto dictionary = std::make_unique<ReferenceDictionary>();
    dictionary->initializeFromVector(keys);
    context->setReferenceDictionary(std::move(dictionary));
    return context;
}

}  // namespace

TEST(FieldReading, MakesAFieldOfTheClassThatTheStreamNames) {
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root, container(field("Mark", "inner", count(5)))), std::nullopt);
    const auto inner = std::dynamic_pointer_cast<Mark>(root->getField("inner").lock());
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->getName(), "inner");
    EXPECT_EQ(inner->Count(), 5);
}

TEST(FieldReading, ReadsIntoAFieldOfTheSameClassThatIsThere) {
    const auto pole = Pole::create();
    const auto mark = pole->Mark().lock();
    EXPECT_EQ(readText(*pole, container(field("Mark", "Mark", count(5)))), std::nullopt);
    EXPECT_EQ(pole->Mark().lock(), mark);
    EXPECT_EQ(mark->Count(), 5);
}

TEST(FieldReading, ReplacesAFieldWhoseClassHasChanged) {
    const auto pole = Pole::create();
    const auto mark = pole->Mark().lock();
    EXPECT_EQ(readText(*pole, container(field("TallMark", "Mark", count(5)))), std::nullopt);
    EXPECT_NE(pole->Mark().lock(), mark);
    EXPECT_EQ(pole->getField(std::uint64_t{0}).lock()->getClassName(), "TallMark");
    EXPECT_EQ(pole->getNumFields(), 2u);
}

TEST(FieldReading, KeepsAnUnknownClassInAPlaceholder) {
    const LogCapture log;
    const auto root = AttrContainer::create();
    readText(*root, container(field("Nobody", "inner", count(5)) + field("Mark", "next")));
    const auto inner = std::dynamic_pointer_cast<FallbackObject>(root->getField("inner").lock());
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->getOriginalClassName(), "Nobody");
    EXPECT_FALSE(root->getField("next").expired());
    EXPECT_EQ(log.messages(3),
              std::vector<std::string>{"Error creating container with typeName Nobody"});
}

TEST(FieldReading, EndsAtAnUnknownClassWhereNoneIsAccepted) {
    const LogCapture log;
    const auto root = AttrContainer::create();
    const auto context = std::make_shared<ReadContextBase>();
    context->setAreUnknownContainersAccepted(false);
    std::istringstream in(container(field("Nobody", "inner")));

    const auto error = root->readFrom(in, context);

    ASSERT_EQ(codeOf(error), ErrorCode::ParseFailed);
    EXPECT_EQ(error->getDescription(), "Unknown Key: AttrContainer Unknown type: Nobody");
    EXPECT_EQ(root->getNumFields(), 0u);
    EXPECT_EQ(log.messages(3),
              (std::vector<std::string>{"Error creating container with typeName Nobody",
                                        "Failed to create container of type Nobody. Using "
                                        "UnknownAttrContainer instead."}));
}

TEST(FieldReading, RefusesFieldsBelowTheDeepestLevel) {
    const auto context = std::make_shared<ReadContextBase>();
    context->setMaxDepth(2);
    const std::string two = field("AttrContainer", "a", field("AttrContainer", "b"));
    EXPECT_EQ(readText(*AttrContainer::create(), container(two), context), std::nullopt);
    EXPECT_EQ(readText(*AttrContainer::create(), container(field("AttrContainer", "c", two)),
                       context),
              ErrorCode::ParseFailed);
}

TEST(FieldReading, RefusesAHundredThousandLevels) {
    std::string text = "\nAttrContainer { \n";
    for (int i = 0; i < 100000; ++i)
        text += "SubContainer { \n\"AttrContainer\" \"a\"\nAttrContainer { \n";
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root, text), ErrorCode::ParseFailed);
    EXPECT_NE(written(*root), "failed");
}

// References --------------------------------------------------------------------------------------

TEST(FieldReferences, LeadToTheFieldThatWasReadBefore) {
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root,
                       container(field("Mark", "a", "", "InstanceID 7\n") +
                                 "SubContainer { \n\"Mark\" \"b\"\nInstanceID 7\n"
                                 "ReferenceToShared \n}\n"),
                       resolving({7})),
              std::nullopt);
    ASSERT_FALSE(root->getField("a").expired());
    EXPECT_EQ(root->getField("b").lock(), root->getField("a").lock());
}

TEST(FieldReferences, NeedADictionaryAndAKey) {
    const std::string text = "SubContainer { \n\"Mark\" \"b\"\nInstanceID 7\nReferenceToShared \n}\n";
    EXPECT_EQ(readText(*AttrContainer::create(), container(text)), ErrorCode::ElementUnresolved);
    EXPECT_EQ(readText(*AttrContainer::create(),
                       container("SubContainer { \n\"Mark\" \"b\"\nReferenceToShared \n}\n"),
                       resolving({7})),
              ErrorCode::ElementUnresolved);
}

TEST(FieldReferences, AreSkippedWhereNothingIsFound) {
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root,
                       container("SubContainer { \n\"Mark\" \"b\"\nInstanceID 7\n"
                                 "ReferenceToShared \n}\n" +
                                 field("Mark", "c")),
                       resolving({7})),
              ErrorCode::ElementSkipped);
    EXPECT_TRUE(root->getField("b").expired());
    EXPECT_FALSE(root->getField("c").expired());
}

TEST(FieldReferences, NeverCloseARing) {
    const std::string toX = "SubContainer { \n\"AttrContainer\" \"r\"\nInstanceID 1\n"
                            "ReferenceToShared \n}\n";
    const std::string toY = "SubContainer { \n\"AttrContainer\" \"r\"\nInstanceID 2\n"
                            "ReferenceToShared \n}\n";
    const auto x = [](const std::string& body) {
        return field("AttrContainer", "x", body, "InstanceID 1\n");
    };
    const auto y = [](const std::string& body) {
        return field("AttrContainer", "y", body, "InstanceID 2\n");
    };
    // Into itself, into what encloses it, and by way of another field that holds it.
    for (const std::string& text : {x(toX), x(y(toX)), x("") + y(toX) + x(toY)}) {
        auto root = AttrContainer::create();
        EXPECT_EQ(readText(*root, container(text), resolving({1, 2})), ErrorCode::ElementSkipped);
        EXPECT_NE(written(*root), "failed");
        const std::weak_ptr<AttrContainer> watched = root->getField("x");
        root.reset();
        EXPECT_TRUE(watched.expired());
    }
}
