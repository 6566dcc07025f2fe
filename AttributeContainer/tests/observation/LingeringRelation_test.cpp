// Relations that are removed or added while a walk runs over their list.
#include <AttributeContainer/Observable.h>

#include "support/RelationScenes.h"

#include <gtest/gtest.h>

#include <functional>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Scene = RankScene;

}  // namespace

// Relations that are removed in the middle of a walk --------------------------------------------

TEST(LingeringRelation, RelationRemovedInAWalkStaysAsNotify) {
    Scene scene;
    scene.bell->addObserver(*scene.weak, 1, linkAction, false);
    scene.strongDoes([&] {
        if (scene.strong->told == 0) scene.bell->rmObserver(*scene.weak);
    });

    scene.bell->ring();

    EXPECT_EQ(scene.weak->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 4u);
    EXPECT_EQ(scene.weak->told, 2) << "the label has become a notify relation too";
    scene.bell->ring();
    EXPECT_EQ(scene.weak->told, 4);

    scene.bell->rmObserver(*scene.weak);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u);
    scene.bell->ring();
    EXPECT_EQ(scene.weak->told, 4);
}

TEST(LingeringRelation, ObserverThatRemovesItselfIsToldOncePerWalk) {
    Scene scene;
    scene.strongDoes([&] {
        if (scene.strong->told == 0) scene.bell->rmObserver(*scene.strong);
        EXPECT_EQ(scene.bell->getNumPostObservers(), 3u);
        EXPECT_EQ(scene.bell->getPath(2).getActionToken(), tellAction);
    });
    scene.bell->ring();
    EXPECT_EQ(scene.strong->told, 1);
    EXPECT_EQ(scene.strong->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.middle->told, 1);
}

TEST(LingeringRelation, RemovalByIndexInAWalkIsDeferredToo) {
    Scene scene;
    std::uint16_t flags = 0;
    scene.strongDoes([&] {
        if (scene.strong->told > 0) return;
        scene.bell->removePath(0);
        flags = scene.bell->parEx()->flags;
    });
    scene.bell->ring();
    EXPECT_EQ(flags, Bell::ParamsEx::notifyEnabled | Bell::ParamsEx::postCleanupPending);
    EXPECT_EQ(scene.weak->told, 1);
    EXPECT_EQ(scene.weak->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 3u);
}

TEST(LingeringRelation, RemovalByContentInAWalkEnds) {
    Scene scene;
    bool wasThere = false;
    scene.strongDoes([&] {
        ObserverPath wanted(*relation(*scene.bell, *scene.middle));
        wasThere = scene.bell->removePath(wanted);
    });
    scene.bell->ring();
    EXPECT_TRUE(wasThere);
    EXPECT_EQ(scene.middle->getNumObservedByMe(), 0u);
}

TEST(LingeringRelation, PreObserverRemovedInAPreWalkStaysAsNotify) {
    const auto bell = std::make_shared<Bell>();
    const auto actor = std::make_shared<Actor>();
    const auto other = std::make_shared<Listener>();
    bell->addPreObserver(*actor, 2, askAction, false);
    bell->addPreObserver(*other, 1, askAction, false);
    actor->before = [&](Observable&, Actor::Initiator&) { bell->rmObserver(*other); };
    bell->askFirst();
    EXPECT_EQ(other->asked, 0);
    EXPECT_EQ(other->told, 1);
    EXPECT_FALSE(bell->hasFlag(Bell::ParamsEx::preCleanupPending));
}

TEST(LingeringRelation, LivingObserverThatLeavesInAWalkStaysAsNotify) {
    Scene scene;
    scene.strongDoes([&] { scene.weak->rmAllObservers(true); });
    scene.bell->ring();
    EXPECT_EQ(scene.weak->told, 1);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 3u);
}

TEST(LingeringRelation, ObserverOfALingeringRelationMayEndLater) {
    Scene scene;
    scene.strongDoes([&] { scene.bell->rmObserver(*scene.weak); });
    scene.bell->ring();
    ASSERT_EQ(scene.bell->getNumPostObservers(), 3u);
    scene.weak.reset();
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u);
    scene.strong->after = nullptr;
    scene.bell->ring();
    EXPECT_EQ(scene.middle->told, 2);
}

TEST(LingeringRelation, ObserverOfALingeringRelationMayEndInAnotherWalk) {
    Scene scene;
    scene.strongDoes([&] { scene.bell->removePath(0); });
    scene.bell->ring();
    scene.strongDoes([&] { scene.weak.reset(); });
    scene.bell->ring();
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u);
    EXPECT_EQ(scene.middle->told, 2);
}

TEST(LingeringRelation, ObservableOfALingeringRelationMayEndFirst) {
    Scene scene;
    scene.strongDoes([&] { scene.bell->rmObserver(*scene.weak); });
    scene.bell->ring();
    scene.strong->after = nullptr;
    scene.bell.reset();
    scene.weak.reset();
    EXPECT_EQ(scene.strong->told, 1);
}

TEST(LingeringRelation, LingeringRelationThatIsRemovedAgainTakesNoOthersEntry) {
    Scene scene;
    scene.bell->addPreObserver(*scene.weak, 1, askAction, false);
    scene.strongDoes([&] {
        if (scene.strong->told == 0) scene.bell->removePath(1);
    });
    scene.bell->ring();
    ASSERT_EQ(scene.weak->getNumObservedByMe(), 1u) << "of the pre-observer";
    scene.bell->removePath(1);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u);
    EXPECT_EQ(scene.weak->getNumObservedByMe(), 1u);
    EXPECT_TRUE(scene.bell->getPath(0).isActive());
}

TEST(LingeringRelation, FarewellInAWalkEndsIt) {
    Scene scene;
    scene.strongDoes([&] { scene.bell->rmAllObservers(true); });
    scene.bell->ring();
    EXPECT_TRUE(scene.bell->par()->empty());
    EXPECT_EQ(scene.middle->told, 0);
    EXPECT_EQ(scene.middle->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.bell->depth(), 0u);
}

// Relations that are added in the middle of a walk ----------------------------------------------

TEST(LingeringRelation, StrongerRelationAddedInAWalkIsNotReachedInIt) {
    Scene scene;
    const auto stronger = std::make_shared<Listener>();
    scene.strongDoes([&] { scene.bell->addObserver(*stronger, 9, tellAction, false); });
    scene.bell->ring();
    EXPECT_EQ(stronger->told, 0);
    EXPECT_EQ(scene.weak->told, 1);
    scene.bell->ring();
    EXPECT_EQ(stronger->told, 1);
}

TEST(LingeringRelation, WalkGoesOnOverAListThatGrowsALot) {
    Scene scene;
    std::vector<std::shared_ptr<Listener>> crowd;
    scene.strongDoes([&] {
        for (int i = 0; i < 100 && crowd.size() < 100; ++i) {
            crowd.push_back(std::make_shared<Listener>());
            scene.bell->addObserver(*crowd.back(), 50, tellAction, false);
        }
    });
    scene.bell->ring();
    EXPECT_EQ(scene.middle->told, 1);
    EXPECT_EQ(scene.weak->told, 1);
    EXPECT_EQ(crowd.front()->told, 0);
}

TEST(LingeringRelation, ListMayBeSortedInAWalk) {
    Scene scene;
    scene.bell->addObserver("nobody", 9, tellAction, false);
    scene.strongDoes([&] { scene.bell->updateObserverLists(true); });
    scene.bell->ring();
    EXPECT_EQ(scene.middle->told, 1);
    EXPECT_EQ(scene.weak->told, 1);
}
