// How a relation finds its observer and tells it.
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

// lookupObserver --------------------------------------------------------------------------------

TEST(ObserverPathResolving, FindsATargetThatHasComeMeanwhile) {
    Scene scene;
    ObserverPath path = scene.byText("watcher");
    EXPECT_FALSE(path.lookupObserver().has_value());
    EXPECT_EQ(path.getPath(), "watcher") << "a failure changes nothing";

    scene.bell->near["watcher"] = scene.listener;

    const auto found = path.lookupObserver();
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(&found->get(), scene.listener.get());
    EXPECT_TRUE(path.isResolved());
    EXPECT_FALSE(path.isActive());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
}

TEST(ObserverPathResolving, DoesNotLookAgainOnceItKnows) {
    Scene scene;
    scene.bell->near["watcher"] = scene.listener;
    ObserverPath path = scene.byText("watcher");
    scene.bell->near["watcher"] = std::make_shared<Listener>();
    EXPECT_EQ(&path.lookupObserver()->get(), scene.listener.get());
}

TEST(ObserverPathResolving, TakesNoTargetThatIsNoObserver) {
    Scene scene;
    const auto otherBell = std::make_shared<Bell>();
    scene.bell->near["watcher"] = otherBell;
    EXPECT_FALSE(scene.byText("watcher").lookupObserver().has_value());
}

TEST(ObserverPathResolving, FindsNothingWithoutAnOwner) {
    ObserverPath path(Owner{}, Text{"watcher"}, 4, tellAction);
    EXPECT_FALSE(path.lookupObserver().has_value());
}

TEST(ObserverPathResolving, AsksThePathRootOfTheThreadAndNotTheOwner) {
    Scene scene;
    const auto root = std::make_shared<Signpost>();
    const auto far = std::make_shared<Listener>();
    root->known["watcher"] = far;
    scene.bell->near["watcher"] = scene.listener;
    const PathRootScope scope(root);

    ObserverPath path = scene.byText("watcher");

    EXPECT_EQ(targetOf(path), far.get());
    EXPECT_EQ(root->asked, std::vector<std::string>{"watcher"});
}

TEST(ObserverPathResolving, AsksThePathRootAlsoWithoutAnOwner) {
    const auto root = std::make_shared<Signpost>();
    const auto far = std::make_shared<Listener>();
    root->known["watcher"] = far;
    const PathRootScope scope(root);
    ObserverPath path(Owner{}, Text{"watcher"}, 4, tellAction);
    EXPECT_EQ(targetOf(path), far.get());
}

TEST(ObserverPathResolving, AsksWithAnEmptyTextWhereItHasNone) {
    Scene scene;
    const auto root = std::make_shared<Signpost>();
    const PathRootScope scope(root);
    ObserverPath path(Owner{*scene.bell}, Target{}, 4, tellAction);
    EXPECT_FALSE(path.lookupObserver().has_value());
    EXPECT_EQ(root->asked, std::vector<std::string>{""});
}

TEST(ObserverPathResolving, SurvivesAPathRootThatEndsItself) {
    class Quitter : public Signpost {
    public:
        using Observer::inqObserver;
        std::weak_ptr<const ObservingObject> inqObserver(
            const std::optional<const std::string>& path) const override {
            currentPathRoot(nullptr);
            return Signpost::inqObserver(path);
        }
    };
    Scene scene;
    const PathRootScope scope(std::make_shared<Quitter>());
    EXPECT_FALSE(scene.byText("watcher").isResolved());
}

// activate, deactivate --------------------------------------------------------------------------

TEST(ObserverPathResolving, TellsTheObserverWhenItBecomesActive) {
    Scene scene;
    ObserverPath path = scene.byText("watcher");
    EXPECT_FALSE(path.activate());
    scene.bell->near["watcher"] = scene.listener;

    EXPECT_TRUE(path.activate());

    EXPECT_TRUE(path.isActive());
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.bell), 0u);
    EXPECT_FALSE(path.activate()) << "it is active already";
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

TEST(ObserverPathResolving, StaysInactiveWithoutAnObservableAsOwner) {
    Scene scene;
    ObserverPath noOwner(Owner{}, scene.toListener());
    EXPECT_FALSE(noOwner.activate());
    ObserverPath wrongOwner(Owner{*scene.listener}, scene.toListener());
    EXPECT_FALSE(wrongOwner.activate());
    EXPECT_TRUE(wrongOwner.isResolved());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
}

TEST(ObserverPathResolving, TellsTheObserverToForgetAndStillKnowsIt) {
    Scene scene;
    ObserverPath path(Owner{*scene.bell}, scene.toListener());
    ASSERT_TRUE(path.activate());

    EXPECT_TRUE(path.deactivate());

    EXPECT_FALSE(path.isActive());
    EXPECT_TRUE(path.isResolved());
    EXPECT_EQ(targetOf(path), scene.listener.get());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
    EXPECT_TRUE(path.activate());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

TEST(ObserverPathResolving, CannotBeDeactivatedUnlessItIsActiveAndOwned) {
    Scene scene;
    EXPECT_FALSE(scene.byText("watcher").deactivate());
    ObserverPath copy = ObserverPath(Owner{*scene.bell}, scene.toListener());
    EXPECT_FALSE(copy.deactivate());
    ObserverPath unowned(Owner{}, Target{*scene.listener}, 4, tellAction);
    EXPECT_FALSE(unowned.deactivate());
    EXPECT_TRUE(unowned.isActive());
}

// Targets and owners that end -------------------------------------------------------------------

TEST(ObserverPathResolving, IsNeitherResolvedNorActiveOnceItsObserverHasGone) {
    Scene scene;
    ObserverPath active = scene.toListener();  // in no list, so nobody tells it
    ObserverPath copy(active);
    scene.listener.reset();
    for (ObserverPath* const path : {&active, &copy}) {
        EXPECT_TRUE(path->isGone());
        EXPECT_FALSE(path->isActive());
        EXPECT_FALSE(path->isResolved());
        EXPECT_FALSE(path->getObserver().has_value());
        EXPECT_FALSE(path->lookupObserver().has_value());
        EXPECT_EQ(path->getPath(), std::nullopt);
        EXPECT_FALSE(path->activate());
        EXPECT_FALSE(path->deactivate());
        EXPECT_FALSE(path->setObserverAsPath("/elsewhere"));
        EXPECT_FALSE(*path == *path);
    }
}

TEST(ObserverPathResolving, IsNotRevivedByAPathRootThatAnswersToAnEmptyText) {
    Scene scene;
    ObserverPath path = scene.toListener();
    scene.listener.reset();
    const auto root = std::make_shared<Signpost>();
    root->known[""] = root;
    const PathRootScope scope(root);
    EXPECT_FALSE(path.lookupObserver().has_value());
}

TEST(ObserverPathResolving, CanBePointedAtALivingObserverAgain) {
    Scene scene;
    ObserverPath path = scene.toListener();
    scene.listener = std::make_shared<Listener>();
    path.setObserver(*scene.listener, true);
    EXPECT_TRUE(path.isActive());
    EXPECT_FALSE(path.isGone());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

TEST(ObserverPathResolving, ForgetsAnOwnerThatHasGone) {
    Scene scene;
    ObserverPath path = scene.byText("watcher");
    ObserverPath copy(Owner{*scene.bell}, scene.toListener());
    scene.bell.reset();
    EXPECT_FALSE(path.lookupObserver().has_value());
    EXPECT_FALSE(copy.activate());
    EXPECT_FALSE(ObserverPath(copy).activate());
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
}
