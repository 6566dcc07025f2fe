// References to fields that stand elsewhere in a stream.
#include <AttributeContainer/Object.h>
#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/SharedInstanceCollection.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr auto type = "AttrContainer";

// A container in the block of a field, which the stream knows under a key.
std::string known(std::uint64_t key, const std::string& content = {}) {
    return instanceLine(key) + containerBlock(content);
}

std::shared_ptr<AttrContainer> fieldOf(AttrContainer& container, const std::string& name) {
    return container.getField(name).lock();
}

}  // namespace

TEST(FieldReferences, LeadToTheFieldThatWasReadBefore) {
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root,
                       containerBlock(fieldBlock("Mark", "a", known(7)) +
                                      fieldBlock("Mark", "b", referenceTo(7))),
                       resolving({7})),
              std::nullopt);
    ASSERT_NE(fieldOf(*root, "a"), nullptr);
    EXPECT_EQ(fieldOf(*root, "b"), fieldOf(*root, "a"));
}

TEST(FieldReferences, PutTheFieldInThePlaceOfOneThatIsThere) {
    const auto pole = Pole::create();
    EXPECT_EQ(readText(*pole,
                       containerBlock(fieldBlock("Mark", "new", known(7)) +
                                      fieldBlock("Mark", "Mark", referenceTo(7))),
                       resolving({7})),
              std::nullopt);
    EXPECT_EQ(pole->Mark().lock(), fieldOf(*pole, "new"));
    EXPECT_EQ(pole->getNumFields(), 3u);
}

TEST(FieldReferences, LeadToAFieldThatWasThereAndWasReadInto) {
    const auto pole = Pole::create();
    EXPECT_EQ(readText(*pole,
                       containerBlock(fieldBlock("Mark", "Mark", known(7)) +
                                      fieldBlock("Mark", "again", referenceTo(7))),
                       resolving({7})),
              std::nullopt);
    EXPECT_EQ(fieldOf(*pole, "again"), pole->Mark().lock());
}

TEST(FieldReferences, NeedADictionaryAndAKey) {
    EXPECT_EQ(
        readText(*AttrContainer::create(), containerBlock(fieldBlock("Mark", "b", referenceTo(7)))),
        ErrorCode::ElementUnresolved);
    EXPECT_EQ(
        readText(*AttrContainer::create(),
                 containerBlock(fieldBlock("Mark", "b", "\nReferenceToShared ")), resolving({7})),
        ErrorCode::ElementUnresolved);
    EXPECT_EQ(readText(*AttrContainer::create(),
                       containerBlock(fieldBlock("Mark", "b", referenceTo(0))), resolving({0})),
              ErrorCode::ElementUnresolved);
}

TEST(FieldReferences, AreSkippedWhereNothingIsFound) {
    const auto root = Pole::create();
    const auto mark = root->Mark().lock();
    EXPECT_EQ(readText(*root,
                       containerBlock(fieldBlock("Mark", "Mark", referenceTo(7)) +
                                      fieldBlock("Mark", "c")),
                       resolving({7})),
              ErrorCode::ElementSkipped);
    EXPECT_EQ(root->Mark().lock(), mark);
    EXPECT_NE(fieldOf(*root, "c"), nullptr);
}

TEST(FieldReferences, LeadToNothingWhereTheKeyWasNotDeclared) {
    EXPECT_EQ(readText(*AttrContainer::create(),
                       containerBlock(fieldBlock("Mark", "a", known(7)) +
                                      fieldBlock("Mark", "b", referenceTo(7))),
                       resolving({8})),
              ErrorCode::ElementSkipped);
}

TEST(FieldReferences, ForgetTheirKeyBehindABody) {
    EXPECT_EQ(readText(*AttrContainer::create(),
                       containerBlock(fieldBlock("Mark", "a", known(7) + "\nReferenceToShared ")),
                       resolving({7})),
              ErrorCode::ElementUnresolved);
}

// Each level refers twice to the one before, so that level n stands for 2^(n+1) - 1 containers. The
// references of levels 1 to 21 bring in 2 (2^22 - 2 - 21) = 8,388,562; another 4,194,303 would be
// more than a tree takes.
TEST(FieldReferences, AreSkippedWhereSharingWouldDoubleATreeTooOften) {
    std::string content = fieldBlock("AttrContainer", "level0", known(1));
    std::vector<std::uint64_t> keys = {1};
    for (std::uint64_t level = 1; level <= 22; ++level) {
        const std::string twice = fieldBlock("AttrContainer", "a", referenceTo(level)) +
                                  fieldBlock("AttrContainer", "b", referenceTo(level));
        content +=
            fieldBlock("AttrContainer", "level" + std::to_string(level), known(level + 1, twice));
        keys.push_back(level + 1);
    }
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root, containerBlock(content), resolving(keys)), ErrorCode::ElementSkipped);
    ASSERT_NE(fieldOf(*root, "level21"), nullptr);
    EXPECT_EQ(fieldOf(*root, "level21")->getNumFields(), 2u);
    ASSERT_NE(fieldOf(*root, "level22"), nullptr);
    EXPECT_EQ(fieldOf(*root, "level22")->getNumFields(), 0u);
}

// A whole round
// ------------------------------------------------------------------------------------

TEST(SharedFields, ComeBackAsOneContainer) {
    const auto root = named("root");
    const auto shared = Mark::create();
    shared->Count(5);
    addNamedField(*root, "before")->addField(shared, "mark", 0);
    addNamedField(*root, "behind")->addField(shared, "same", 0);
    SharedInstanceCollection instances;
    const auto context = sharing(instances);
    const std::string text = written(*root, context);
    std::vector<std::uint64_t> keys;
    instances.copyToVector(keys);
    const auto back = Object::create();

    EXPECT_EQ(readText(*back, text, resolving(keys)), std::nullopt);

    ASSERT_NE(fieldOf(*back, "before"), nullptr);
    const auto mark = std::dynamic_pointer_cast<Mark>(fieldOf(*fieldOf(*back, "before"), "mark"));
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(mark->Count(), 5);
    ASSERT_NE(fieldOf(*back, "behind"), nullptr);
    EXPECT_EQ(fieldOf(*fieldOf(*back, "behind"), "same"), mark);
}

TEST(SharedFields, StayOneContainerWhereTheTreeIsReadAgain) {
    const auto root = AttrContainer::create();
    const std::string text =
        containerBlock(fieldBlock(type, "a", known(1)) +
                       fieldBlock(type, "b", known(2, fieldBlock(type, "r", referenceTo(1)))));
    ASSERT_EQ(readText(*root, text, resolving({1, 2})), std::nullopt);
    const auto a = fieldOf(*root, "a");

    EXPECT_EQ(readText(*root, text, resolving({1, 2})), std::nullopt);

    EXPECT_EQ(fieldOf(*root, "a"), a);
    EXPECT_EQ(fieldOf(*fieldOf(*root, "b"), "r"), a);
    EXPECT_EQ(root->getNumFields(), 2u);
}

// Rings
// --------------------------------------------------------------------------------------------

namespace {

// Reads a text that would close a ring, and looks that nothing is left of the tree afterwards.
void expectNoRing(std::shared_ptr<AttrContainer> root, const std::string& text) {
    EXPECT_EQ(readText(*root, text, resolving({1, 2, 3})), ErrorCode::ElementSkipped) << text;
    EXPECT_NE(written(*root), "failed");
    std::vector<std::weak_ptr<AttrContainer>> fields;
    for (std::uint64_t token = 0; token < root->getNumFields(); ++token)
        fields.push_back(root->getField(token));
    root.reset();
    for (const auto& field : fields) EXPECT_TRUE(field.expired()) << text;
}

}  // namespace

TEST(FieldReferences, NeverCloseARing) {
    const std::string toX = fieldBlock(type, "r", referenceTo(1));
    const std::string toY = fieldBlock(type, "r", referenceTo(2));
    const auto x = [](const std::string& content) {
        return fieldBlock(type, "x", known(1, content));
    };
    const auto y = [](const std::string& content) {
        return fieldBlock(type, "y", known(2, content));
    };
    // Into itself, into what encloses it, and by way of another field that holds it.
    for (const std::string& text : {x(toX), x(y(toX)), x("") + y(toX) + x(toY)})
        expectNoRing(AttrContainer::create(), containerBlock(text));
}

TEST(FieldReferences, NeverCloseARingInATreeThatSharesFieldsAlready) {
    // Field "a" also lies in "b", at some depth.
    for (int depth = 0; depth < 3; ++depth) {
        auto root = AttrContainer::create();
        auto a = addNamedField(*root, "a");
        std::shared_ptr<AttrContainer> place = addNamedField(*root, "b");
        for (int i = 0; i < depth; ++i) place = addNamedField(*place, "step");
        ASSERT_TRUE(place->addField(std::exchange(a, nullptr), "a", 0));
        place.reset();

        expectNoRing(
            std::move(root),
            containerBlock(
                fieldBlock(type, "b", known(2)) +
                fieldBlock(type, "a", containerBlock(fieldBlock(type, "r", referenceTo(2))))));
    }
}

TEST(FieldReferences, NeverCloseARingThroughWhatAReferenceLedToBefore) {
    auto root = AttrContainer::create();
    addNamedField(*addNamedField(*root, "b"), "inner");
    // "b" comes into "c"; then "inner", which is a part of it, would take "c".
    expectNoRing(
        std::move(root),
        containerBlock(fieldBlock(type, "b", known(2)) +
                       fieldBlock(type, "c", known(3, fieldBlock(type, "r", referenceTo(2)))) +
                       fieldBlock(type, "b",
                                  containerBlock(fieldBlock(
                                      type, "inner",
                                      containerBlock(fieldBlock(type, "r", referenceTo(3))))))));
}

TEST(FieldReferences, NeverCloseARingBehindOneThatWasRefused) {
    auto root = AttrContainer::create();
    ASSERT_TRUE(addNamedField(*root, "b")->addField(addNamedField(*root, "a"), "a", 0));
    const std::string toB = fieldBlock(type, "r", referenceTo(2));
    // Both in "a" itself and in a new container inside it, again and again.
    expectNoRing(
        std::move(root),
        containerBlock(
            fieldBlock(type, "b", known(2)) +
            fieldBlock(type, "a",
                       containerBlock(toB + fieldBlock(type, "n", containerBlock(toB)) + toB))));
}

TEST(FieldReferences, NeverMakeTheContainerThatIsReadAPartOfItself) {
    auto root = AttrContainer::create();
    const auto outside = AttrContainer::create();
    ASSERT_TRUE(outside->addField(root, "root", 0));
    const auto context = resolving({1});
    ASSERT_TRUE(context->getReferenceDictionary()->registerReference(1, outside));

    EXPECT_EQ(readText(*root,
                       containerBlock(fieldBlock(
                           type, "x", containerBlock(fieldBlock(type, "r", referenceTo(1))))),
                       context),
              ErrorCode::ElementSkipped);

    EXPECT_EQ(fieldOf(*root, "x")->getNumFields(), 0u);
}

TEST(FieldReferences, StayPossibleOutsideOfWhatWasRefused) {
    const auto root = AttrContainer::create();
    const auto a = addNamedField(*root, "a");
    const auto b = addNamedField(*root, "b");
    ASSERT_TRUE(b->addField(a, "a", 0));
    const std::string toB = fieldBlock(type, "r", referenceTo(2));

    EXPECT_EQ(readText(*root,
                       containerBlock(fieldBlock(type, "b", known(2)) +
                                      fieldBlock(type, "a", containerBlock(toB)) +
                                      fieldBlock(type, "c", containerBlock(toB))),
                       resolving({2})),
              ErrorCode::ElementSkipped);

    EXPECT_EQ(a->getNumFields(), 0u);
    EXPECT_EQ(fieldOf(*fieldOf(*root, "c"), "r"), b);
}

TEST(FieldReferences, CannotNestContainersDeeperThanBlocksMayBe) {
    // Each field refers to the one before it, so that all hang below the last one.
    const auto chain = [](int length) {
        std::string text;
        for (int i = 1; i <= length; ++i) {
            const auto key = static_cast<std::uint64_t>(i);
            text +=
                fieldBlock(type, "t" + std::to_string(i),
                           known(key, i > 1 ? fieldBlock(type, "r", referenceTo(key - 1)) : ""));
        }
        return containerBlock(text);
    };
    const auto root = AttrContainer::create();
    const auto context = resolving({1, 2, 3, 4});
    context->setMaxDepth(3);

    EXPECT_EQ(readText(*root, chain(4), context), ErrorCode::ElementSkipped);

    EXPECT_EQ(fieldOf(*fieldOf(*root, "t3"), "r"), fieldOf(*root, "t2"));
    EXPECT_EQ(fieldOf(*root, "t4")->getNumFields(), 0u);
}

TEST(FieldReferences, CannotMakeEachOneWalkOverAllThatItLeadsTo) {
    constexpr int number = 3000;  // 3000 references to 3001 containers: what a tree just takes
    std::string parts, references;
    for (int i = 0; i < number; ++i) {
        parts += fieldBlock(type, "p" + std::to_string(i));
        references += fieldBlock(
            type, "e", containerBlock(fieldBlock(type, "r" + std::to_string(i), referenceTo(1))));
    }
    const auto root = AttrContainer::create();

    EXPECT_EQ(
        readText(*root, containerBlock(fieldBlock(type, "target", known(1, parts)) + references),
                 resolving({1})),
        std::nullopt);

    EXPECT_EQ(fieldOf(*root, "target")->getNumFields(), std::uint64_t{number});
    EXPECT_EQ(fieldOf(*root, "e")->getNumFields(), std::uint64_t{number});
}
