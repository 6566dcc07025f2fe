// The observer's side of the relations: what it remembers, and how it leaves.
#include <AttributeContainer/Observer.h>

#include <AttributeContainer/Observable.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <thread>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// An observer with nothing but what the base class gives.
class Plain : public Observer {
public:
    Plain() : Observer(std::nullopt) {}
    std::string getName() const override { return "plain"; }

    using Observer::Params;
    using Observer::rmAllObservers;
};

struct Scene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Bell> other = std::make_shared<Bell>();
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
};

}  // namespace

// The base --------------------------------------------------------------------------------------

TEST(Observer, DoesNothingOfItsOwn) {
    const auto bell = std::make_shared<Bell>();
    const auto plain = std::make_shared<Plain>();
    Observer::Initiator nobody;
    EXPECT_EQ(plain->changedNotify(*bell, nobody), Action::ExecUnchanged);
    EXPECT_EQ(plain->toChangeNotify(*bell, nobody), Action::ExecUnchanged);
    EXPECT_EQ(plain->inqDisplayPath(), std::nullopt);
    EXPECT_EQ(plain->inqObjPath(), std::nullopt);
    EXPECT_EQ(plain->getNumObservedByMe(), 0u);
    EXPECT_TRUE(plain->checkLocking(Observer::ActionForCheckLocking{}));
    EXPECT_TRUE(plain->checkLocking(Observer::ActionForCheckLocking{7}));
}

TEST(Observer, HasItsClassName) {
    EXPECT_EQ(Observer::getStaticClassName(), "Observer");
    EXPECT_EQ(Plain().getClassName(), "Observer");
}

TEST(Observer, StandsForItself) {
    const auto plain = std::make_shared<Plain>();
    ASSERT_TRUE(plain->lookupObject().has_value());
    EXPECT_EQ(&plain->lookupObject()->get(), plain.get());
}

TEST(Observer, KnowsWhetherItsRecordIsEmpty) {
    const auto bell = std::make_shared<Bell>();
    Plain::Params params;
    EXPECT_TRUE(params.empty());
    params.observedByMe.push_back(bell);
    EXPECT_FALSE(params.empty());
}

// Remembering -----------------------------------------------------------------------------------

TEST(Observer, RemembersAnObservableOncePerTelling) {
    Scene scene;
    EXPECT_TRUE(scene.listener->informAddObserve(*scene.bell));
    EXPECT_TRUE(scene.listener->informAddObserve(*scene.bell));
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 2u);
}

TEST(Observer, FindsTheLastEntryOfAnObservable) {
    Scene scene;
    scene.listener->informAddObserve(*scene.bell);
    scene.listener->informAddObserve(*scene.other);
    scene.listener->informAddObserve(*scene.bell);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.bell), 2u);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.other), 1u);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*std::make_shared<Bell>()), notFound);
}

TEST(Observer, CannotLookForAnObservableThatNobodyOwns) {
    Scene scene;
    const Bell unowned;
    EXPECT_THROW(scene.listener->lookupObservedByMe(unowned), std::bad_weak_ptr);
}

TEST(Observer, ForgetsOneEntryAtATime) {
    Scene scene;
    scene.listener->informAddObserve(*scene.bell);
    scene.listener->informAddObserve(*scene.other);
    scene.listener->informAddObserve(*scene.bell);

    scene.listener->informRmObserve(*scene.bell);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.bell), 0u);
    scene.listener->informDelete(*scene.bell);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.bell), notFound);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.other), 0u);
}

TEST(Observer, ForgetsAllEntriesOfOneObservableAtOnce) {
    Scene scene;
    for (const auto& bell : {scene.bell, scene.other, scene.bell})
        scene.listener->informAddObserve(*bell);
    scene.listener->informRmObserveAll(*scene.bell);
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.other), 0u);
}

TEST(Observer, ForgetsNothingWhereNothingIsNamed) {
    Scene scene;
    scene.listener->informAddObserve(*scene.bell);
    scene.listener->informRmObserve(std::nullopt);
    scene.listener->informRmObserveAll(std::nullopt);
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

TEST(Observer, ForgetsNothingOfAnObservableThatItDoesNotKnow) {
    Scene scene;
    scene.listener->informAddObserve(*scene.bell);
    scene.listener->informRmObserve(*scene.other);
    scene.listener->informRmObserveAll(*scene.other);
    scene.listener->informDelete(*scene.other);
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
}

TEST(Observer, KeepsAnEmptyEntryOfAnObservableThatHasGone) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    scene.bell.reset();
    EXPECT_EQ(scene.listener->getNumObservedByMe(), 1u);
    scene.other->addObserver(*scene.listener, 1, tellAction, false);
    EXPECT_EQ(scene.listener->lookupObservedByMe(*scene.other), 1u);
    scene.other->ring();
    EXPECT_EQ(scene.listener->told, 1) << "it works on";
}

// Leaving ---------------------------------------------------------------------------------------

TEST(Observer, LeavesEveryObservable) {
    Scene scene;
    auto brief = std::make_shared<Bell>();
    for (const auto& bell : {scene.bell, brief, scene.other}) {
        bell->addObserver(*scene.listener, 1, tellAction, false);
        bell->addPreObserver(*scene.listener, 1, askAction, false);
    }
    brief.reset();

    scene.listener->rmAllObservers(false);

    EXPECT_EQ(scene.listener->getNumObservedByMe(), 0u);
    for (const auto& bell : {scene.bell, scene.other}) EXPECT_TRUE(bell->par()->empty());
}

TEST(Observer, LeavesEveryObservableWhenItIsDestroyed) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    scene.other->addPreObserver(*scene.listener, 1, askAction, false);
    scene.listener.reset();
    EXPECT_TRUE(scene.bell->par()->empty());
    EXPECT_TRUE(scene.other->par()->empty());
    scene.bell->ring();
}

TEST(Observer, CanWatchAgainAfterItLeft) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    scene.listener->rmAllObservers(true);
    EXPECT_EQ(scene.bell->addObserver(*scene.listener, 1, tellAction, false),
              Observable::ObserverInformed);
    scene.bell->ring();
    EXPECT_EQ(scene.listener->told, 1);
}

// The path root ---------------------------------------------------------------------------------

TEST(Observer, HasNoPathRootUntilOneIsSet) {
    EXPECT_FALSE(Signpost::currentPathRoot().has_value());
    const auto root = std::make_shared<Signpost>();
    Signpost::currentPathRoot(root);
    ASSERT_TRUE(Signpost::currentPathRoot().has_value());
    EXPECT_EQ(&Signpost::currentPathRoot()->get(), root.get());
    Signpost::currentPathRoot(nullptr);
    EXPECT_FALSE(Signpost::currentPathRoot().has_value());
}

TEST(Observer, KeepsThePathRootAlive) {
    auto root = std::make_shared<Signpost>();
    const std::weak_ptr<Signpost> watched = root;
    {
        const PathRootScope scope(std::move(root));
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
}

TEST(Observer, HasAPathRootForEachThread) {
    const PathRootScope scope(std::make_shared<Signpost>());
    bool hasRoot = true;
    std::thread([&] { hasRoot = Signpost::currentPathRoot().has_value(); }).join();
    EXPECT_FALSE(hasRoot);
}
