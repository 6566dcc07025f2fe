// Observers that end in any order, also in the middle of a walk and past the handshake.
#include <AttributeContainer/Observable.h>

#include "support/RelationScenes.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Scene = RankScene;

using Results = std::vector<Observable::NotificationResult>;

// Does its deed while it is being destroyed, and counts outside how often it is told.
class LastDeed : public Observer {
public:
    explicit LastDeed(int& told) : Observer(std::nullopt), told(told) {}
    ~LastDeed() override {
        if (deed) deed();
    }

    std::string getName() const override { return "last deed"; }
    Action::ExecReturn changedNotify(Observable&, Initiator&) override {
        ++told;
        return Action::ExecDone;
    }

    std::function<void()> deed;

private:
    int& told;
};

// Lets go of some observers, among whom it may be itself, and touches nothing afterwards.
class Ender : public Observer {
public:
    using Victims = std::vector<std::shared_ptr<Observer>>;

    explicit Ender(Victims& victims) : Observer(std::nullopt), victims(victims) {}

    std::string getName() const override { return "ender"; }
    Action::ExecReturn changedNotify(Observable&, Initiator&) override {
        victims.clear();
        return Action::ExecDone;
    }

private:
    Victims& victims;
};

}  // namespace

// Observers that end in the middle of a walk ----------------------------------------------------

TEST(LifeAndDeath, ObserverThatEndsIsNotToldAndSilencesNobody) {
    Scene scene;
    scene.strongDoes([&] { scene.middle.reset(); });

    scene.bell->ring();

    EXPECT_EQ(scene.weak->told, 1);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u) << "its relation went at the end of the walk";
    scene.bell->ring();
    EXPECT_EQ(scene.weak->told, 2);
}

TEST(LifeAndDeath, ObserverMayEndItself) {
    Scene scene;
    Ender::Victims victims;
    victims.push_back(std::make_shared<Ender>(victims));
    scene.bell->addObserver(*victims.front(), 9, tellAction, false);
    scene.bell->ring();
    EXPECT_TRUE(victims.empty());
    EXPECT_EQ(scene.strong->told, 1);
    EXPECT_EQ(scene.weak->told, 1);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 3u);
}

TEST(LifeAndDeath, ObserverThatEndsItselfIsStillRecorded) {
    Scene scene;
    Ender::Victims victims;
    victims.push_back(std::make_shared<Ender>(victims));
    scene.bell->addObserver(*victims.front(), 9, tellAction, false);
    Results results;
    scene.bell->touch(nullptr, &results);
    ASSERT_EQ(results.size(), 4u);
    EXPECT_TRUE(results[0].observer.expired());
    EXPECT_EQ(results[0].result, Action::ExecDone);
}

TEST(LifeAndDeath, EveryObserverMayEndAtOnce) {
    const auto bell = std::make_shared<Bell>();
    Ender::Victims victims;
    victims.push_back(std::make_shared<Ender>(victims));
    for (int i = 0; i < 3; ++i) victims.push_back(std::make_shared<Listener>());
    for (std::size_t i = 0; i < 4; ++i)
        bell->addObserver(*victims[i], static_cast<short>(9 - i), tellAction, false);
    bell->ring();
    EXPECT_TRUE(bell->par()->empty());
    EXPECT_EQ(bell->depth(), 0u);
}

TEST(LifeAndDeath, ObserverThatEndedInAnInnerWalkIsPassedByTheOuterOne) {
    Scene scene;
    int depth = 0;
    scene.strongDoes([&] {
        if (++depth == 1) {
            scene.bell->ring();
            EXPECT_EQ(scene.bell->getNumPostObservers(), 3u) << "no clean-up in between";
        } else {
            scene.middle.reset();
        }
    });
    scene.bell->ring();
    EXPECT_EQ(scene.weak->told, 2);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u);
}

TEST(LifeAndDeath, ObserverOfBothListsLeavesBothInAWalkOverOne) {
    Scene scene;
    scene.bell->addPreObserver(*scene.middle, 1, askAction, false);
    scene.strongDoes([&] { scene.middle.reset(); });
    scene.bell->ring();
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u);
    EXPECT_TRUE(scene.bell->getPath(0).isGone()) << "the walk over its list cleans up there";
    scene.bell->askFirst();
    EXPECT_EQ(scene.bell->getNumPreObservers(), 0u);
}

TEST(LifeAndDeath, NewRelationsKeepTheirOrderBesideOneThatHasGone) {
    Scene scene;
    const auto late = std::make_shared<Listener>();
    scene.strongDoes([&] {
        scene.middle.reset();
        scene.bell->addObserver(*late, 1, linkAction, false);
    });
    scene.bell->ring();
    EXPECT_EQ(prioritiesOf(scene.bell->parEx()->postObservers), (std::vector<short>{1, 1, 3}));
    EXPECT_EQ(scene.bell->getPath(1).getActionToken(), linkAction);
}

TEST(LifeAndDeath, ObserverIsNotToldOfChangesThatItsOwnEndMakes) {
    const auto bell = std::make_shared<Bell>();
    int told = 0;
    auto leaver = std::make_shared<LastDeed>(told);
    const auto other = std::make_shared<Listener>();
    bell->addObserver(*leaver, 2, tellAction, false);
    bell->addObserver(*other, 1, tellAction, false);
    bool isReached = true;
    leaver->deed = [&] {
        isReached = bell->getPath(1).getObserver().has_value();
        bell->ring();
    };
    leaver.reset();
    EXPECT_FALSE(isReached);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(other->told, 1);
    EXPECT_EQ(bell->getNumPostObservers(), 1u);
}

// Roads around the handshake --------------------------------------------------------------------

TEST(LifeAndDeath, ObserverThatWasNeverToldMayEnd) {
    const auto bell = std::make_shared<Bell>();
    const auto other = std::make_shared<Listener>();
    auto untold = std::make_shared<Listener>();
    bell->addObserver(*other, 1, tellAction, false);
    bell->informAddPostObservedBy(relation(*bell, *untold), true);
    untold.reset();
    bell->ring();
    EXPECT_EQ(other->told, 1);
    EXPECT_EQ(bell->getNumPostObservers(), 2u) << "until the next clean-up";
    bell->parEx()->setFlag(Bell::ParamsEx::postCleanupPending, true);
    bell->ring();
    EXPECT_EQ(bell->getNumPostObservers(), 1u);
}

TEST(LifeAndDeath, ObserverThatForgotTooEarlyMayEnd) {
    Scene scene;
    scene.middle->informRmObserve(*scene.bell);
    scene.middle.reset();
    scene.bell->ring();
    EXPECT_EQ(scene.weak->told, 1);
}

TEST(LifeAndDeath, ObserverMayEndBeforeItsRelationIsAdded) {
    const auto bell = std::make_shared<Bell>();
    auto listener = std::make_shared<Listener>();
    auto path = relation(*bell, *listener);
    listener.reset();
    EXPECT_EQ(bell->addObserver(std::move(path), true), Observable::ObserverPending);
    bell->ring();
    EXPECT_TRUE(bell->updateObserverLists(true));
}

TEST(LifeAndDeath, ObserverOfACopiedRelationMayEndBeforeItIsTold) {
    const auto bell = std::make_shared<Bell>();
    const auto copy = std::make_shared<Bell>();
    auto listener = listenerAt("/watcher");
    bell->addObserver(*listener, 1, tellAction, false);
    copy->copyFrom(*bell);
    listener.reset();
    EXPECT_TRUE(bell->par()->empty());
    EXPECT_TRUE(copy->updateObserverLists(true));
    copy->ring();
    EXPECT_TRUE(copy->getPath(0).isGone());
}

TEST(LifeAndDeath, RelationMayBeOverwrittenByOneWhoseOwnerEnds) {
    const auto bell = std::make_shared<Bell>();
    auto brief = std::make_shared<Bell>();
    const auto listener = std::make_shared<Listener>();
    bell->addObserver("nobody", 1, tellAction, false);
    bell->getPath(0) = *relation(*brief, *listener);
    brief.reset();
    EXPECT_TRUE(bell->updateObserverLists(true));
    EXPECT_FALSE(bell->getPath(0).isActive()) << "its owner has gone";
    bell->ring();
}

TEST(LifeAndDeath, ObserversAndObservablesWithoutAnOwnerLeaveEachOther) {
    const auto ownedBell = std::make_shared<Bell>();
    {
        Listener listener;
        ownedBell->addObserver(listener, 1, tellAction, false);
        ownedBell->ring();
        EXPECT_EQ(listener.told, 1);
    }
    EXPECT_TRUE(ownedBell->par()->empty());

    Bell bell;
    auto ownedListener = std::make_shared<Listener>();
    bell.addObserver(*ownedListener, 1, tellAction, false);
    bell.ring();
    EXPECT_EQ(ownedListener->told, 1);
    ownedListener.reset();
    bell.ring();
    EXPECT_TRUE(bell.getPath(0).isGone());
}

TEST(LifeAndDeath, ObserverOwnerlessInItsConstructorLeavesAtItsEnd) {
    class Eager : public Listener {
    public:
        explicit Eager(Observable& observable) {
            observable.addObserver(*this, 1, tellAction, false);
        }
    };
    const auto bell = std::make_shared<Bell>();
    auto eager = std::make_shared<Eager>(*bell);
    bell->ring();
    EXPECT_EQ(eager->told, 1);
    const auto copy = std::make_shared<Bell>();
    eager->path = "/eager";
    copy->copyFrom(*bell);
    eager.reset();
    EXPECT_TRUE(bell->par()->empty());
    copy->updateObserverLists(true);
    copy->ring();
}

TEST(LifeAndDeath, ObserverMayEndAfterAWalkThatThrew) {
    Scene scene;
    scene.strongDoes([] { throw std::runtime_error("enough"); });
    EXPECT_THROW(scene.bell->ring(), std::runtime_error);
    scene.middle.reset();
    scene.strong->after = nullptr;
    scene.bell->ring();
    EXPECT_EQ(scene.weak->told, 1);
    scene.weak.reset();
    scene.strong.reset();
    scene.bell->ring();
}
