#include <AttributeContainer/ActionContainer.h>

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

using namespace QOR::AttributeContainer;

namespace {

constexpr std::uint64_t none = ~std::uint64_t{0};

struct Row {
    std::uint64_t token;
    const char* name;
    const std::type_info* kind;
};

const Row rows[] = {
    {0, "Notify", &typeid(ActionNotify)},
    {1, "PreNotify", &typeid(ActionPreNotify)},
    {2, "Propagate", &typeid(ActionPropagate)},
    {3, "Correspondence", &typeid(ActionCorrespondenceBase)},
    {4, "CorrespondenceChronological", &typeid(ActionCorrespondenceBase)},
    {5, "CorrespondenceSensor", &typeid(ActionCorrespondenceBase)},
    {6, "CorrespondenceUserHints", &typeid(ActionCorrespondenceBase)},
    {7, "CorespondenceUserConfirmed", &typeid(ActionCorrespondenceBase)},
    {8, "CorrespondenceTemp", &typeid(ActionCorrespondenceBase)},
    {9, "CorrespondenceTemp2", &typeid(ActionCorrespondenceBase)},
    {10, "CorrespondenceFineVeryLikely", &typeid(ActionCorrespondenceBase)},
    {11, "CorrespondenceFineLikely", &typeid(ActionCorrespondenceBase)},
    {12, "AntiCorrespondence_UserConfirmed", &typeid(ActionCorrespondenceBase)},
};

class ActionRows : public testing::TestWithParam<Row> {};

}  // namespace

TEST_P(ActionRows, HaveATokenANameAndAClass) {
    const Row& row = GetParam();
    const ActionDefinition definition;

    const auto action = definition.getAction(row.token);

    ASSERT_TRUE(action.has_value());
    Action& found = action->get();
    EXPECT_EQ(typeid(found), *row.kind);
    EXPECT_EQ(found.getToken(), row.token);
    EXPECT_EQ(definition.getActionName(row.token), row.name);
    EXPECT_EQ(definition.getActionToken(row.name), row.token);
}

INSTANTIATE_TEST_SUITE_P(All, ActionRows, testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ActionDefinition, HasThirteenActions) {
    EXPECT_EQ(ActionDefinition().getNumActions(), 13u);
    EXPECT_EQ(std::size(rows), 13u);
}

TEST(ActionDefinition, HasNothingBehindItsLastAction) {
    const ActionDefinition definition;
    for (const std::uint64_t index : {std::uint64_t{13}, none}) {
        EXPECT_FALSE(definition.getAction(index).has_value());
        EXPECT_EQ(definition.getActionName(index), "");
    }
}

TEST(ActionDefinition, KnowsTheConfirmedCorrespondenceByItsOddSpellingOnly) {
    const ActionDefinition definition;
    EXPECT_EQ(definition.getActionToken("CorespondenceUserConfirmed"), 7u);
    EXPECT_EQ(definition.getActionToken("CorrespondenceUserConfirmed"), none);
}

TEST(ActionDefinition, GivesAllOnesForAnUnknownName) {
    const ActionDefinition definition;
    EXPECT_EQ(definition.getActionToken(""), none);
    EXPECT_EQ(definition.getActionToken("notify"), none);
}

TEST(ActionDefinition, HasAllOnesAsFirstTokenUntilItIsRegistered) {
    const auto definition = std::make_shared<ActionDefinition>();
    EXPECT_EQ(definition->getBaseToken(), none);

    ActionContainer container;
    container.registerActionDef(definition);

    EXPECT_EQ(definition->getBaseToken(), 0u);
}

TEST(ActionDefinition, MakesActionsOfItsOwnForEachInstance) {
    const ActionDefinition one;
    const ActionDefinition other;
    EXPECT_NE(&one.getAction(0)->get(), &other.getAction(0)->get());
    EXPECT_EQ(&one.getAction(0)->get(), &one.getAction(0)->get());
}

TEST(ActionDefinition, IsOneForTheWholeProcess) {
    const auto definition = ActionDefinition::the();
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(ActionDefinition::the(), definition);
}

TEST(ActionDefinition, IsMadeAnewAfterItsCleanUp) {
    ActionContainer::the();
    const std::weak_ptr<ActionDefinition> former = ActionDefinition::the();

    ActionDefinition::cleanup();

    EXPECT_FALSE(former.expired()) << "the register still holds it";
    EXPECT_NE(ActionDefinition::the(), former.lock());
    ActionContainer::cleanup();
    EXPECT_TRUE(former.expired());
    EXPECT_EQ(ActionContainer::the()->getToken("Propagate"), 2u);
}

TEST(ActionDefinitionBase, HasNoActions) {
    const ActionDefinitionBase base;
    EXPECT_EQ(base.getClassName(), "ActionDefinitionBase");
    EXPECT_EQ(ActionDefinitionBase::getStaticClassName(), "ActionDefinitionBase");
    EXPECT_EQ(base.getNumActions(), 0u);
    EXPECT_FALSE(base.getAction(0).has_value());
    EXPECT_EQ(base.getActionName(0), "");
}

TEST(ActionDefinitionBase, GivesItsClassNameToTheSystemsOwnSet) {
    EXPECT_EQ(ActionDefinition().getClassName(), "ActionDefinitionBase");
}
