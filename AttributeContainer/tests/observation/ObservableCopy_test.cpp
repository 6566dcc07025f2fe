// Which relations a copy of an observable takes with it.
#include <AttributeContainer/Observable.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

struct Scene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Bell> copy = std::make_shared<Bell>();
    std::shared_ptr<Listener> listener = listenerAt("/watcher");
};

}  // namespace

TEST(ObservableCopy, TakesTheRelationsOfBothListsWithIt) {
    Scene scene;
    scene.bell->addPreObserver(*scene.listener, 2, askAction, false);
    scene.bell->addObserver(*scene.listener, 3, linkAction, false);

    EXPECT_EQ(scene.copy->copyFrom(*scene.bell), 1);

    ASSERT_EQ(scene.copy->getNumPreObservers(), 1u);
    ASSERT_EQ(scene.copy->getNumPostObservers(), 1u);
    EXPECT_EQ(scene.copy->getPath(0).getPriority(), 2);
    EXPECT_EQ(scene.copy->getPath(0).getActionToken(), askAction);
    EXPECT_EQ(scene.copy->getPath(1).getActionToken(), linkAction);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservableCopy, LeavesCopiedRelationsInactive) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);

    scene.copy->copyFrom(*scene.bell);

    const ObserverPath& path = scene.copy->getPath(0);
    EXPECT_TRUE(path.isResolved());
    EXPECT_FALSE(path.isActive());
    EXPECT_EQ(&path.getObserver()->get(), scene.listener.get());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
    scene.copy->ring();
    EXPECT_EQ(scene.listener->told, 0);
}

TEST(ObservableCopy, OwnsItsRelations) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    scene.copy->copyFrom(*scene.bell);
    scene.bell.reset();

    EXPECT_TRUE(scene.copy->updateObserverLists(false));

    EXPECT_NE(scene.listener->lookupObservedByMe(*scene.copy), notFound);
    scene.copy->ring();
    EXPECT_EQ(scene.listener->told, 1);
}

TEST(ObservableCopy, CopiesTextsAsTheyAre) {
    Scene scene;
    scene.bell->addObserver("watcher", 1, tellAction, false);
    scene.copy->near["watcher"] = scene.listener;

    scene.copy->copyFrom(*scene.bell);

    EXPECT_FALSE(scene.copy->getPath(0).isResolved());
    EXPECT_EQ(scene.copy->getPath(0).getPath(), "watcher");
}

TEST(ObservableCopy, LeavesRelationsOfPriorityZeroAndBelowBehind) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 0, tellAction, false);
    scene.bell->addObserver(*scene.listener, -1, linkAction, false);
    scene.bell->addPreObserver(*scene.listener, 0, askAction, false);
    scene.copy->copyFrom(*scene.bell);
    EXPECT_TRUE(scene.copy->par()->empty());
}

TEST(ObservableCopy, LeavesTemporaryRelationsBehind) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 100, tellAction, true);
    scene.bell->addPreObserver(*scene.listener, 100, askAction, true);
    scene.copy->copyFrom(*scene.bell);
    EXPECT_TRUE(scene.copy->par()->empty());
}

TEST(ObservableCopy, LeavesRelationsWithoutAnActionBehind) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, noAction, false);
    scene.copy->copyFrom(*scene.bell);
    EXPECT_TRUE(scene.copy->par()->empty());
}

TEST(ObservableCopy, LeavesRelationsWithoutAPathBehind) {
    Scene scene;
    scene.listener->path.reset();
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    scene.copy->copyFrom(*scene.bell);
    EXPECT_TRUE(scene.copy->par()->empty());
}

TEST(ObservableCopy, TakesARelationWhosePathIsEmpty) {
    Scene scene;
    scene.listener->path = "";
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    scene.copy->copyFrom(*scene.bell);
    EXPECT_EQ(scene.copy->getNumPostObservers(), 1u);
}

TEST(ObservableCopy, LeavesRelationsWhoseObserverHasGoneBehind) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    scene.copy->copyFrom(*scene.bell);
    scene.listener.reset();
    const auto second = std::make_shared<Bell>();
    second->copyFrom(*scene.copy);
    EXPECT_TRUE(second->par()->empty());
}

TEST(ObservableCopy, AddsToTheRelationsThatAreThereAndSortsThem) {
    Scene scene;
    scene.copy->addObserver("a", 5, tellAction, false);
    scene.bell->addObserver("b", 9, tellAction, false);
    scene.bell->addObserver("c", 1, tellAction, false);
    scene.copy->copyFrom(*scene.bell);
    EXPECT_EQ(prioritiesOf(scene.copy->parEx()->postObservers), (std::vector<short>{1, 5, 9}));
}

TEST(ObservableCopy, TakesARelationThatIsThereAlreadyOnceOnly) {
    Scene scene;
    scene.bell->addObserver("a", 5, tellAction, false);
    scene.copy->copyFrom(*scene.bell);
    EXPECT_EQ(scene.copy->copyFrom(*scene.bell), 1);
    EXPECT_EQ(scene.copy->copyFrom(*scene.copy), 1);
    EXPECT_EQ(scene.copy->getNumPostObservers(), 1u);
}

TEST(ObservableCopy, BeginsAsABaseWithTheSourcesRelations) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    const std::optional<std::reference_wrapper<const Observable>> source(*scene.bell);
    const auto made = std::make_shared<Bell>(source);
    EXPECT_EQ(made->getNumPostObservers(), 1u);
    EXPECT_TRUE(made->updateObserverLists(false));
    EXPECT_NE(scene.listener->lookupObservedByMe(*made), notFound);
}

TEST(ObservableCopy, CopiesNothingFromAnObservableWithoutObservers) {
    Scene scene;
    EXPECT_EQ(scene.copy->copyFrom(*scene.bell), 1);
    EXPECT_TRUE(scene.copy->par()->empty());
}
