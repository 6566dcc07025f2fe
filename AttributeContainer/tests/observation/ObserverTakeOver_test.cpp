// How one observer takes part in what another one watches.
#include <AttributeContainer/Observer.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Three bells that belong to somebody else, an observer of theirs, and a newcomer.
struct Scene {
    std::shared_ptr<Listener> somebody = std::make_shared<Listener>("somebody");
    std::shared_ptr<Listener> former = std::make_shared<Listener>("former");
    std::shared_ptr<Listener> newcomer = std::make_shared<Listener>("newcomer");
    std::vector<std::shared_ptr<Bell>> bells;

    Scene() {
        for (int i = 0; i < 3; ++i) {
            bells.push_back(std::make_shared<Bell>());
            bells.back()->object = *somebody;
        }
    }

    Observer* targetOf(std::size_t bell, std::uint64_t index) const {
        return &bells[bell]->getPath(index).getObserver().value().get();
    }
};

}  // namespace

// Copying ---------------------------------------------------------------------------------------

TEST(ObserverTakeOver, CopiesEveryRelationOfTheOther) {
    Scene scene;
    scene.bells[0]->addPreObserver(*scene.former, 7, askAction, true);
    scene.bells[1]->addObserver(*scene.former, -2, linkAction, false);

    EXPECT_EQ(scene.newcomer->copyObservationsFrom(*scene.former), 2u);

    EXPECT_EQ(scene.former->getNumObservedByMe(), 2u);
    EXPECT_EQ(scene.newcomer->getNumObservedByMe(), 2u);
    ASSERT_EQ(scene.bells[0]->getNumPreObservers(), 2u);
    const ObserverPath& pre = scene.bells[0]->getPath(1);
    EXPECT_EQ(&pre.getObserver()->get(), scene.newcomer.get());
    EXPECT_EQ(pre.getPriority(), 7);
    EXPECT_EQ(pre.getActionToken(), askAction);
    EXPECT_TRUE(pre.isTemporary());
    ASSERT_EQ(scene.bells[1]->getNumPostObservers(), 2u);
    EXPECT_EQ(scene.bells[1]->getPath(1).getPriority(), -2);
    EXPECT_FALSE(scene.bells[1]->getPath(1).isTemporary());
}

TEST(ObserverTakeOver, CopiesOnlyTheRelationsOfTheOther) {
    Scene scene;
    scene.bells[0]->addObserver(*scene.somebody, 1, tellAction, false);
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    EXPECT_EQ(scene.newcomer->copyObservationsFrom(*scene.former), 1u);
    EXPECT_EQ(scene.bells[0]->getNumPostObservers(), 3u);
}

TEST(ObserverTakeOver, CountsAnObservableOncePerEntryOfTheOther) {
    Scene scene;
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    scene.bells[0]->addPreObserver(*scene.former, 1, askAction, false);
    EXPECT_EQ(scene.newcomer->copyObservationsFrom(*scene.former), 4u);
    EXPECT_EQ(scene.newcomer->getNumObservedByMe(), 2u) << "equal relations are added once";
}

TEST(ObserverTakeOver, LeavesTheOthersOwnPartsAlone) {
    Scene scene;
    scene.bells[0]->object = *scene.former;
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    EXPECT_EQ(scene.newcomer->copyObservationsFrom(*scene.former), 0u);
    EXPECT_EQ(scene.newcomer->takeOverObservationsFrom(*scene.former), 0u);
    EXPECT_EQ(scene.former->getNumObservedByMe(), 1u);
}

TEST(ObserverTakeOver, CannotCopyWhereAnObservableStandsForNobody) {
    Scene scene;
    scene.bells[0]->object.reset();
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    EXPECT_THROW(scene.newcomer->copyObservationsFrom(*scene.former), std::bad_optional_access);
}

TEST(ObserverTakeOver, CannotCopyWhereARelationIsNotActive) {
    Scene scene;
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    scene.bells[0]->addObserver("nobody", 1, tellAction, false);
    EXPECT_THROW(scene.newcomer->copyObservationsFrom(*scene.former), std::bad_optional_access);
}

TEST(ObserverTakeOver, PassesObservablesThatHaveGone) {
    Scene scene;
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    scene.bells[1]->addObserver(*scene.former, 1, tellAction, false);
    scene.bells[1].reset();
    EXPECT_EQ(scene.newcomer->copyObservationsFrom(*scene.former), 1u);
    EXPECT_EQ(scene.newcomer->takeOverObservationsFrom(*scene.former), 1u);
}

TEST(ObserverTakeOver, PassesRelationsWhoseObserverHasGone) {
    Scene scene;
    auto brief = std::make_shared<Listener>();
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    scene.bells[0]->informAddPostObservedBy(
        std::make_unique<ObserverPath>(
            ObserverPath::Owner{}, ObserverPath::OptionalObserver{*brief}, short{1}, tellAction),
        true);
    brief.reset();
    EXPECT_EQ(scene.newcomer->copyObservationsFrom(*scene.former), 1u);
}

TEST(ObserverTakeOver, CopiesNothingToItself) {
    Scene scene;
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    EXPECT_EQ(scene.former->copyObservationsFrom(*scene.former), 1u);
    EXPECT_EQ(scene.former->takeOverObservationsFrom(*scene.former), 0u);
    EXPECT_EQ(scene.former->getNumObservedByMe(), 1u);
}

// Moving ----------------------------------------------------------------------------------------

TEST(ObserverTakeOver, MovesEveryRelationOfTheOther) {
    Scene scene;
    scene.bells[0]->addPreObserver(*scene.former, 7, askAction, true);
    scene.bells[1]->addObserver(*scene.former, 3, linkAction, false);

    EXPECT_EQ(scene.newcomer->takeOverObservationsFrom(*scene.former), 2u);

    EXPECT_EQ(scene.former->getNumObservedByMe(), 0u);
    EXPECT_EQ(scene.newcomer->getNumObservedByMe(), 2u);
    EXPECT_EQ(scene.targetOf(0, 0), scene.newcomer.get());
    EXPECT_EQ(scene.bells[0]->getPath(0).getPriority(), 7);
    EXPECT_TRUE(scene.bells[0]->getPath(0).isTemporary());
    EXPECT_EQ(scene.targetOf(1, 0), scene.newcomer.get());
    EXPECT_EQ(scene.bells[1]->getPath(0).getActionToken(), linkAction);
}

TEST(ObserverTakeOver, MovesSeveralRelationsOfOneObservable) {
    // The order in which the other remembers its observables is what the walk has to cope with.
    const std::vector<std::vector<std::size_t>> orders{
        {0, 0, 1}, {0, 1, 0}, {1, 0, 0}, {0, 1, 2, 0}, {1, 0, 2, 0}, {0, 1, 0, 2, 0, 1}};
    for (const auto& order : orders) {
        Scene scene;
        std::uint64_t action = 0;
        for (const std::size_t bell : order)
            scene.bells[bell]->addObserver(*scene.former, 1, action++, false);

        EXPECT_EQ(scene.newcomer->takeOverObservationsFrom(*scene.former), order.size());

        EXPECT_EQ(scene.former->getNumObservedByMe(), 0u);
        EXPECT_EQ(scene.newcomer->getNumObservedByMe(), order.size());
        for (std::size_t bell = 0; bell < 3; ++bell)
            for (std::uint64_t i = 0; i < scene.bells[bell]->getNumPostObservers(); ++i)
                EXPECT_EQ(scene.targetOf(bell, i), scene.newcomer.get());
    }
}

TEST(ObserverTakeOver, MovesOnlyTheRelationsOfTheOther) {
    Scene scene;
    scene.bells[0]->addObserver(*scene.somebody, 1, tellAction, false);
    scene.bells[0]->addObserver("nobody", 1, tellAction, false);
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    EXPECT_EQ(scene.newcomer->takeOverObservationsFrom(*scene.former), 1u);
    EXPECT_EQ(scene.somebody->getNumObservedByMe(), 1u);
    EXPECT_FALSE(scene.bells[0]->getPath(0).isResolved());
}

TEST(ObserverTakeOver, MovesFromAnObservableThatStandsForNobody) {
    Scene scene;
    scene.bells[0]->object.reset();
    scene.bells[0]->addObserver(*scene.former, 1, tellAction, false);
    EXPECT_EQ(scene.newcomer->takeOverObservationsFrom(*scene.former), 1u);
    scene.bells[0]->ring();
    EXPECT_EQ(scene.newcomer->told, 1);
    EXPECT_EQ(scene.former->told, 0);
}
