#include <AttributeContainer/Action.h>

#include <AttributeContainer/ActionContainer.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Remembers who it was told by and for whom the change runs.
class Witness : public Observer {
public:
    Witness() : Observer(std::nullopt) {}

    std::string getName() const override { return "witness"; }
    Action::ExecReturn changedNotify(Observable& observable, Initiator& initiator) override {
        return note("told", observable, initiator);
    }
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator) override {
        return note("asked", observable, initiator);
    }

    std::string heard;
    Observable* from = nullptr;
    ObservingObject* onBehalfOf = nullptr;

private:
    Action::ExecReturn note(const char* what, Observable& observable, Initiator& initiator) {
        heard += what;
        from = &observable;
        onBehalfOf = initiator ? &initiator->get() : nullptr;
        return Action::ExecStopNotify;
    }
};

struct Scene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Witness> witness = std::make_shared<Witness>();
};

}  // namespace

TEST(Action, AnswersWithFixedNumbers) {
    EXPECT_EQ(Action::ExecDone, 0u);
    EXPECT_EQ(Action::ExecUnchanged, 1u);
    EXPECT_EQ(Action::ExecRefused, 3u);
    EXPECT_EQ(Action::ExecStopNotify, 100u);
    EXPECT_EQ(sizeof(Action::ExecReturn), 4u);
}

TEST(Action, IsOfTheClassActionWhateverItDoes) {
    EXPECT_EQ(Action::getStaticClassName(), "Action");
    EXPECT_EQ(ActionNotify(0).getClassName(), "Action");
    EXPECT_EQ(ActionPreNotify(1).getClassName(), "Action");
    EXPECT_EQ(ActionPropagate(2).getClassName(), "Action");
    EXPECT_EQ(ActionCorrespondenceBase(3).getClassName(), "Action");
}

TEST(Action, KeepsTheTokenThatItIsGiven) {
    ActionNotify action(5);
    EXPECT_EQ(action.getToken(), 5u);
    action.setToken(17);
    EXPECT_EQ(action.getToken(), 17u);
}

TEST(Action, HasTheNameThatItsTokenIsRegisteredUnder) {
    ActionNotify action(4);
    EXPECT_EQ(action.getName(), "CorrespondenceChronological");
    action.setToken(0);
    EXPECT_EQ(action.getName(), "Notify");
}

TEST(Action, HasNoNameWithATokenThatNobodyRegistered) {
    EXPECT_EQ(ActionNotify(noAction).getName(), "");
    EXPECT_EQ(ActionNotify(4711).getName(), "");
}

TEST(ActionNotify, TellsTheObserverAndPassesItsAnswerOn) {
    Scene scene;

    const auto answer = ActionNotify(0).execute(*scene.bell, *scene.witness, std::nullopt);

    EXPECT_EQ(answer, Action::ExecStopNotify);
    EXPECT_EQ(scene.witness->heard, "told");
    EXPECT_EQ(scene.witness->from, scene.bell.get());
    EXPECT_EQ(scene.witness->onBehalfOf, nullptr);
}

TEST(ActionNotify, DoesNotTellTheInitiatorOfItsOwnChange) {
    Scene scene;

    const auto answer = ActionNotify(0).execute(*scene.bell, *scene.witness, *scene.witness);

    EXPECT_EQ(answer, Action::ExecUnchanged);
    EXPECT_EQ(scene.witness->heard, "");
}

TEST(ActionNotify, TellsForWhomTheChangeRuns) {
    Scene scene;
    const auto other = std::make_shared<Witness>();

    ActionNotify(0).execute(*scene.bell, *scene.witness, *other);

    EXPECT_EQ(scene.witness->onBehalfOf, other.get());
}

TEST(ActionPreNotify, AsksTheObserverAndPassesItsAnswerOn) {
    Scene scene;

    const auto answer = ActionPreNotify(1).execute(*scene.bell, *scene.witness, std::nullopt);

    EXPECT_EQ(answer, Action::ExecStopNotify);
    EXPECT_EQ(scene.witness->heard, "asked");
    EXPECT_EQ(scene.witness->from, scene.bell.get());
    EXPECT_EQ(scene.witness->onBehalfOf, nullptr);
}

TEST(ActionPreNotify, DoesNotAskTheInitiatorAboutItsOwnChange) {
    Scene scene;

    const auto answer = ActionPreNotify(1).execute(*scene.bell, *scene.witness, *scene.witness);

    EXPECT_EQ(answer, Action::ExecUnchanged);
    EXPECT_EQ(scene.witness->heard, "");
}

TEST(ActionPreNotify, TellsForWhomTheChangeWouldRun) {
    Scene scene;

    ActionPreNotify(1).execute(*scene.bell, *scene.witness, *scene.bell);

    EXPECT_EQ(scene.witness->onBehalfOf, scene.bell.get());
}

TEST(ActionCorrespondenceBase, IsALabelThatANotificationPassesBy) {
    Scene scene;

    const auto answer =
        ActionCorrespondenceBase(3).execute(*scene.bell, *scene.witness, std::nullopt);

    EXPECT_EQ(answer, Action::ExecDone);
    EXPECT_EQ(scene.witness->heard, "");
}

TEST(ActionCorrespondenceBase, AnswersTheInitiatorLikeAnybodyElse) {
    Scene scene;
    EXPECT_EQ(ActionCorrespondenceBase(3).execute(*scene.bell, *scene.witness, *scene.witness),
              Action::ExecDone);
}
