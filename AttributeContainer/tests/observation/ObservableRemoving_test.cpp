// How relations of an observable are found again, ended and put in force.
#include <AttributeContainer/Observable.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Two pre-observers and three post-observers, each a listener of its own.
struct Scene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::vector<std::shared_ptr<Listener>> listeners;

    Scene() {
        for (short i = 0; i < 5; ++i) {
            listeners.push_back(std::make_shared<Listener>("l" + std::to_string(i)));
            if (i < 2) {
                bell->addPreObserver(*listeners.back(), i, askAction, false);
            } else {
                bell->addObserver(*listeners.back(), i, tellAction, false);
            }
        }
    }

    ObserverPath to(std::size_t listener, std::uint64_t action) const {
        return ObserverPath(ObserverPath::Owner{*bell},
                            ObserverPath::OptionalObserver{*listeners[listener]}, 1, action);
    }
    std::uint64_t size() const { return bell->getNumPreObservers() + bell->getNumPostObservers(); }
};

Observer* targetOf(const ObserverPath& path) { return &path.getObserver().value().get(); }

// Takes no notice of a farewell.
class Deaf : public Counter {
public:
    void informDelete(const Observable&) override { ++numFarewells; }
    int numFarewells = 0;
};

}  // namespace

// The combined index ----------------------------------------------------------------------------

TEST(ObservableRemoving, CountsPreObserversBeforePostObservers) {
    Scene scene;
    const Bell& constBell = *scene.bell;
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(targetOf(scene.bell->getPath(i)), scene.listeners[i].get());
        EXPECT_EQ(&constBell.getPath(i), &scene.bell->getPath(i));
    }
}

TEST(ObservableRemoving, FailsPastTheCombinedEnd) {
    Scene scene;
    const Bell& constBell = *scene.bell;
    EXPECT_THROW(scene.bell->getPath(5), std::out_of_range);
    EXPECT_THROW(constBell.getPath(notFound), std::out_of_range);
    EXPECT_THROW(scene.bell->removePath(5), std::out_of_range);
    try {
        scene.bell->removePath(notFound);
        FAIL() << "nothing was thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
}

TEST(ObservableRemoving, FindsARelationByItsContent) {
    Scene scene;
    ObserverPath pre = scene.to(1, askAction);
    ObserverPath post = scene.to(2, tellAction);
    ObserverPath unknown = scene.to(2, askAction);
    EXPECT_EQ(scene.bell->lookupPath(pre), 1u);
    EXPECT_EQ(scene.bell->lookupPath(post), 2u);
    EXPECT_EQ(scene.bell->lookupPath(unknown), notFound);
}

TEST(ObservableRemoving, LooksAmongThePostObserversFirst) {
    Scene scene;
    scene.bell->addPreObserver(*scene.listeners[4], 1, tellAction, false);
    ObserverPath wanted = scene.to(4, tellAction);
    EXPECT_EQ(scene.bell->lookupPath(wanted), 5u);
    EXPECT_EQ(scene.bell->par()->Params::lookupContent(wanted), 2u);
}

// removePath ------------------------------------------------------------------------------------

TEST(ObservableRemoving, EndsOneRelationByItsIndexAndTellsTheObserver) {
    Scene scene;

    scene.bell->removePath(3);
    scene.bell->removePath(0);

    ASSERT_EQ(scene.size(), 3u);
    EXPECT_EQ(scene.bell->getNumPreObservers(), 1u);
    EXPECT_EQ(targetOf(scene.bell->getPath(1)), scene.listeners[2].get());
    EXPECT_EQ(targetOf(scene.bell->getPath(2)), scene.listeners[4].get());
    EXPECT_EQ(scene.listeners[3]->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.listeners[0]->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.listeners[2]->getNumObservedByMe(), 1u);
}

TEST(ObservableRemoving, AsksForACleanUpAlsoWhereNothingWasDeferred) {
    Scene scene;
    scene.bell->removePath(4);
    EXPECT_TRUE(scene.bell->hasFlag(Bell::ParamsEx::postCleanupPending));
    EXPECT_FALSE(scene.bell->hasFlag(Bell::ParamsEx::preCleanupPending));
    scene.bell->removePath(0);
    EXPECT_TRUE(scene.bell->hasFlag(Bell::ParamsEx::preCleanupPending));
}

TEST(ObservableRemoving, EndsARelationThatIsStillText) {
    const auto bell = std::make_shared<Bell>();
    bell->addObserver("watcher", 1, tellAction, false);
    bell->removePath(0);
    EXPECT_EQ(bell->getNumPostObservers(), 0u);
}

TEST(ObservableRemoving, TakesOneEntryAtATimeFromAnObserverWithTwoRelations) {
    Scene scene;
    scene.bell->addObserver(*scene.listeners[0], 1, tellAction, false);
    scene.bell->removePath(0);
    EXPECT_EQ(scene.listeners[0]->getNumObservedByMe(), 1u);
}

TEST(ObservableRemoving, EndsAllRelationsOfOneContent) {
    Scene scene;
    scene.bell->addPreObserver(*scene.listeners[4], 1, tellAction, false);
    ObserverPath wanted = scene.to(4, tellAction);

    EXPECT_TRUE(scene.bell->removePath(wanted));

    EXPECT_EQ(scene.size(), 4u);
    EXPECT_EQ(scene.listeners[4]->getNumObservedByMe(), 0u);
    EXPECT_FALSE(scene.bell->removePath(wanted));
}

TEST(ObservableRemoving, EndsARelationThatIsGivenFromItsOwnList) {
    Scene scene;
    EXPECT_TRUE(scene.bell->removePath(scene.bell->getPath(2)));
    EXPECT_EQ(scene.size(), 4u);
    EXPECT_EQ(scene.listeners[2]->getNumObservedByMe(), 0u);
}

// rmObserver, informRmObservedBy ----------------------------------------------------------------

TEST(ObservableRemoving, EndsAllRelationsToOneObserverOnBothSides) {
    Scene scene;
    scene.bell->addObserver(*scene.listeners[0], 1, tellAction, false);
    scene.bell->addObserver(*scene.listeners[0], 1, linkAction, false);
    ASSERT_EQ(scene.listeners[0]->getNumObservedByMe(), 3u);

    scene.bell->rmObserver(*scene.listeners[0]);

    EXPECT_EQ(scene.listeners[0]->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.bell->getNumPreObservers(), 1u);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 3u);
    EXPECT_FALSE(scene.bell->hasFlag(Bell::ParamsEx::postCleanupPending)) << "nothing deferred";
}

TEST(ObservableRemoving, LeavesWhatTheObserverWatchesElsewhere) {
    Scene scene;
    const auto other = std::make_shared<Bell>();
    other->addObserver(*scene.listeners[0], 1, tellAction, false);
    scene.bell->rmObserver(*scene.listeners[0]);
    EXPECT_EQ(scene.listeners[0]->lookupObservedByMe(*other), 0u);
    EXPECT_EQ(other->getNumPostObservers(), 1u);
}

TEST(ObservableRemoving, DoesNothingForAnObserverThatItDoesNotKnow) {
    Scene scene;
    const auto stranger = std::make_shared<Listener>();
    scene.bell->rmObserver(*stranger);
    EXPECT_EQ(scene.size(), 5u);
}

TEST(ObservableRemoving, DoesNotLookAtTextsWhenAnObserverLeaves) {
    Scene scene;
    scene.bell->addObserver("watcher", 1, tellAction, false);
    scene.listeners[0]->path = "watcher";
    scene.bell->rmObserver(*scene.listeners[0]);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 4u);
}

TEST(ObservableRemoving, AlsoEndsRelationsThatAreNotYetActive) {
    Scene scene;
    scene.bell->addObserver(std::make_unique<ObserverPath>(scene.to(0, linkAction)), true);
    ASSERT_EQ(scene.bell->getNumPostObservers(), 4u);
    scene.bell->rmObserver(*scene.listeners[0]);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 3u);
}

TEST(ObservableRemoving, LeavesTheObserverUntoldOnTheListSideAlone) {
    Scene scene;
    scene.bell->addObserver(*scene.listeners[0], 1, tellAction, false);

    scene.bell->informRmObservedBy(*scene.listeners[0], scene.bell->parEx()->preObservers);

    EXPECT_EQ(scene.bell->getNumPreObservers(), 1u);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 4u);
    EXPECT_EQ(scene.listeners[0]->getNumObservedByMe(), 2u);

    scene.bell->informRmObservedBy(*scene.listeners[0]);

    EXPECT_EQ(scene.bell->getNumPostObservers(), 3u);
    EXPECT_EQ(scene.listeners[0]->getNumObservedByMe(), 2u);
}

TEST(ObservableRemoving, RemovesNoRelationByElement) {
    Scene scene;
    scene.bell->informRmObservedBy(scene.to(0, askAction));
    scene.bell->informRmObservedBy(scene.to(0, linkAction));
    EXPECT_EQ(scene.size(), 5u);
}

// Farewell --------------------------------------------------------------------------------------

TEST(ObservableRemoving, SaysFarewellToAllObservers) {
    Scene scene;
    scene.bell->addObserver("watcher", 1, tellAction, false);
    scene.bell->addNotifyInfo(std::make_shared<InfoStringMap>());

    scene.bell->rmAllObservers(false);

    EXPECT_TRUE(scene.bell->par()->empty());
    for (const auto& listener : scene.listeners) EXPECT_EQ(listener->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.bell->lookupNotifyInfo(typeid(InfoStringMap)), nullptr);
}

TEST(ObservableRemoving, LeavesAnObserverThatDoesNotHearTheFarewell) {
    const auto bell = std::make_shared<Bell>();
    const auto deaf = std::make_shared<Deaf>();
    bell->addPreObserver(*deaf, 1, askAction, false);
    bell->addObserver(*deaf, 1, tellAction, false);

    bell->rmAllObservers(true);

    EXPECT_EQ(deaf->numFarewells, 2);
    EXPECT_TRUE(bell->par()->empty());
    EXPECT_EQ(deaf->getNumObservedByMe(), 2u);
}

TEST(ObservableRemoving, CannotSayFarewellWithoutAnOwner) {
    Bell bell;
    EXPECT_THROW(bell.rmAllObservers(true), std::bad_weak_ptr);
}

// Late resolving --------------------------------------------------------------------------------

TEST(ObservableRemoving, PutsResolvedRelationsInForceAndSortsThem) {
    Scene scene;
    const auto strong = std::make_shared<Listener>();
    scene.bell->addObserver(
        std::make_unique<ObserverPath>(
            ObserverPath(ObserverPath::Owner{*scene.bell},
                         ObserverPath(ObserverPath::Owner{},
                                      ObserverPath::OptionalObserver{*strong}, 99, tellAction))),
        true);
    ASSERT_EQ(targetOf(scene.bell->getPath(2)), strong.get()) << "in front of all that are live";

    EXPECT_TRUE(scene.bell->updateObserverLists(false));

    EXPECT_EQ(targetOf(scene.bell->getPath(5)), strong.get());
    EXPECT_TRUE(scene.bell->getPath(5).isActive());
    EXPECT_EQ(strong->getNumObservedByMe(), 1u);
}

TEST(ObservableRemoving, SortsWithNothingNewOnlyWhereItIsForced) {
    const auto bell = std::make_shared<Bell>();
    const auto one = std::make_shared<Listener>();
    const auto other = std::make_shared<Listener>();
    bell->addObserver(*one, 1, tellAction, false);
    bell->addObserver(std::make_unique<ObserverPath>(ObserverPath::Owner{*bell},
                                                     ObserverPath::OptionalObserver{*other},
                                                     short{-1}, tellAction),
                      false);
    ASSERT_EQ(prioritiesOf(bell->parEx()->postObservers), (std::vector<short>{1, -1}));

    EXPECT_TRUE(bell->updateObserverLists(false));
    EXPECT_EQ(prioritiesOf(bell->parEx()->postObservers), (std::vector<short>{1, -1}));
    EXPECT_TRUE(bell->updateObserverLists(true));
    EXPECT_EQ(prioritiesOf(bell->parEx()->postObservers), (std::vector<short>{-1, 1}));
}

TEST(ObservableRemoving, GoesOnBehindAPathThatLeadsNowhere) {
    Scene scene;
    const auto late = std::make_shared<Listener>();
    scene.bell->addPreObserver("late", 1, askAction, false);
    scene.bell->addObserver("nobody", 1, tellAction, false);
    scene.bell->near["late"] = late;
    EXPECT_FALSE(scene.bell->updateObserverLists(false));
    EXPECT_EQ(late->getNumObservedByMe(), 1u);
}

TEST(ObservableRemoving, PassesARelationWhoseObserverHasGoneWhenItResolves) {
    Scene scene;
    auto brief = std::make_shared<Listener>();
    scene.bell->addObserver(
        std::make_unique<ObserverPath>(
            ObserverPath(ObserverPath::Owner{},
                         ObserverPath(ObserverPath::Owner{}, ObserverPath::OptionalObserver{*brief},
                                      1, tellAction))),
        true);
    brief.reset();
    EXPECT_TRUE(scene.bell->updateObserverLists(true));
}
