// Duplicates of containers, and who watches them.
#include <AttributeContainer/Object.h>
#include <AttributeContainer/ObserverRelation.h>

#include "support/Containers.h"
#include "support/RelationScenes.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// A container with an attribute "Gain" and a field "watcher" that watches it.
struct Watched {
    std::shared_ptr<AttrContainer> holder = AttrContainer::create();
    std::shared_ptr<Attr<double>> gain = addCustom<double>(*holder, "Gain", 1.0);
    std::shared_ptr<Placed> watcher = addNamedField<Placed>(*holder, "watcher");

    Watched() {
        watcher->path = "/watcher";
        gain->addObserver(*watcher, 1, tellAction, false);
    }
};

std::shared_ptr<Attribute> gainOf(AttrContainer& holder) {
    return holder.getAttribute("Gain").lock();
}

// A copy of an object and of all below it; the copies come behind those that are in the list.
std::shared_ptr<Object> copyBelow(const Object& source,
                                  std::vector<std::shared_ptr<Object>>& copies) {
    const auto copy = std::static_pointer_cast<Object>(source.duplicate(CreateDeep));
    copies.push_back(copy);
    for (const auto& child : source.getChildren())
        copy->addChild(copyBelow(*child, copies), AddFlags::SkipNameTest);
    return copy;
}

}  // namespace

TEST(ObserverRelationCopies, CopyOfAnAttributeIsWatchedByTheCopyOfItsObserver) {
    Watched watched;

    const auto copy = watched.holder->duplicate(CreateDeep);

    const auto gain = gainOf(*copy);
    const auto watcher = copy->getField("watcher").lock();
    ASSERT_NE(gain, nullptr);
    ASSERT_NE(watcher, nullptr);
    ASSERT_EQ(gain->getNumPostObservers(), 1u);
    EXPECT_EQ(targetOf(*gain), watcher.get());
    EXPECT_NE(watcher.get(), watched.watcher.get());
    EXPECT_TRUE(gain->getPath(0).isActive());
    EXPECT_NE(watcher->lookupObservedByMe(*gain), notFound);
    EXPECT_EQ(watched.watcher->lookupObservedByMe(*gain), notFound);
    EXPECT_EQ(targetOf(*watched.gain), watched.watcher.get());
}

TEST(ObserverRelationCopies, CopyOfAnAttributeIsWatchedByTheSameOutsideObserver) {
    Watched watched;
    const auto outside = listenerAt("/outside");
    watched.gain->addObserver(*outside, 5, tellAction, false);

    const auto copy = watched.holder->duplicate(CreateDeep);
    std::static_pointer_cast<Attr<double>>(gainOf(*copy))->set(2.0);

    EXPECT_EQ(outside->told, 1);
    EXPECT_EQ(outside->getNumObservedByMe(), 2u);
}

TEST(ObserverRelationCopies, AttributesOfCopiedFieldsAreUpdatedToo) {
    Watched watched;
    const auto root = AttrContainer::create();
    ASSERT_TRUE(root->addField(watched.holder, "holder", 0));

    const auto copy = root->duplicate(CreateDeep);

    const auto holder = copy->getField("holder").lock();
    ASSERT_NE(holder, nullptr);
    EXPECT_EQ(targetOf(*gainOf(*holder)), holder->getField("watcher").lock().get());
    EXPECT_TRUE(gainOf(*holder)->getPath(0).isActive());
}

TEST(ObserverRelationCopies, EveryCopyOfAFieldThatStandsInTwoPlacesIsUpdated) {
    Watched watched;
    const auto outside = listenerAt("/outside");
    watched.gain->addObserver(*outside, 5, tellAction, false);
    const auto root = AttrContainer::create();
    ASSERT_TRUE(root->addField(watched.holder, "left", 0));
    ASSERT_TRUE(root->addField(watched.holder, "right", 0));

    const auto copy = root->duplicate(CreateDeep);

    for (const char* const side : {"left", "right"}) {
        const auto gain = gainOf(*copy->getField(side).lock());
        gain->touch(nullptr, nullptr);
    }
    EXPECT_EQ(outside->told, 2);
}

TEST(ObserverRelationCopies, FieldsThatAreSharedStayAsTheyAre) {
    Watched watched;
    const auto root = AttrContainer::create();
    ASSERT_TRUE(root->addField(watched.holder, "holder", 0));
    const auto listener = std::make_shared<Listener>();
    addPending(watched.holder->Attr_Name(), *listener);

    const auto copy = root->duplicate(CreateShareFields);

    ASSERT_EQ(copy->getField("holder").lock(), watched.holder);
    EXPECT_EQ(targetOf(*watched.gain), watched.watcher.get());
    EXPECT_EQ(listener->getNumObservedByMe(), 0u);
}

TEST(ObserverRelationCopies, ADuplicateInsideAnotherIsSwappedAtTheEndOfTheOutermost) {
    Watched watched;
    std::shared_ptr<AttrContainer> copy;
    {
        BlockUpdateObservers scope(nullptr);
        copy = watched.holder->duplicate(CreateDeep);
        EXPECT_FALSE(gainOf(*copy)->getPath(0).isActive());
        EXPECT_EQ(targetOf(*gainOf(*copy)), watched.watcher.get());
        scope.setToBeUpdated(copy);
    }
    EXPECT_TRUE(gainOf(*copy)->getPath(0).isActive());
    EXPECT_EQ(targetOf(*gainOf(*copy)), copy->getField("watcher").lock().get());
}

TEST(ObserverRelationCopies, RelationsOfTheNameGuardStayWithEachContainer) {
    const auto container = AttrContainer::create();
    const auto copy = container->duplicate(CreateDeep);
    EXPECT_EQ(container->Attr_Name().getNumPreObservers(), 1u);
    ASSERT_EQ(copy->Attr_Name().getNumPreObservers(), 1u);
    EXPECT_EQ(targetOf(copy->Attr_Name()), copy.get());
    EXPECT_EQ(container->getNumObservedByMe(), 1u);
}

TEST(ObserverRelationCopies, ACopyWhoseObserverWentMeanwhileHasNothingToSwap) {
    Watched watched;
    std::shared_ptr<AttrContainer> copy;
    {
        BlockUpdateObservers scope(nullptr);
        copy = watched.holder->duplicate(CreateDeep);
        scope.setToBeUpdated(copy);
        copy->rmField("watcher");
        watched.holder->rmField("watcher");
        watched.watcher.reset();
    }
    EXPECT_FALSE(gainOf(*copy)->getPath(0).isActive());
    gainOf(*copy)->touch(nullptr, nullptr);
}

// Hosts that copy children too ------------------------------------------------------------------

TEST(ObserverRelationCopies, ATreeThatAHostCopiesInOneScopeWatchesItself) {
    const auto root = named("root");
    const auto early = addNamed(*root, "early");
    const auto late = addNamed(*addNamed(*root, "branch"), "late");
    const auto outside = listenerAt("/outside");
    const auto gain = addCustom<double>(*early, "Gain", 1.0);
    const auto tone = addCustom<double>(*late, "Tone", 1.0);
    gain->addObserver(*late, 1, tellAction, false);
    gain->addPreObserver(*root, 2, askAction, false);
    tone->addObserver(*early, 1, tellAction, false);
    tone->addObserver(*outside, 3, tellAction, false);

    std::vector<std::shared_ptr<Object>> copies;
    {
        const BlockUpdateObservers scope(nullptr);
        copyBelow(*root, copies);
        for (const auto& copy : copies) copy->updateObservers(*scope.getTable());
    }

    ASSERT_EQ(copies.size(), 4u);  // root, early, branch, late
    const auto gainCopy = gainOf(*copies[1]);
    EXPECT_EQ(targetOf(*gainCopy, 0), copies[0].get());
    EXPECT_EQ(targetOf(*gainCopy, 1), copies[3].get());
    const auto toneCopy = copies[3]->getAttribute("Tone").lock();
    EXPECT_EQ(targetOf(*toneCopy, 0), copies[1].get());
    EXPECT_EQ(targetOf(*toneCopy, 1), outside.get());
    for (const auto& attribute : {gainCopy, toneCopy}) {
        EXPECT_TRUE(attribute->getPath(0).isActive());
        EXPECT_TRUE(attribute->getPath(1).isActive());
    }
    toneCopy->touch(nullptr, nullptr);
    EXPECT_EQ(outside->told, 1);
    EXPECT_EQ(outside->getNumObservedByMe(), 2u);
    EXPECT_EQ(late->lookupObservedByMe(*gainCopy), notFound) << "the originals hear of no copy";
}

TEST(ObserverRelationCopies, ATreeThatAHostCopiesWithoutAScopeIsWatchedByTheOriginals) {
    const auto root = named("root");
    const auto early = addNamed(*root, "early");
    const auto late = addNamed(*root, "late");
    addCustom<double>(*early, "Gain", 1.0)->addObserver(*late, 1, tellAction, false);

    std::vector<std::shared_ptr<Object>> copies;
    copyBelow(*root, copies);

    EXPECT_EQ(targetOf(*gainOf(*copies[1])), late.get());
}
