#include <AttributeContainer/Object.h>

#include <AttributeContainer/FallbackObject.h>

#include "support/Containers.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;
using QOR::uuids::uuid;

namespace {

// Takes no child and remembers what it was asked.
class Childless : public ContainerClass<Childless, Object, "Childless"> {
public:
    using Block::Block;
    bool isChildAllowed(std::shared_ptr<Object> child, int flags) override {
        asked.emplace_back(child->getName(), flags);
        return false;
    }

    std::vector<std::pair<std::string, int>> asked;
};

// Has no parent but one named "home".
class Homebound : public ContainerClass<Homebound, Object, "Homebound"> {
public:
    using Block::Block;
    bool isParentAllowed(Object& parent) override { return parent.getName() == "home"; }
};

}  // namespace

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

// Adding ------------------------------------------------------------------------------------------

TEST(Object, RefusesAnEmptyPointerAsChild) {
    const auto parent = Object::create();

    EXPECT_FALSE(parent->addChild(nullptr, 0));
    EXPECT_FALSE(parent->addChild(nullptr, AddFlags::SkipNameTest));
    EXPECT_EQ(parent->getNumChildren(), 0u);
}

TEST(Object, BecomesTheParentOfItsChild) {
    const auto parent = Object::create();
    const auto child = named("child");

    EXPECT_TRUE(parent->addChild(child, 0));

    EXPECT_EQ(child->getParent(), parent);
    EXPECT_EQ(parent->getNumChildren(), 1u);
    EXPECT_EQ(parent->getChild(0), child);
    EXPECT_EQ(parent->inqChild("CHILD"), child);
    EXPECT_EQ(parent->lookupChild(*child), 0u);
}

TEST(Object, RefusesAChildOfALivingParentUntilItHasLeftThere) {
    const auto first = Object::create();
    const auto second = Object::create();
    const auto child = addNamed(*first, "child");

    EXPECT_FALSE(second->addChild(child, AddFlags::SkipNameTest));
    EXPECT_EQ(child->getParent(), first);
    EXPECT_EQ(first->getNumChildren(), 1u);
    EXPECT_EQ(second->getNumChildren(), 0u);

    EXPECT_TRUE(first->rmChild(*child, 0));
    EXPECT_TRUE(second->addChild(child, AddFlags::SkipNameTest));
    EXPECT_EQ(child->getParent(), second);
}

TEST(Object, TakesAChildWhoseParentHasGone) {
    auto gone = Object::create();
    const auto child = addNamed(*gone, "child");
    gone.reset();
    EXPECT_EQ(child->getParent(), nullptr);
    const auto parent = Object::create();

    EXPECT_TRUE(parent->addChild(child, 0));

    EXPECT_EQ(child->getParent(), parent);
}

TEST(Object, RefusesAChildWhoseNameDiffersFromAnotherInCaseOnly) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");
    const auto child = named("SCAN");

    EXPECT_FALSE(parent->addChild(child, 0));

    EXPECT_EQ(child->getName(), "SCAN");
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(parent->getNumChildren(), 1u);
}

TEST(Object, RenamesAChildWhoseNameIsTakenWhereThatIsAskedFor) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");
    const auto child = named("SCAN");

    EXPECT_TRUE(parent->addChild(child, AddFlags::MakeNameUnique));

    EXPECT_EQ(child->getName(), "SCAN1");
    EXPECT_EQ(childNames(*parent), (Names{"scan", "SCAN1"}));
}

TEST(Object, TakesAnyNameWhereTheTestIsSkipped) {
    const auto parent = Object::create();
    const auto first = addNamed(*parent, "scan");
    const auto child = named("SCAN");

    EXPECT_TRUE(parent->addChild(child, AddFlags::SkipNameTest));

    EXPECT_EQ(childNames(*parent), (Names{"scan", "SCAN"}));
    EXPECT_EQ(parent->inqChild("SCAN"), first);
}

TEST(Object, SkipsTheTestAlsoWhereARenameIsAskedFor) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");
    const auto child = named("scan");

    EXPECT_TRUE(parent->addChild(child, AddFlags::SkipNameTest | AddFlags::MakeNameUnique));

    EXPECT_EQ(child->getName(), "scan");
}

TEST(Object, IgnoresAllOtherBitsOfTheFlags) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");

    EXPECT_FALSE(parent->addChild(named("scan"), 1 | 2 | 8 | 32 | 64));
    EXPECT_TRUE(parent->addChild(named("other"), 1 | 2 | 8 | 32 | 64));
}

TEST(Object, RefusesAChildNamedLikeAnAttributeOrAField) {
    const auto parent = Object::create();
    addNamedField(*parent, "field");
    addCustom(*parent, "extra", 1);

    EXPECT_FALSE(parent->addChild(named("Event"), 0));
    EXPECT_FALSE(parent->addChild(named("Name"), 0));
    EXPECT_FALSE(parent->addChild(named("extra"), 0));
    EXPECT_FALSE(parent->addChild(named("field"), 0));
    EXPECT_TRUE(parent->addChild(named("event"), 0));
}

TEST(Object, GivesTheNumberThatIsFreeAgainAfterARenameOrARemoval) {
    const auto parent = Object::create();
    for (int i = 0; i < 4; ++i) parent->addChild(named("scan"), AddFlags::MakeNameUnique);
    ASSERT_EQ(childNames(*parent), (Names{"scan", "scan1", "scan2", "scan3"}));

    EXPECT_EQ(parent->getChild(1)->setName("other"), nullptr);
    parent->addChild(named("scan"), AddFlags::MakeNameUnique);
    EXPECT_EQ(parent->getChild(4)->getName(), "scan1");

    parent->rmChild(std::uint64_t{2}, 0);
    parent->addChild(named("scan"), AddFlags::MakeNameUnique);
    EXPECT_EQ(parent->getChild(4)->getName(), "scan2");
}

TEST(Object, GivesTheNumberThatIsFreeAgainAmongManyChildren) {
    const auto parent = Object::create();
    for (int i = 0; i < 40; ++i) parent->addChild(named("Scan8"), AddFlags::MakeNameUnique);
    ASSERT_EQ(parent->getChild(39)->getName(), "Scan47");
    const auto rename = [&](const char* from, const char* to) {
        EXPECT_EQ(parent->inqChild(from)->setName(to), nullptr);
    };
    const auto add = [&] {
        const auto child = named("Scan8");
        parent->addChild(child, AddFlags::MakeNameUnique);
        return child->getName();
    };

    rename("Scan20", "Scan3");   // one that is tried, by one that is not
    rename("Scan9", "SCAN9");    // not free
    rename("Scan30", "Scan008"); // one that is tried, by one that is not
    EXPECT_EQ(add(), "Scan20");
    EXPECT_EQ(add(), "Scan30");
    EXPECT_EQ(add(), "Scan48");

    rename("Scan8", "other");
    EXPECT_EQ(add(), "Scan8");
    EXPECT_TRUE(parent->rmChild(*parent->inqChild("Scan9"), 0));
    EXPECT_EQ(add(), "Scan9");
    EXPECT_EQ(add(), "Scan49");
}

TEST(Object, AllowsAnyChildAndAnyParent) {
    const auto parent = Object::create();
    const auto child = Object::create();

    EXPECT_TRUE(parent->isChildAllowed(child, 0));
    EXPECT_TRUE(child->isParentAllowed(*parent));
    EXPECT_TRUE(parent->holdsNoUnknownData());
}

TEST(Object, AsksTheParentWithTheFlags) {
    const auto parent = Childless::create();
    const auto child = named("child");

    EXPECT_FALSE(parent->addChild(child, 16));

    ASSERT_EQ(parent->asked.size(), 1u);
    EXPECT_EQ(parent->asked[0].first, "child");
    EXPECT_EQ(parent->asked[0].second, 16);
    EXPECT_EQ(child->getParent(), nullptr);
}

TEST(Object, TakesAFallbackObjectAlsoWhereNoChildIsAllowed) {
    const auto parent = Childless::create();

    EXPECT_TRUE(parent->addChild(FallbackObject::create(), AddFlags::SkipNameTest));

    EXPECT_EQ(parent->getNumChildren(), 1u);
    EXPECT_EQ(parent->asked.size(), 1u);
}

TEST(Object, AsksTheChildForItsConsent) {
    const auto home = named("home");
    const auto elsewhere = named("elsewhere");
    const auto child = Homebound::create();

    EXPECT_FALSE(elsewhere->addChild(child, 0));
    EXPECT_TRUE(home->addChild(child, 0));
}

// Removing ----------------------------------------------------------------------------------------

TEST(Object, RemovesAChildWhichLivesOnForItsHolder) {
    const auto parent = Object::create();
    const auto child = addNamed(*parent, "child");

    EXPECT_TRUE(parent->rmChild(*child, 77));

    EXPECT_EQ(parent->getNumChildren(), 0u);
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(child->getName(), "child");
    EXPECT_FALSE(parent->rmChild(*child, 0));
}

TEST(Object, RemovesAChildByItsIndex) {
    const auto parent = Object::create();
    addNamed(*parent, "a");
    const auto second = addNamed(*parent, "b");
    addNamed(*parent, "c");

    EXPECT_TRUE(parent->rmChild(std::uint64_t{1}, 0));

    EXPECT_EQ(childNames(*parent), (Names{"a", "c"}));
    EXPECT_EQ(second->getParent(), nullptr);
    EXPECT_FALSE(parent->rmChild(std::uint64_t{2}, 0));
    EXPECT_FALSE(parent->rmChild(~std::uint64_t{0}, 0));
    EXPECT_EQ(parent->getNumChildren(), 2u);
}

TEST(Object, DoesNotRemoveTheChildOfAnother) {
    const auto parent = Object::create();
    const auto other = Object::create();
    const auto child = addNamed(*other, "child");

    EXPECT_FALSE(parent->rmChild(*child, 0));

    EXPECT_EQ(child->getParent(), other);
    EXPECT_EQ(other->getNumChildren(), 1u);
}

TEST(Object, DestroysWithItselfTheChildrenThatNobodyHolds) {
    auto parent = Object::create();
    const auto held = addNamed(*parent, "held");
    const std::weak_ptr<Object> loose = addNamed(*parent, "loose");

    parent.reset();

    EXPECT_TRUE(loose.expired());
    EXPECT_EQ(held->getParent(), nullptr);
    EXPECT_EQ(held->inqObjPath(), "/");
}

TEST(Object, IsNotKeptAliveByItsChildren) {
    auto parent = Object::create();
    const std::weak_ptr<Object> watched = parent;
    const auto child = addNamed(*parent, "child");

    parent.reset();

    EXPECT_TRUE(watched.expired());
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
