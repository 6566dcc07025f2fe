#include <AttributeContainer/ActionToken.h>

#include <AttributeContainer/ActionContainer.h>

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;

namespace {

const std::pair<const char*, std::uint64_t> tokens[] = {
    {"Notify", ActionToken::Notify},
    {"PreNotify", ActionToken::PreNotify},
    {"Propagate", ActionToken::Propagate},
    {"Correspondence", ActionToken::Correspondence},
    {"CorrespondenceChronological", ActionToken::CorrespondenceChronological},
    {"CorrespondenceSensor", ActionToken::CorrespondenceSensor},
    {"CorrespondenceUserHints", ActionToken::CorrespondenceUserHints},
    {"CorespondenceUserConfirmed", ActionToken::CorespondenceUserConfirmed},
    {"CorrespondenceTemp", ActionToken::CorrespondenceTemp},
    {"CorrespondenceTemp2", ActionToken::CorrespondenceTemp2},
    {"CorrespondenceFineVeryLikely", ActionToken::CorrespondenceFineVeryLikely},
    {"CorrespondenceFineLikely", ActionToken::CorrespondenceFineLikely},
    {"AntiCorrespondence_UserConfirmed", ActionToken::AntiCorrespondence_UserConfirmed},
};

}  // namespace

TEST(ActionToken, IsWhatTheActionContainerKnowsByThatName) {
    const ActionContainer& container = *ActionContainer::the();
    for (const auto& [name, token] : tokens) {
        EXPECT_EQ(container.getToken(name), token) << name;
        ASSERT_TRUE(container.getAction(token).has_value()) << name;
        EXPECT_EQ(container.getAction(token)->get().getName(), name);
    }
}

TEST(ActionToken, NamesEveryActionOfTheSystem) {
    EXPECT_EQ(std::size(tokens), ActionDefinition::the()->getNumActions());
}

TEST(ActionToken, HasOneForNoAction) {
    EXPECT_FALSE(ActionContainer::the()->getAction(ActionToken::None).has_value());
    EXPECT_EQ(ActionContainer::the()->getToken("no such action"), ActionToken::None);
}
