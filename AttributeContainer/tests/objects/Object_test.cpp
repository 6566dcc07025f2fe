#include <AttributeContainer/Object.h>

#include "support/Containers.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;
using QOR::uuids::uuid;

// The class ---------------------------------------------------------------------------------------

TEST(Object, HasTheRowsOfItsTable) {
    struct Row {
        std::uint64_t token;
        const char* key;
        AttrType type;
    };
    const Row rows[] = {{1, "Action", AttrType{10}},
                        {2, "Event", AttrType{10}},
                        {3, "MajorVersion", AttrType{4}},
                        {4, "MinorVersion", AttrType{4}},
                        {5, "UUID", AttrType{46}}};
    const auto object = Object::create();

    for (const Row& row : rows) {
        EXPECT_EQ(object->getAttrToken(row.key), row.token);
        EXPECT_EQ(object->getAttrName(row.token), row.key);
        const AttrDefinition* const definition = object->getAttrDefinition(row.token);
        ASSERT_NE(definition, nullptr) << row.key;
        EXPECT_EQ(definition->token, row.token);
        EXPECT_EQ(definition->name, row.key);
        EXPECT_EQ(definition->type, row.type);
        EXPECT_EQ(definition->category, 18);
    }
    EXPECT_EQ(object->getAttrToken("Name"), 0u);
    EXPECT_EQ(object->getAttrCategory(0), 4);
    EXPECT_EQ(object->getMaxAttrToken(), 5u);
    EXPECT_EQ(object->getMaxFieldToken(), AttrContainer::noToken);
    EXPECT_EQ(object->getNumAttributes(), 6u);
}

TEST(Object, HasTheDefaultsOfItsTable) {
    const auto object = Object::create();

    EXPECT_EQ(object->getName(), "Object");
    EXPECT_EQ(object->Action(), "");
    EXPECT_EQ(object->Event(), "");
    EXPECT_EQ(object->MajorVersion(), 0);
    EXPECT_EQ(object->MinorVersion(), 0);
    EXPECT_TRUE(object->UUID().is_nil());
}

TEST(Object, KnowsItsClassName) {
    EXPECT_EQ(Object::getStaticClassName(), "Object");
    EXPECT_EQ(Object::create()->getClassName(), "Object");
}

TEST(Object, HasAnAccessorForEachRow) {
    const auto object = Object::create();
    const uuid id = uuid::generate();

    object->Action("go");
    object->Event("arrived");
    object->MajorVersion(3);
    object->MinorVersion(4);
    object->UUID(id);

    EXPECT_EQ(object->Attr_Action().get(), "go");
    EXPECT_EQ(object->Attr_Event().get(), "arrived");
    EXPECT_EQ(object->Attr_MajorVersion().get(), 3);
    EXPECT_EQ(object->Attr_MinorVersion().get(), 4);
    EXPECT_EQ(object->Attr_UUID().get(), id);
}

TEST(Object, TakesItsValuesFromASource) {
    const auto source = named("source");
    source->Event("arrived");
    const uuid id = source->getUuid();

    const auto copy = Object::create(CreateDeep, *source);

    EXPECT_EQ(copy->getName(), "source");
    EXPECT_EQ(copy->Event(), "arrived");
    EXPECT_EQ(copy->UUID(), id);
}

TEST(Object, IsDuplicatedWithoutItsChildren) {
    const auto object = named("original");
    addNamed(*object, "child");

    for (const auto& copy : {object->duplicate(CreateDeep), object->duplicateAll(CreateDeep)}) {
        const auto typed = std::dynamic_pointer_cast<Object>(copy);
        ASSERT_NE(typed, nullptr);
        EXPECT_EQ(typed->getName(), "original");
        EXPECT_EQ(typed->getNumChildren(), 0u);
    }
}

TEST(Object, IsDuplicatedWithItsDefaultsWhereTheCopyShallBeEmpty) {
    const auto object = named("original");
    object->Event("arrived");

    const auto copy = std::dynamic_pointer_cast<Object>(object->duplicate(CreateEmpty));

    EXPECT_EQ(copy->getName(), "Object");
    EXPECT_EQ(copy->Event(), "");
}

// Depth -------------------------------------------------------------------------------------------

TEST(Object, FindsTheRootFromEveryDepth) {
    const std::shared_ptr<Object> root = Object::create();
    const auto last = addChain(root, 3);

    EXPECT_EQ(root->findRoot(), root);
    EXPECT_EQ(last->findRoot(), root);
    EXPECT_EQ(std::as_const(*last).findRoot(), root);
}

TEST(Object, EndsAChainOfAHundredThousandOnAFlatStack) {
    std::shared_ptr<Object> root = Object::create();
    auto last = addChain(root, 100000);
    const std::weak_ptr<Object> watched = last;

    EXPECT_EQ(last->findRoot(), root);
    last.reset();
    root.reset();

    EXPECT_TRUE(watched.expired());
}

TEST(Object, CutsOffALongChainOnAFlatStack) {
    const std::shared_ptr<Object> root = Object::create();
    const std::weak_ptr<Object> last = addChain(root, 30000);

    EXPECT_TRUE(root->rmChild(std::uint64_t{0}, 0));

    EXPECT_TRUE(last.expired());
}

// Identity ----------------------------------------------------------------------------------------

TEST(Object, MakesItsUuidAtTheFirstQuestion) {
    const auto object = Object::create();

    EXPECT_TRUE(std::as_const(*object).getUuid().is_nil());
    const uuid first = object->getUuid();

    EXPECT_FALSE(first.is_nil());
    EXPECT_EQ(object->getUuid(), first);
    EXPECT_EQ(std::as_const(*object).getUuid(), first);
    EXPECT_EQ(object->UUID(), first);
}

TEST(Object, HasAUuidOfItsOwn) {
    EXPECT_FALSE(Object::create()->getUuid() == Object::create()->getUuid());
}

TEST(Object, StoresAnyUuid) {
    const auto object = Object::create();
    const uuid id = uuid::generate();

    object->setUuid(id);
    EXPECT_EQ(object->getUuid(), id);
    object->setUuid(uuid{});
    EXPECT_TRUE(object->UUID().is_nil());
}

TEST(Object, StoresAClassVersion) {
    const auto object = Object::create();
    EXPECT_EQ(object->getStoredClassVersion(), (ClassVersion{0, 0}));

    object->setClassVersion({2, 65535});

    EXPECT_EQ(object->MajorVersion(), 2);
    EXPECT_EQ(object->MinorVersion(), 65535);
    EXPECT_EQ(object->getStoredClassVersion(), (ClassVersion{2, 65535}));
}

// Its attributes are looked for, since a host may ask before they are made.
TEST(Object, HasNoUuidAndNoClassVersionWithoutItsAttributes) {
    const auto hasty = Hasty<Object>::make();

    hasty->setClassVersion({2, 3});

    EXPECT_EQ(hasty->getStoredClassVersion(), (ClassVersion{0, 0}));
    EXPECT_TRUE(std::as_const(*hasty).getUuid().is_nil());
    EXPECT_EQ(hasty->getNumAttributes(), 0u);
}
