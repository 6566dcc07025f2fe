// How an object takes children.
#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/Object.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

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

TEST(ObjectChildren, RefusesAnEmptyPointerAsChild) {
    const auto parent = Object::create();

    EXPECT_FALSE(parent->addChild(nullptr, 0));
    EXPECT_FALSE(parent->addChild(nullptr, AddFlags::SkipNameTest));
    EXPECT_EQ(parent->getNumChildren(), 0u);
}

TEST(ObjectChildren, BecomesTheParentOfItsChild) {
    const auto parent = Object::create();
    const auto child = named("child");

    EXPECT_TRUE(parent->addChild(child, 0));

    EXPECT_EQ(child->getParent(), parent);
    EXPECT_EQ(parent->getNumChildren(), 1u);
    EXPECT_EQ(parent->getChild(0), child);
    EXPECT_EQ(parent->inqChild("CHILD"), child);
    EXPECT_EQ(parent->lookupChild(*child), 0u);
}

TEST(ObjectChildren, RefusesAChildOfALivingParentUntilItHasLeftThere) {
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

TEST(ObjectChildren, TakesAChildWhoseParentHasGone) {
    auto gone = Object::create();
    const auto child = addNamed(*gone, "child");
    gone.reset();
    EXPECT_EQ(child->getParent(), nullptr);
    const auto parent = Object::create();

    EXPECT_TRUE(parent->addChild(child, 0));

    EXPECT_EQ(child->getParent(), parent);
}

TEST(ObjectChildren, RefusesAChildWhoseNameDiffersFromAnotherInCaseOnly) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");
    const auto child = named("SCAN");

    EXPECT_FALSE(parent->addChild(child, 0));

    EXPECT_EQ(child->getName(), "SCAN");
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(parent->getNumChildren(), 1u);
}

TEST(ObjectChildren, RenamesAChildWhoseNameIsTakenWhereThatIsAskedFor) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");
    const auto child = named("SCAN");

    EXPECT_TRUE(parent->addChild(child, AddFlags::MakeNameUnique));

    EXPECT_EQ(child->getName(), "SCAN1");
    EXPECT_EQ(childNames(*parent), (Names{"scan", "SCAN1"}));
}

TEST(ObjectChildren, TakesAnyNameWhereTheTestIsSkipped) {
    const auto parent = Object::create();
    const auto first = addNamed(*parent, "scan");
    const auto child = named("SCAN");

    EXPECT_TRUE(parent->addChild(child, AddFlags::SkipNameTest));

    EXPECT_EQ(childNames(*parent), (Names{"scan", "SCAN"}));
    EXPECT_EQ(parent->inqChild("SCAN"), first);
}

TEST(ObjectChildren, SkipsTheTestAlsoWhereARenameIsAskedFor) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");
    const auto child = named("scan");

    EXPECT_TRUE(parent->addChild(child, AddFlags::SkipNameTest | AddFlags::MakeNameUnique));

    EXPECT_EQ(child->getName(), "scan");
}

TEST(ObjectChildren, IgnoresAllOtherBitsOfTheFlags) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");

    EXPECT_FALSE(parent->addChild(named("scan"), 1 | 2 | 8 | 32 | 64));
    EXPECT_TRUE(parent->addChild(named("other"), 1 | 2 | 8 | 32 | 64));
}

TEST(ObjectChildren, RefusesAChildNamedLikeAnAttributeOrAField) {
    const auto parent = Object::create();
    addNamedField(*parent, "field");
    addCustom(*parent, "extra", 1);

    EXPECT_FALSE(parent->addChild(named("Event"), 0));
    EXPECT_FALSE(parent->addChild(named("Name"), 0));
    EXPECT_FALSE(parent->addChild(named("extra"), 0));
    EXPECT_FALSE(parent->addChild(named("field"), 0));
    EXPECT_TRUE(parent->addChild(named("event"), 0));
}

TEST(ObjectChildren, GivesTheNumberThatIsFreeAgainAfterARenameOrARemoval) {
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

TEST(ObjectChildren, GivesTheNumberThatIsFreeAgainAmongManyChildren) {
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

TEST(ObjectChildren, AllowsAnyChildAndAnyParent) {
    const auto parent = Object::create();
    const auto child = Object::create();

    EXPECT_TRUE(parent->isChildAllowed(child, 0));
    EXPECT_TRUE(child->isParentAllowed(*parent));
    EXPECT_TRUE(parent->holdsNoUnknownData());
}

TEST(ObjectChildren, AsksTheParentWithTheFlags) {
    const auto parent = Childless::create();
    const auto child = named("child");

    EXPECT_FALSE(parent->addChild(child, 16));

    ASSERT_EQ(parent->asked.size(), 1u);
    EXPECT_EQ(parent->asked[0].first, "child");
    EXPECT_EQ(parent->asked[0].second, 16);
    EXPECT_EQ(child->getParent(), nullptr);
}

TEST(ObjectChildren, TakesAFallbackObjectAlsoWhereNoChildIsAllowed) {
    const auto parent = Childless::create();

    EXPECT_TRUE(parent->addChild(FallbackObject::create(), AddFlags::SkipNameTest));

    EXPECT_EQ(parent->getNumChildren(), 1u);
    EXPECT_EQ(parent->asked.size(), 1u);
}

TEST(ObjectChildren, AsksTheChildForItsConsent) {
    const auto home = named("home");
    const auto elsewhere = named("elsewhere");
    const auto child = Homebound::create();

    EXPECT_FALSE(elsewhere->addChild(child, AddFlags::SkipNameTest));
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(elsewhere->getNumChildren(), 0u);
    EXPECT_TRUE(home->addChild(child, 0));
}

TEST(ObjectChildren, AreAskedForBeforeTheirParentsAreLookedAt) {
    const auto first = Object::create();
    const auto child = addNamed(*first, "child");
    const auto second = Childless::create();

    EXPECT_FALSE(second->addChild(child, 0));

    EXPECT_EQ(second->asked.size(), 1u);
    EXPECT_EQ(child->getParent(), first);
}

TEST(ObjectChildren, AreRefusedForALivingParentAlsoWhereTheyAreFallbackObjects) {
    const auto first = Object::create();
    const auto fallback = FallbackObject::create();
    ASSERT_TRUE(first->addChild(fallback, AddFlags::SkipNameTest));

    EXPECT_FALSE(Childless::create()->addChild(fallback, AddFlags::SkipNameTest));

    EXPECT_EQ(fallback->getParent(), first);
}

TEST(ObjectChildren, AreTakenUnderTheirOldNameWhereTheRenameFails) {
    /// Keeps the name that its class gave it.
    class Stubborn : public ContainerClass<Stubborn, Object, "Stubborn"> {
    public:
        using Block::Block;
        ErrorPtr checkName(const std::string& name) const override {
            if (name == "Stubborn") return nullptr;
            return makeError(__FILE__, __LINE__, ErrorCode::InvalidName, "Stubborn::checkName");
        }
    };
    const auto parent = Object::create();
    const auto first = Stubborn::create();
    const auto second = Stubborn::create();
    ASSERT_TRUE(parent->addChild(first, 0));

    EXPECT_TRUE(parent->addChild(second, AddFlags::MakeNameUnique));

    EXPECT_EQ(childNames(*parent), (Names{"Stubborn", "Stubborn"}));
    EXPECT_EQ(parent->inqChild("Stubborn"), first);
}

TEST(ObjectChildren, AreTakenUnderTheirOldNameWhereAnObserverRefusesTheRename) {
    const auto parent = Object::create();
    addNamed(*parent, "scan");
    const auto child = named("scan");
    const auto refuser = watch<Refuser>(child->Attr_Name());

    EXPECT_TRUE(parent->addChild(child, AddFlags::MakeNameUnique));

    EXPECT_EQ(childNames(*parent), (Names{"scan", "scan"}));
    EXPECT_EQ(child->getParent(), parent);
}

TEST(ObjectChildren, AreNamedAfterTheParentsClassWhereTheyHaveNoValidName) {
    const auto parent = Homebound::create();
    const auto child = Object::create();
    {
        const BlockObserver unasked;
        child->name("");
    }
    EXPECT_FALSE(parent->addChild(child, 0));  // an empty path is the parent itself

    EXPECT_TRUE(parent->addChild(child, AddFlags::MakeNameUnique));

    EXPECT_EQ(child->getName(), "Homebound");
}
