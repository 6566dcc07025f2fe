// References to children that stand elsewhere in a stream.
#include <AttributeContainer/Object.h>
#include <AttributeContainer/ReferenceDictionary.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

class ChildReferences : public testing::Test {
protected:
    std::shared_ptr<Object> root = Object::create();
    std::shared_ptr<ReadContextBase> context = resolving({0, 7, 8});
    ReferenceDictionary& dictionary = *context->getReferenceDictionary();

    ~ChildReferences() override { ModelInFormat::cleanPropagateKeyword(); }

    std::optional<ErrorCode> read(const std::string& text) {
        return readText(*root, text, context);
    }
};

// A child with a key and a body, and what lies below it.
std::string known(const std::string& name, const std::string& below = {}) {
    return childBlock("Object", name, instanceLine(7) + containerBlock() + below);
}

const std::string reference = childBlock("Object", "x", referenceTo(7));

}  // namespace

TEST_F(ChildReferences, LeadToAChildAlsoWhileItsBodyIsRead) {
    EXPECT_EQ(read(known("first", reference)), std::nullopt);

    EXPECT_EQ(dictionary.resolveReference(7), root->getChild(0));
    EXPECT_EQ(root->getChild(0)->getNumChildren(), 0u);
}

TEST_F(ChildReferences, LeaveAnInstanceWithItsFirstParent) {
    EXPECT_EQ(read(childBlock("Object", "one", containerBlock() + known("shared")) +
                   childBlock("Object", "two", containerBlock() + reference)),
              std::nullopt);

    EXPECT_EQ(childNames(*root->getChild(0)), (Names{"shared"}));
    EXPECT_EQ(root->getChild(1)->getNumChildren(), 0u);
    EXPECT_EQ(dictionary.resolveReference(7), root->getChild(0)->getChild(0));
}

TEST_F(ChildReferences, AddAnInstanceThatHasLostItsParent) {
    const auto orphan = named("orphan");
    dictionary.registerReference(7, orphan);

    EXPECT_EQ(read(reference), std::nullopt);

    EXPECT_EQ(root->getChild(0), orphan);
    EXPECT_EQ(orphan->getName(), "orphan");
}

TEST_F(ChildReferences, AreSkippedWhereTheyLeadNowhereOrToSomethingElse) {
    dictionary.registerReference(8, AttrContainer::create());

    for (const std::uint64_t key : {7u, 8u, 9u})
        EXPECT_EQ(read(childBlock("Object", "x", referenceTo(key))), ErrorCode::ElementSkipped);
    EXPECT_EQ(root->getNumChildren(), 0u);
}

TEST_F(ChildReferences, NeedADictionary) {
    EXPECT_EQ(readText(*root, reference), ErrorCode::ElementUnresolved);
}

TEST_F(ChildReferences, NeedAKey) {
    EXPECT_EQ(read(childBlock("Object", "x", "\nReferenceToShared ")),
              ErrorCode::ElementUnresolved);
    EXPECT_EQ(read(childBlock("Object", "x", referenceTo(0))), ErrorCode::ElementUnresolved);
}

TEST_F(ChildReferences, ForgetTheirKey) {
    dictionary.registerReference(7, named("orphan"));

    EXPECT_EQ(read(childBlock("Object", "x", referenceTo(7) + "\nReferenceToShared ")),
              ErrorCode::ElementUnresolved);
}

TEST_F(ChildReferences, TakeAnyNumberForAKey) {
    const std::uint64_t key = root->getInstanceIdentifier();
    context = resolving({key});

    EXPECT_EQ(read(childBlock("Object", "shared", instanceLine(key) + containerBlock())),
              std::nullopt);

    EXPECT_EQ(context->getReferenceDictionary()->resolveReference(key), root->getChild(0));
}

// Rings
// --------------------------------------------------------------------------------------------

TEST_F(ChildReferences, NeverMakeAFieldItsOwnChild) {
    // The object is a field and has no parent, so that it could become its own child.
    EXPECT_EQ(read(containerBlock(
                  fieldBlock("Object", "f", instanceLine(7) + containerBlock() + reference))),
              ErrorCode::ElementSkipped);

    const auto field = std::dynamic_pointer_cast<Object>(root->getField("f").lock());
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->getNumChildren(), 0u);
    EXPECT_EQ(field->findRoot(), field);
}

TEST_F(ChildReferences, NeverMakeTheRootOfATreeAChildInIt) {
    const auto top = named("top");
    top->addChild(root, AddFlags::SkipNameTest);
    dictionary.registerReference(7, top);

    EXPECT_EQ(read(childBlock("Object", "below", containerBlock() + reference)),
              ErrorCode::ElementSkipped);

    EXPECT_EQ(root->getChild(0)->getNumChildren(), 0u);
    EXPECT_EQ(top->getParent(), nullptr);
}

TEST_F(ChildReferences, NeverCloseARingOfFieldsAndChildrenInASecondRead) {
    // Object "a" is a field of the root and of "b", and "b" is a field without a parent.
    const auto a = addNamedField<Object>(*root, "a");
    const auto b = addNamedField<Object>(*root, "b");
    ASSERT_TRUE(b->addField(a, "a", 0));

    EXPECT_EQ(read(containerBlock(fieldBlock("Object", "b", instanceLine(7) + containerBlock()) +
                                  fieldBlock("Object", "a", containerBlock() + reference))),
              ErrorCode::ElementSkipped);

    EXPECT_EQ(a->getNumChildren(), 0u);
    EXPECT_EQ(b->getParent(), nullptr);
}

TEST_F(ChildReferences, NeverCloseARingThroughTheChildrenOfATarget) {
    // Field "a" lies in the child of "b".
    const auto a = addNamedField<Object>(*root, "a");
    const auto b = addNamedField<Object>(*root, "b");
    ASSERT_TRUE(addNamed(*b, "child")->addField(a, "a", 0));

    EXPECT_EQ(
        read(containerBlock(
            fieldBlock("Object", "b", instanceLine(7) + containerBlock()) +
            fieldBlock("Object", "a", containerBlock(fieldBlock("Object", "r", referenceTo(7)))))),
        ErrorCode::ElementSkipped);

    EXPECT_EQ(a->getNumFields(), 0u);
}
