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

// How relations come into being -----------------------------------------------------------------

TEST(ObserverPath, StartsTemporaryWithNothingInIt) {
    const ObserverPath path;
    EXPECT_EQ(path.getPriority(), 0);
    EXPECT_TRUE(path.isTemporary());
    EXPECT_FALSE(path.isActive());
    EXPECT_FALSE(path.isResolved());
    EXPECT_FALSE(path.getAction().has_value());
    EXPECT_FALSE(path.getObserver().has_value());
    EXPECT_EQ(path.getPath(), std::nullopt);
    EXPECT_FALSE(path.isGone());
}

TEST(ObserverPath, IsActiveFromBirthWithAKnownObserver) {
    Scene scene;
    const ObserverPath path = ObserverPath(Owner{*scene.bell}, Target{*scene.listener}, -7, 2);

    EXPECT_EQ(path.getPriority(), -7);
    EXPECT_EQ(path.getActionToken(), 2u);
    EXPECT_TRUE(path.isActive());
    EXPECT_TRUE(path.isResolved());
    EXPECT_FALSE(path.isTemporary());
    EXPECT_EQ(targetOf(path), scene.listener.get());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u) << "whoever adds it tells the observer";
}

TEST(ObserverPath, HasNoStateWithoutAnObserver) {
    Scene scene;
    const ObserverPath path(Owner{*scene.bell}, Target{}, 3, tellAction);
    EXPECT_FALSE(path.isActive());
    EXPECT_FALSE(path.isResolved());
    EXPECT_FALSE(path.isTemporary());
    EXPECT_EQ(path.getPath(), std::nullopt);
}

TEST(ObserverPath, KeepsATextThatLeadsNowhere) {
    Scene scene;
    const ObserverPath path = scene.byText("/scan/watcher");
    EXPECT_FALSE(path.isActive());
    EXPECT_FALSE(path.isResolved());
    EXPECT_FALSE(path.isTemporary());
    EXPECT_EQ(path.getPath(), "/scan/watcher");
}

TEST(ObserverPath, ResolvesATextAtBirthWhereItCan) {
    Scene scene;
    scene.bell->near["watcher"] = scene.listener;
    const ObserverPath path = scene.byText("watcher");
    EXPECT_TRUE(path.isActive());
    EXPECT_TRUE(path.isResolved());
    EXPECT_EQ(targetOf(path), scene.listener.get());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
}

TEST(ObserverPath, CanBeMadeWithoutAText) {
    Scene scene;
    const ObserverPath path(Owner{*scene.bell}, Text{}, 3, tellAction);
    EXPECT_FALSE(path.isResolved());
    EXPECT_EQ(path.getPath(), std::nullopt);
}

TEST(ObserverPath, HasNoActionForAnUnknownToken) {
    Scene scene;
    const ObserverPath path(Owner{*scene.bell}, Target{*scene.listener}, 3, noAction);
    EXPECT_FALSE(path.getAction().has_value());
    EXPECT_EQ(path.getActionToken(), noAction);
    EXPECT_EQ(path.getActionName(), "");
}

// Copies ----------------------------------------------------------------------------------------

TEST(ObserverPath, CopiesEverythingButTheActiveState) {
    Scene scene;
    ObserverPath path = scene.toListener();
    path.setTemporary(true);

    const ObserverPath copy(path);

    EXPECT_EQ(copy.getPriority(), 4);
    EXPECT_EQ(copy.getActionToken(), tellAction);
    EXPECT_TRUE(copy.isTemporary());
    EXPECT_TRUE(copy.isResolved());
    EXPECT_FALSE(copy.isActive());
    EXPECT_EQ(targetOf(copy), scene.listener.get());
}

TEST(ObserverPath, CopiesATextAsText) {
    Scene scene;
    ObserverPath copy;
    copy = scene.byText("watcher");
    EXPECT_FALSE(copy.isTemporary());
    EXPECT_FALSE(copy.isResolved());
    EXPECT_EQ(copy.getPath(), "watcher");
}

TEST(ObserverPath, CopiesTheOwner) {
    Scene scene;
    const ObserverPath original = scene.toListener();
    ObserverPath copy(original);
    EXPECT_TRUE(copy.activate());
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.bell), 0u);
}

TEST(ObserverPath, CanBeCopiedForAnotherOwner) {
    Scene scene;
    const auto other = std::make_shared<Bell>();
    ObserverPath copy(Owner{*other}, scene.toListener());
    EXPECT_TRUE(copy.activate());
    EXPECT_EQ(scene.listener->lookupObservedByMe(*other), 0u);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.bell), notFound);
}

TEST(ObserverPath, SurvivesItsOwnAssignment) {
    Scene scene;
    ObserverPath path = scene.byText("watcher");
    const ObserverPath& same = path;
    path = same;
    EXPECT_EQ(path.getPath(), "watcher");
}

// Actions and the path --------------------------------------------------------------------------

TEST(ObserverPath, TakesItsActionByTokenAndByName) {
    ObserverPath path;
    path.setAction("PreNotify");
    EXPECT_EQ(path.getActionToken(), 1u);
    path.setAction(std::uint64_t{12});
    EXPECT_EQ(path.getActionName(), "AntiCorrespondence_UserConfirmed");
}

TEST(ObserverPath, LosesItsActionWithAnUnknownName) {
    ObserverPath path;
    path.setAction(tellAction);
    path.setAction("no such action");
    EXPECT_FALSE(path.getAction().has_value());
    ASSERT_TRUE(path.getActionName().has_value());
    EXPECT_EQ(*path.getActionName(), "");
    EXPECT_EQ(path.getActionToken(), noAction);
}

TEST(ObserverPath, AsksAKnownObserverForItsPath) {
    Scene scene;
    const ObserverPath path = scene.toListener();
    EXPECT_EQ(path.getPath(), std::nullopt);
    scene.listener->path = "/scan/watcher";
    EXPECT_EQ(path.getPath(), "/scan/watcher");
}

TEST(ObserverPath, HoldsTheTemporaryBitThatItIsGiven) {
    ObserverPath path;
    path.setTemporary(false);
    EXPECT_FALSE(path.isTemporary());
    path.setTemporary(true);
    EXPECT_TRUE(path.isTemporary());
}

// Order -----------------------------------------------------------------------------------------

TEST(ObserverPath, PutsALiveRelationBehindAStrongerText) {
    Scene scene;
    const ObserverPath live(Owner{*scene.bell}, Target{*scene.listener}, -5, tellAction);
    const ObserverPath text(Owner{*scene.bell}, Text{"watcher"}, 100, tellAction);
    EXPECT_EQ(ObserverPath::comp(live, text), 1);
    EXPECT_EQ(ObserverPath::comp(text, live), -1);
}

TEST(ObserverPath, PutsALiveRelationBehindOneThatIsOnlyResolved) {
    Scene scene;
    const ObserverPath live(Owner{*scene.bell}, Target{*scene.listener}, 1, tellAction);
    const ObserverPath copy(live);
    EXPECT_EQ(ObserverPath::comp(live, copy), 1);
    EXPECT_EQ(ObserverPath::comp(copy, live), -1);
}

TEST(ObserverPath, OrdersRelationsOfOneKindByTheirSignedPriority) {
    Scene scene;
    const ObserverPath low(Owner{*scene.bell}, Target{*scene.listener}, -1, tellAction);
    const ObserverPath high(Owner{*scene.bell}, Target{*scene.listener}, 1, linkAction);
    EXPECT_EQ(ObserverPath::comp(low, high), -1);
    EXPECT_EQ(ObserverPath::comp(high, low), 1);
    EXPECT_EQ(ObserverPath::comp(high, high), 0);

    const ObserverPath lowText(Owner{*scene.bell}, Text{"a"}, -1, tellAction);
    const ObserverPath highText(Owner{*scene.bell}, Text{"b"}, 1, tellAction);
    EXPECT_EQ(ObserverPath::comp(lowText, highText), -1);
}

TEST(ObserverPath, OrdersTheOtherWayRoundWhereThatIsWanted) {
    Scene scene;
    const ObserverPath low(Owner{*scene.bell}, Target{*scene.listener}, 1, tellAction);
    const ObserverPath high(Owner{*scene.bell}, Target{*scene.listener}, 2, tellAction);
    EXPECT_EQ(ObserverPath::negComp(low, high), 1);
    EXPECT_EQ(ObserverPath::negComp(high, low), -1);
    EXPECT_EQ(ObserverPath::negComp(low, low), 0);
}

// Equality --------------------------------------------------------------------------------------

TEST(ObserverPath, EqualsAnotherOfTheSameActionAndObserver) {
    Scene scene;
    const ObserverPath path = scene.toListener();
    ObserverPath other(Owner{}, Target{*scene.listener}, 99, tellAction);
    other.setTemporary(true);
    EXPECT_TRUE(path == other) << "priority, state and owner do not count";
    EXPECT_TRUE(path == ObserverPath(path));
}

TEST(ObserverPath, DiffersByItsAction) {
    Scene scene;
    const ObserverPath none(Owner{*scene.bell}, Target{*scene.listener}, 4, noAction);
    EXPECT_FALSE(scene.toListener() ==
                 ObserverPath(Owner{*scene.bell}, Target{*scene.listener}, 4, askAction));
    EXPECT_FALSE(scene.toListener() == none);
    EXPECT_TRUE(none == ObserverPath(none)) << "two without an action may be equal";
}

TEST(ObserverPath, DiffersByItsObserverAlsoWhereTheirPathsAreEqual) {
    Scene scene;
    const auto twin = listenerAt("/scan/watcher");
    scene.listener->path = twin->path;
    EXPECT_FALSE(scene.toListener() ==
                 ObserverPath(Owner{*scene.bell}, Target{*twin}, 4, tellAction));
}

TEST(ObserverPath, ComparesTextsAsTheyAre) {
    Scene scene;
    EXPECT_TRUE(scene.byText("a/b") == scene.byText("a/b"));
    EXPECT_FALSE(scene.byText("a/b") == scene.byText("a//b"));
    EXPECT_TRUE(scene.byText("") == scene.byText(""));
}

TEST(ObserverPath, ComparesATextWithTheObserversPath) {
    Scene scene;
    scene.listener->path = "/scan/watcher";
    EXPECT_TRUE(scene.toListener() == scene.byText("/scan/watcher"));
    EXPECT_TRUE(scene.byText("/scan/watcher") == scene.toListener());
    EXPECT_FALSE(scene.toListener() == scene.byText("watcher"));
}

TEST(ObserverPath, EqualsNothingWhereThereIsNoPath) {
    Scene scene;
    const ObserverPath pathless(Owner{*scene.bell}, Target{}, 4, tellAction);
    EXPECT_FALSE(pathless == pathless);
    EXPECT_FALSE(pathless == scene.byText(""));
    EXPECT_FALSE(scene.toListener() == scene.byText("")) << "the listener has no path";
}
