// How a relation is pointed at another observer, and turned back into text.
#include <AttributeContainer/ObserverPath.h>

#include "support/RelationScenes.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Owner = PathOwner;
using Target = PathTarget;
using Text = PathText;
using Scene = RelationScene;

}  // namespace

// setObserver -----------------------------------------------------------------------------------

TEST(ObserverPathTarget, StaysAsItIsWithAnEmptyNewObserver) {
    Scene scene;
    ObserverPath text = scene.byText("watcher");
    text.setObserver(std::nullopt, true);
    EXPECT_EQ(text.getPath(), "watcher");

    scene.bell->addObserver(*scene.listener, 4, tellAction, false);
    scene.bell->getPath(0).setObserver(std::nullopt, true);
    EXPECT_TRUE(scene.bell->getPath(0).isActive());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

TEST(ObserverPathTarget, PointsAtANewObserverAndTellsBoth) {
    Scene scene;
    const auto other = std::make_shared<Listener>();
    scene.bell->addObserver(*scene.listener, 4, tellAction, false);

    scene.bell->getPath(0).setObserver(*other, true);

    EXPECT_EQ(targetOf(scene.bell->getPath(0)), other.get());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
    EXPECT_EQ(other->getNumObservedByMe(), 1u);
}

TEST(ObserverPathTarget, LeavesTheFormerObserverUntoldWhereThatIsWanted) {
    Scene scene;
    const auto other = std::make_shared<Listener>();
    scene.bell->addObserver(*scene.listener, 4, tellAction, false);

    scene.bell->getPath(0).setObserver(*other, false);

    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
    EXPECT_EQ(other->getNumObservedByMe(), 1u);
}

TEST(ObserverPathTarget, DoesNotTellAFormerObserverThatNeverWasTold) {
    Scene scene;
    const auto other = std::make_shared<Listener>();
    scene.bell->addObserver(*scene.listener, 4, linkAction, false);
    ObserverPath copy(Owner{*scene.bell}, scene.toListener());

    copy.setObserver(*other, true);

    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u) << "of the other relation";
    EXPECT_TRUE(copy.isActive());
}

TEST(ObserverPathTarget, TurnsATextIntoAnActiveRelation) {
    Scene scene;
    ObserverPath path = scene.byText("watcher");
    path.setObserver(*scene.listener, false);
    EXPECT_TRUE(path.isActive());
    EXPECT_EQ(targetOf(path), scene.listener.get());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

TEST(ObserverPathTarget, KeepsItsStateWithoutAnObservableToTellOf) {
    Scene scene;
    ObserverPath text(Owner{}, Text{"watcher"}, 4, tellAction);
    text.setObserver(*scene.listener, true);
    EXPECT_FALSE(text.isActive());
    EXPECT_FALSE(text.isResolved());
    EXPECT_EQ(text.getPath(), std::nullopt) << "the text is gone";

    const auto other = std::make_shared<Listener>();
    ObserverPath active(Owner{}, Target{*scene.listener}, 4, tellAction);
    active.setObserver(*other, true);
    EXPECT_TRUE(active.isActive());
    EXPECT_EQ(targetOf(active), other.get());
    EXPECT_EQ(other->getNumObservedByMe(), 0u);
}

// setObserverAsPath -----------------------------------------------------------------------------

TEST(ObserverPathTarget, TurnsBackIntoTheObserversPath) {
    Scene scene;
    scene.listener->path = "/scan/watcher";
    scene.bell->addObserver(*scene.listener, 4, tellAction, false);

    EXPECT_TRUE(scene.bell->getPath(0).setObserverAsPath(std::nullopt));

    EXPECT_FALSE(scene.bell->getPath(0).isActive());
    EXPECT_FALSE(scene.bell->getPath(0).isResolved());
    EXPECT_EQ(scene.bell->getPath(0).getPath(), "/scan/watcher");
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
}

TEST(ObserverPathTarget, TurnsIntoTheGivenPathRatherThanTheObserversOwn) {
    Scene scene;
    scene.listener->path = "/scan/watcher";
    ObserverPath path(Owner{*scene.bell}, scene.toListener());
    EXPECT_TRUE(path.setObserverAsPath("/elsewhere"));
    EXPECT_EQ(path.getPath(), "/elsewhere");
}

TEST(ObserverPathTarget, DoesNotTurnIntoAPathThatNobodyKnows) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 4, tellAction, false);
    EXPECT_FALSE(scene.bell->getPath(0).setObserverAsPath(std::nullopt));
    EXPECT_TRUE(scene.bell->getPath(0).isActive());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

TEST(ObserverPathTarget, DoesNotTurnATextIntoAnotherText) {
    Scene scene;
    ObserverPath path = scene.byText("watcher");
    EXPECT_FALSE(path.setObserverAsPath("/elsewhere"));
    EXPECT_EQ(path.getPath(), "watcher");
}

TEST(ObserverPathTarget, TakesNoOtherRelationsEntryWhenItTurnsIntoAPath) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 4, linkAction, false);
    ObserverPath copy(Owner{*scene.bell}, scene.toListener());  // never told
    EXPECT_TRUE(copy.setObserverAsPath("/scan"));
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}
