#include <AttributeContainer/ActionContainer.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr std::uint64_t none = ~std::uint64_t{0};

// A host's set of actions, with the names that a test gives it.
class HostActions : public ActionDefinitionBase {
public:
    explicit HostActions(std::vector<std::string> names) : names(std::move(names)) {
        for (std::size_t i = 0; i < this->names.size(); ++i)
            actions.push_back(std::make_unique<ActionCorrespondenceBase>(none));
    }

    std::uint64_t getNumActions() const override { return names.size(); }
    std::optional<std::reference_wrapper<Action>> getAction(std::uint64_t index) const override {
        if (!actions.at(index)) return std::nullopt;
        return *actions[index];
    }
    std::string getActionName(std::uint64_t index) const override { return names.at(index); }

    std::vector<std::string> names;
    std::vector<std::unique_ptr<Action>> actions;
};

// A register of its own with the system's actions and three of a host.
struct Register {
    ActionContainer container;
    std::shared_ptr<ActionDefinition> own = std::make_shared<ActionDefinition>();
    std::shared_ptr<HostActions> host =
        std::make_shared<HostActions>(std::vector<std::string>{"Weld", "Rivet", "Glue"});

    Register() {
        container.registerActionDef(own);
        container.registerActionDef(host);
    }
};

}  // namespace

TEST(ActionContainer, KnowsTheSystemsActions) {
    const ActionContainer& container = *ActionContainer::the();
    EXPECT_EQ(container.getToken("Notify"), 0u);
    EXPECT_EQ(container.getName(12), "AntiCorrespondence_UserConfirmed");
    ASSERT_TRUE(container.getAction(2).has_value());
    EXPECT_NE(dynamic_cast<ActionPropagate*>(&container.getAction(2)->get()), nullptr);
}

TEST(ActionContainer, KnowsTheConfirmedCorrespondenceByItsOddSpellingOnly) {
    EXPECT_EQ(ActionContainer::the()->getToken("CorespondenceUserConfirmed"), 7u);
    EXPECT_EQ(ActionContainer::the()->getToken("CorrespondenceUserConfirmed"), none);
}

TEST(ActionContainer, HasNothingForAnUnknownToken) {
    const ActionContainer& container = *ActionContainer::the();
    EXPECT_EQ(container.getName(13), std::nullopt);
    EXPECT_FALSE(container.getAction(13).has_value());
    EXPECT_FALSE(container.getAction(none).has_value());
    EXPECT_EQ(container.getName(none), std::nullopt);
}

TEST(ActionContainer, IsOneForTheWholeProcess) {
    EXPECT_EQ(ActionContainer::the(), ActionContainer::the());
    EXPECT_FALSE(ActionContainer::the()->registerActionDef(ActionDefinition::the()))
        << "the system's own set is there from the first call";
}

TEST(ActionContainer, StartsAnewAfterItsCleanUp) {
    const auto host = std::make_shared<HostActions>(std::vector<std::string>{"Weld"});
    ActionContainer::the()->registerActionDef(host);
    ASSERT_EQ(ActionContainer::the()->getToken("Weld"), 13u);

    ActionContainer::cleanup();

    EXPECT_EQ(ActionContainer::the()->getToken("Weld"), none);
    EXPECT_EQ(ActionContainer::the()->getToken("Propagate"), 2u);
}

TEST(ActionContainer, StartsEmptyWhereAHostMakesOneItself) {
    const ActionContainer container;
    EXPECT_FALSE(container.getAction(0).has_value());
    EXPECT_EQ(container.getToken("Notify"), none);
}

TEST(ActionContainer, NumbersASecondSetBehindTheFirst) {
    Register actions;
    EXPECT_EQ(actions.host->getBaseToken(), 13u);
    for (std::uint64_t i = 0; i < 3; ++i) {
        EXPECT_EQ(actions.container.getToken(actions.host->names[i]), 13 + i);
        EXPECT_EQ(actions.container.getName(13 + i), actions.host->names[i]);
        ASSERT_TRUE(actions.container.getAction(13 + i).has_value());
        EXPECT_EQ(&actions.container.getAction(13 + i)->get(), actions.host->actions[i].get());
        EXPECT_EQ(actions.host->actions[i]->getToken(), 13 + i);
    }
}

TEST(ActionContainer, TakesASetOnceOnly) {
    Register actions;
    EXPECT_FALSE(actions.container.registerActionDef(actions.host));
    EXPECT_FALSE(actions.container.getAction(16).has_value());
    EXPECT_EQ(actions.host->getBaseToken(), 13u);
}

TEST(ActionContainer, TakesNoEmptyPointer) {
    ActionContainer container;
    EXPECT_FALSE(container.registerActionDef(nullptr));
    EXPECT_FALSE(container.unregisterActionDef(nullptr));
}

TEST(ActionContainer, LeavesAGapWhereASetWas) {
    Register actions;

    EXPECT_TRUE(actions.container.unregisterActionDef(actions.own));

    for (std::uint64_t token = 0; token < 13; ++token) {
        EXPECT_FALSE(actions.container.getAction(token).has_value());
        EXPECT_EQ(actions.container.getName(token), std::nullopt);
    }
    EXPECT_EQ(actions.container.getToken("Notify"), none);
    EXPECT_EQ(actions.container.getToken("Weld"), 13u);
    EXPECT_TRUE(actions.container.getAction(15).has_value());
}

TEST(ActionContainer, DoesNotGiveATokenTwice) {
    Register actions;
    actions.container.unregisterActionDef(actions.host);

    EXPECT_TRUE(actions.container.registerActionDef(actions.host));

    EXPECT_EQ(actions.container.getToken("Weld"), 16u);
    EXPECT_FALSE(actions.container.getAction(13).has_value());
}

TEST(ActionContainer, RefusesToUnregisterWhatIsNotThere) {
    Register actions;
    EXPECT_TRUE(actions.container.unregisterActionDef(actions.host));
    EXPECT_FALSE(actions.container.unregisterActionDef(actions.host));
    EXPECT_FALSE(actions.container.unregisterActionDef(std::make_shared<ActionDefinition>()));
    EXPECT_EQ(actions.container.getToken("Notify"), 0u);
}

TEST(ActionContainer, KeepsTheFirstOfTwoActionsOfOneName) {
    Register actions;
    const auto rival = std::make_shared<HostActions>(std::vector<std::string>{"Notify", "Bolt"});

    actions.container.registerActionDef(rival);

    EXPECT_EQ(actions.container.getToken("Notify"), 0u);
    EXPECT_EQ(actions.container.getName(16), std::nullopt);
    EXPECT_EQ(actions.container.getToken("Bolt"), 17u);
    actions.container.unregisterActionDef(rival);
    EXPECT_EQ(actions.container.getToken("Notify"), 0u);
}

TEST(ActionContainer, KeepsAPlaceForAnActionThatASetDoesNotHave) {
    ActionContainer container;
    const auto host = std::make_shared<HostActions>(std::vector<std::string>{"Weld", "Rivet"});
    host->actions[0].reset();

    EXPECT_TRUE(container.registerActionDef(host));

    EXPECT_FALSE(container.getAction(0).has_value());
    EXPECT_EQ(container.getToken("Weld"), 0u);
    EXPECT_EQ(host->actions[1]->getToken(), 1u);
}

TEST(ActionContainer, HoldsTheSetsThatAreRegistered) {
    ActionContainer container;
    auto host = std::make_shared<HostActions>(std::vector<std::string>{"Weld"});
    const std::weak_ptr<HostActions> watched = host;
    container.registerActionDef(host);
    host.reset();
    EXPECT_FALSE(watched.expired());
    container.unregisterActionDef(watched.lock());
    EXPECT_TRUE(watched.expired());
}
