#include <AttributeContainer/Action.h>

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/AttributePropagationObserver.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/FreeAttribute.h"
#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <typeinfo>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// A source and a target of one type, and the action between them.
struct Scene {
    std::shared_ptr<Attr<int>> source = attributeOf<int>(1);
    std::shared_ptr<Attr<int>> target = attributeOf<int>(2);
    ActionPropagate action{propagateAction};

    Observer& companion() const { return *target->getObserver().lock(); }
    Action::ExecReturn execute(Action::Initiator initiator = std::nullopt) {
        return action.execute(*source, companion(), initiator);
    }
};

// Writes down on whose behalf it is asked and told, and whether it sees a pending value.
class Recorder : public Observer {
public:
    explicit Recorder(ObservingObject& known) : Observer(std::nullopt), known(known) {}

    std::string getName() const override { return "recorder"; }
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator) override {
        const bool isPending = observable.lookupNotifyInfo(typeid(NewValueInfo<int>)) != nullptr;
        return note(isPending ? "asked, value pending," : "asked", initiator);
    }
    Action::ExecReturn changedNotify(Observable&, Initiator& initiator) override {
        return note("told", initiator);
    }

    std::vector<std::string> book;

private:
    Action::ExecReturn note(const std::string& what, Initiator& initiator) {
        const std::string who = !initiator                    ? "nobody"
                                : &initiator->get() == &known ? "the source"
                                                              : "somebody";
        book.push_back(what + " for " + who);
        return Action::ExecDone;
    }

    ObservingObject& known;
};

}  // namespace

TEST(ActionPropagate, CopiesTheValue) {
    Scene scene;
    EXPECT_EQ(scene.execute(), Action::ExecDone);
    EXPECT_EQ(scene.target->get(), 1);
    EXPECT_EQ(scene.source->get(), 1);
}

TEST(ActionPropagate, GoesThroughTheTextBetweenUnlikeTypes) {
    Scene scene;
    const auto text = attributeOf<std::string>("");
    const auto answer =
        scene.action.execute(*scene.source, *text->getObserver().lock(), std::nullopt);
    EXPECT_EQ(answer, Action::ExecDone);
    EXPECT_EQ(text->get(), "1");
}

TEST(ActionPropagate, FollowsEveryChangeOfTheSource) {
    Scene scene;
    scene.source->addObserver(scene.companion(), 1, propagateAction, false);
    scene.source->set(7);
    EXPECT_EQ(scene.target->get(), 7);
    scene.source->assignFrom("8");
    EXPECT_EQ(scene.target->get(), 8);
}

TEST(ActionPropagate, GoesAlongAChain) {
    const auto first = attributeOf<int>(0);
    const auto second = attributeOf<int>(0);
    const auto third = attributeOf<int>(0);
    first->addObserver(*second->getObserver().lock(), 1, propagateAction, false);
    second->addObserver(*third->getObserver().lock(), 1, propagateAction, false);
    first->set(5);
    EXPECT_EQ(third->get(), 5);
}

TEST(ActionPropagate, PassesTheInitiatorOver) {
    Scene scene;
    EXPECT_EQ(scene.execute(scene.companion()), Action::ExecUnchanged);
    EXPECT_EQ(scene.target->get(), 2);
}

TEST(ActionPropagate, IsRefusedWhereTheTargetHasGone) {
    Scene scene;
    const auto companion = scene.target->getObserver().lock();
    scene.target.reset();
    EXPECT_EQ(scene.action.execute(*scene.source, *companion, std::nullopt), Action::ExecRefused);
}

TEST(ActionPropagate, WorksOnlyTowardsACompanion) {
    Scene scene;
    const auto container = AttrContainer::create();
    EXPECT_THROW(scene.action.execute(*scene.source, *container, std::nullopt), std::bad_cast);
    scene.source->addObserver(*container, 1, propagateAction, false);
    EXPECT_THROW(scene.source->set(3), std::bad_cast);
}

TEST(ActionPropagate, WorksOnlyFromAnAttribute) {
    Scene scene;
    const auto bell = std::make_shared<Bell>();
    EXPECT_THROW(scene.action.execute(*bell, scene.companion(), std::nullopt), std::bad_cast);
}

TEST(ActionPropagate, NeedsASourceThatIsOwned) {
    Scene scene;
    CustAttr<int> unowned(std::nullopt);
    EXPECT_THROW(scene.action.propagateValue(unowned, *scene.target, std::nullopt),
                 std::bad_weak_ptr);
}

TEST(ActionPropagate, LeavesATargetWhoseObserverRefuses) {
    Scene scene;
    const auto refuser = watch<Refuser>(*scene.target);

    EXPECT_EQ(scene.execute(), Action::ExecUnchanged);

    EXPECT_EQ(scene.target->get(), 2);
    EXPECT_EQ(refuser->asked, 1);
    EXPECT_EQ(refuser->told, 0);
    EXPECT_EQ(scene.target->copyNotifyInfos(), nullptr);
}

TEST(ActionPropagate, LeavesTheSourcesOwnChangeAloneWhereTheTargetRefuses) {
    Scene scene;
    const auto refuser = watch<Refuser>(*scene.target);
    scene.source->addObserver(scene.companion(), 1, propagateAction, false);
    scene.source->set(9);
    EXPECT_EQ(scene.source->get(), 9);
    EXPECT_EQ(scene.target->get(), 2);
}

TEST(ActionPropagate, AsksAndTellsTheTargetsObserversTwice) {
    Scene scene;
    const auto recorder = std::make_shared<Recorder>(*scene.source);
    scene.target->addPreObserver(*recorder, 1, askAction, false);
    scene.target->addObserver(*recorder, 1, tellAction, false);

    scene.execute();

    EXPECT_EQ(recorder->book,
              (std::vector<std::string>{"asked for the source", "asked, value pending, for nobody",
                                        "told for nobody", "told for the source"}));
}

TEST(ActionPropagate, TellsTheTargetsObserversTwiceAlsoWithNobodyToAsk) {
    Scene scene;
    const auto counter = std::make_shared<Counter>();
    scene.target->addObserver(*counter, 1, tellAction, false);
    scene.execute();
    EXPECT_EQ(counter->told, 2);
}

TEST(ActionPropagate, OutlivesATargetThatItsObserverLetsGo) {
    Scene scene;
    const auto companion = scene.target->getObserver().lock();
    const std::weak_ptr<Attribute> target = scene.target;
    const auto dropper = std::make_shared<Actor>();
    dropper->before = [&](Observable&, Actor::Initiator&) { scene.target.reset(); };
    scene.target->addPreObserver(*dropper, 1, askAction, false);

    EXPECT_EQ(scene.action.execute(*scene.source, *companion, std::nullopt), Action::ExecDone);

    EXPECT_TRUE(target.expired());
    EXPECT_EQ(dropper->asked, 2);
}
