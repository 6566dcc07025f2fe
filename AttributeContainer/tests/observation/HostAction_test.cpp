// Actions of a host on the road of a change, beside those that the walk knows by itself.
#include <AttributeContainer/ActionContainer.h>
#include <AttributeContainer/Observable.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Tells its observer twice.
class TellTwice : public ActionNotify {
public:
    using ActionNotify::ActionNotify;
    ExecReturn execute(Observable& observable, Observer& observer, Initiator initiator) override {
        ActionNotify::execute(observable, observer, initiator);
        return ActionNotify::execute(observable, observer, initiator);
    }
};

// A plain "Notify" of its own and one that tells twice, registered for as long as it lives.
class HostActions : public ActionDefinitionBase {
public:
    std::uint64_t getNumActions() const override { return 2; }
    std::optional<std::reference_wrapper<Action>> getAction(std::uint64_t index) const override {
        return *actions.at(index);
    }
    std::string getActionName(std::uint64_t index) const override {
        return index == 0 ? "HostNotify" : "HostNotifyTwice";
    }

private:
    std::vector<std::shared_ptr<Action>> actions{std::make_shared<ActionNotify>(notFound),
                                                 std::make_shared<TellTwice>(notFound)};
};

struct Scene {
    std::shared_ptr<HostActions> actions = std::make_shared<HostActions>();
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();

    Scene() { ActionContainer::the()->registerActionDef(actions); }
    ~Scene() {
        bell.reset();
        ActionContainer::the()->unregisterActionDef(actions);
    }
    std::uint64_t token(const std::string& name) { return ActionContainer::the()->getToken(name); }
};

}  // namespace

TEST(HostAction, DoesItsOwnWorkWhereItIsDerivedFromOneOfTheSystem) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, scene.token("HostNotifyTwice"), false);
    scene.bell->ring();
    EXPECT_EQ(scene.listener->told, 2);
}

TEST(HostAction, TellsLikeTheSystemsOwnUnderAnotherName) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, scene.token("HostNotify"), false);
    scene.bell->ring();
    EXPECT_EQ(scene.listener->told, 1);
    scene.bell->touch(scene.listener, nullptr);
    EXPECT_EQ(scene.listener->told, 1) << "it is the initiator";
}

TEST(HostAction, GoesWithTheActionThatARelationHasNow) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    ObserverPath& path = scene.bell->getPath(0);

    path.setAction("PreNotify");
    scene.bell->ring();
    EXPECT_EQ(scene.listener->asked, 1);
    EXPECT_EQ(scene.listener->told, 0);

    path.setAction("HostNotifyTwice");
    scene.bell->ring();
    EXPECT_EQ(scene.listener->asked, 1);
    EXPECT_EQ(scene.listener->told, 2);

    path.setAction(linkAction);
    scene.bell->ring();
    EXPECT_EQ(scene.listener->told, 2);

    path.setAction(noAction);
    scene.bell->ring();
    EXPECT_EQ(scene.listener->told, 2);
}

TEST(HostAction, GoesWithACopyOfARelation) {
    Scene scene;
    scene.listener->path = "/listener";
    scene.bell->addObserver(*scene.listener, 1, askAction, false);
    scene.bell->addObserver(*scene.listener, 2, scene.token("HostNotifyTwice"), false);
    const auto copy = std::make_shared<Bell>();
    copy->copyFrom(*scene.bell);
    copy->updateObserverLists(true);
    copy->ring();
    EXPECT_EQ(scene.listener->asked, 1);
    EXPECT_EQ(scene.listener->told, 2);
}
