// Adding relations to an observable, and ending them.
#include <AttributeContainer/Observable.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Priorities = std::vector<short>;

struct Scene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();

    const ObserverList& pre() const { return bell->parEx()->preObservers; }
    const ObserverList& post() const { return bell->parEx()->postObservers; }
    ObserverPath toListener(std::uint64_t action = tellAction) const {
        return ObserverPath(ObserverPath::Owner{*bell}, ObserverPath::OptionalObserver{*listener},
                            1, action);
    }
};

std::unique_ptr<ObserverPath> held(const ObserverPath& path) {
    return std::make_unique<ObserverPath>(path);
}

}  // namespace

// State -----------------------------------------------------------------------------------------

TEST(Observable, StartsWithoutObserversAndEnabled) {
    const auto bell = std::make_shared<Bell>();
    EXPECT_EQ(bell->getNumPreObservers(), 0u);
    EXPECT_EQ(bell->getNumPostObservers(), 0u);
    EXPECT_TRUE(bell->isNotifyEnabled());
    EXPECT_EQ(bell->parEx()->flags, Bell::ParamsEx::notifyEnabled);
    EXPECT_EQ(bell->depth(), 0u);
    EXPECT_TRUE(bell->par()->empty());
}

TEST(Observable, HasFixedFlagBits) {
    EXPECT_EQ(Bell::ParamsEx::notifyEnabled, 1u);
    EXPECT_EQ(Bell::ParamsEx::lookupPending, 2u);
    EXPECT_EQ(Bell::ParamsEx::postCleanupPending, 4u);
    EXPECT_EQ(Bell::ParamsEx::preCleanupPending, 8u);
}

TEST(Observable, HasFixedAddResults) {
    EXPECT_EQ(Observable::ObserverInformed, 0u);
    EXPECT_EQ(Observable::ObserverPending, 1u);
    EXPECT_EQ(Observable::AddFailed, 2u);
    EXPECT_EQ(Observable::AlreadyThere, 3u);
}

TEST(Observable, GivesOneRecordThroughAllItsAccessors) {
    Bell bell;
    const Bell& constBell = bell;
    EXPECT_EQ(bell.par(), bell.parEx());
    EXPECT_EQ(bell.checkPar(), bell.parEx());
    EXPECT_EQ(constBell.parEx(), bell.parEx());
}

TEST(Observable, IsEmptyOnlyWithBothListsEmpty) {
    Scene scene;
    scene.bell->addPreObserver(*scene.listener, 1, askAction, false);
    EXPECT_FALSE(scene.bell->par()->empty());
    EXPECT_TRUE(scene.bell->par()->Params::empty()) << "the plain record knows the others only";
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    EXPECT_FALSE(scene.bell->par()->Params::empty());
}

TEST(Observable, CanBeSwitchedOff) {
    const auto bell = std::make_shared<Bell>();
    bell->setNotifyEnabled(false);
    EXPECT_FALSE(bell->isNotifyEnabled());
    bell->setNotifyEnabled(true);
    EXPECT_TRUE(bell->isNotifyEnabled());
}

// Adding by observer ----------------------------------------------------------------------------

TEST(Observable, TellsANewObserver) {
    Scene scene;

    EXPECT_EQ(scene.bell->addObserver(*scene.listener, 5, linkAction, true),
              Observable::ObserverInformed);

    ASSERT_EQ(scene.bell->getNumPostObservers(), 1u);
    EXPECT_EQ(scene.bell->getNumPreObservers(), 0u);
    const ObserverPath& path = scene.bell->getPath(0);
    EXPECT_TRUE(path.isActive());
    EXPECT_TRUE(path.isTemporary());
    EXPECT_EQ(path.getPriority(), 5);
    EXPECT_EQ(path.getActionToken(), linkAction);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.bell), 0u);
}

TEST(Observable, TakesTheSameRelationOnceOnly) {
    Scene scene;
    EXPECT_EQ(scene.bell->addObserver(*scene.listener, 5, 0, false), Observable::ObserverInformed);
    EXPECT_EQ(scene.bell->addObserver(*scene.listener, 5, 0, false), Observable::AlreadyThere);
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(Observable, KeepsTheFirstPriorityOfARelationThatIsAddedAgain) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 2, tellAction, false);
    EXPECT_EQ(scene.bell->addObserver(*scene.listener, 1, tellAction, true),
              Observable::AlreadyThere);
    EXPECT_EQ(scene.bell->getPath(0).getPriority(), 2);
    EXPECT_FALSE(scene.bell->getPath(0).isTemporary());
}

TEST(Observable, KeepsTwoRelationsToOneObserverWithUnlikeActions) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    EXPECT_EQ(scene.bell->addObserver(*scene.listener, 1, linkAction, false),
              Observable::ObserverInformed);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u);
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 2u);
}

TEST(Observable, TakesARelationWithoutAnAction) {
    Scene scene;
    EXPECT_EQ(scene.bell->addObserver(*scene.listener, 1, noAction, false),
              Observable::ObserverInformed);
    EXPECT_FALSE(scene.bell->getPath(0).getAction().has_value());
}

TEST(Observable, KeepsItsTwoListsApart) {
    Scene scene;
    EXPECT_EQ(scene.bell->addPreObserver(*scene.listener, 1, tellAction, false),
              Observable::ObserverInformed);
    EXPECT_EQ(scene.bell->addObserver(*scene.listener, 1, tellAction, false),
              Observable::ObserverInformed);
    EXPECT_EQ(scene.bell->addPreObserver(*scene.listener, 1, tellAction, false),
              Observable::AlreadyThere);
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 2u);
}

TEST(Observable, SortsNewRelationsBehindThoseOfEqualPriority) {
    Scene scene;
    std::vector<std::shared_ptr<Listener>> listeners;
    for (const short priority : {5, -1, 9, 5}) {
        listeners.push_back(std::make_shared<Listener>());
        scene.bell->addObserver(*listeners.back(), priority, tellAction, false);
        scene.bell->addPreObserver(*listeners.back(), priority, askAction, false);
    }
    EXPECT_EQ(prioritiesOf(scene.post()), (Priorities{-1, 5, 5, 9}));
    EXPECT_EQ(prioritiesOf(scene.pre()), (Priorities{-1, 5, 5, 9}));
    EXPECT_EQ(&scene.post().get(1).getObserver()->get(), listeners[0].get());
    EXPECT_EQ(&scene.post().get(2).getObserver()->get(), listeners[3].get());
}

// Adding by path --------------------------------------------------------------------------------

TEST(Observable, TellsAnObserverThatItsPathLeadsTo) {
    Scene scene;
    scene.bell->near["watcher"] = scene.listener;
    EXPECT_EQ(scene.bell->addObserver("watcher", 5, tellAction, true),
              Observable::ObserverInformed);
    EXPECT_EQ(scene.bell->addPreObserver("watcher", 5, askAction, false),
              Observable::ObserverInformed);
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 2u);
    EXPECT_FALSE(scene.pre().get(0).isTemporary());
    EXPECT_TRUE(scene.post().get(0).isTemporary());
}

TEST(Observable, KeepsARelationWhoseObserverDoesNotExistYet) {
    Scene scene;
    EXPECT_EQ(scene.bell->addObserver("watcher", 5, tellAction, false),
              Observable::ObserverPending);
    EXPECT_EQ(scene.bell->addPreObserver("watcher", 5, askAction, true),
              Observable::ObserverPending);
    EXPECT_EQ(scene.post().get(0).getPath(), "watcher");
    EXPECT_TRUE(scene.pre().get(0).isTemporary());
    EXPECT_EQ(scene.bell->addObserver("watcher", 5, tellAction, false), Observable::AlreadyThere);
}

TEST(Observable, TellsAnObserverOnceItExists) {
    Scene scene;
    scene.bell->addObserver("watcher", 5, tellAction, false);
    EXPECT_FALSE(scene.bell->updateObserverLists(false));
    EXPECT_FALSE(scene.bell->updateObserverLists(false)) << "as often as one likes";

    scene.bell->near["watcher"] = scene.listener;

    EXPECT_TRUE(scene.bell->updateObserverLists(false));
    EXPECT_TRUE(scene.bell->getPath(0).isActive());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
    EXPECT_TRUE(scene.bell->updateObserverLists(false));
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

// Adding a ready relation -----------------------------------------------------------------------

TEST(Observable, AppendsAReadyRelationUnlessItIsToBeSorted) {
    Scene scene;
    for (const short priority : {5, 3, 4}) {
        auto path = std::make_unique<ObserverPath>(
            ObserverPath::Owner{*scene.bell},
            std::optional<const std::string>{"p" + std::to_string(priority)}, priority, tellAction);
        scene.bell->addObserver(std::make_unique<ObserverPath>(*path), priority == 4);
        scene.bell->addPreObserver(std::move(path), priority == 4);
    }
    EXPECT_EQ(prioritiesOf(scene.post()), (Priorities{5, 3, 4}))
        << "4 goes behind the last entry that is not above it";
    EXPECT_EQ(prioritiesOf(scene.pre()), (Priorities{5, 3, 4}));
    scene.bell->resortPostObservers();
    EXPECT_EQ(prioritiesOf(scene.post()), (Priorities{3, 4, 5}));
    EXPECT_EQ(prioritiesOf(scene.pre()), (Priorities{5, 3, 4}));
    scene.bell->resortPreObservers();
    EXPECT_EQ(prioritiesOf(scene.pre()), (Priorities{3, 4, 5}));
}

TEST(Observable, LetsACopiedRelationWait) {
    Scene scene;
    EXPECT_EQ(scene.bell->addObserver(held(scene.toListener()), true), Observable::ObserverPending);
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
}

TEST(Observable, BecomesTheOwnerOfWhatIsAdded) {
    Scene scene;
    const auto other = std::make_shared<Bell>();
    const ObserverPath ofOther(ObserverPath::Owner{*other}, scene.toListener());
    scene.bell->addObserver(held(ofOther), true);

    scene.bell->updateObserverLists(false);

    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.bell), 0u);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*other), notFound);
}

TEST(Observable, TakesNoEmptyRelation) {
    Scene scene;
    EXPECT_EQ(scene.bell->addObserver(std::unique_ptr<ObserverPath>{}, true),
              Observable::AlreadyThere);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 0u);
}

TEST(Observable, InsertsWithoutTellingWhereTheCallerDoesThat) {
    Scene scene;
    ObserverPath* const post = scene.bell->informAddPostObservedBy(held(scene.toListener()), true);
    ObserverPath* const pre = scene.bell->informAddPreObservedBy(held(scene.toListener()), false);
    EXPECT_EQ(post, &scene.bell->getPath(1));
    EXPECT_EQ(pre, &scene.bell->getPath(0));
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.bell->informAddPostObservedBy(held(scene.toListener()), true), nullptr);
    EXPECT_EQ(scene.bell->informAddPreObservedBy(held(scene.toListener()), true), nullptr);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}
