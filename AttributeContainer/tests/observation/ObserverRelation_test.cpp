// The memory of a copying action, and the scopes that hold it.
#include <AttributeContainer/ExchangePtr.h>
#include <AttributeContainer/ObserverRelation.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/FreeAttribute.h"
#include "support/RelationScenes.h"

#include <gtest/gtest.h>

#include <thread>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Table = ObserverRelationTableObserver;

}  // namespace

// The table -------------------------------------------------------------------------------------

TEST(ObserverRelation, TableIsAnObserverWithAName) {
    const PreserveObserverRelation scope;
    EXPECT_EQ(scope.getTable()->getName(), "ObserverRelationTableObserver");
    EXPECT_EQ(scope.getTable()->getClassName(), "Observer");
    EXPECT_EQ(scope.getTable()->getNumObservedByMe(), 0u);
}

TEST(ObserverRelation, TableKnowsTheFirstCopyOfAnObserver) {
    const auto old = std::make_shared<Listener>();
    const auto copy = std::make_shared<Listener>();
    const auto second = std::make_shared<Listener>();
    Table table;
    EXPECT_FALSE(table.lookup(old.get()).has_value());

    table.insert(old.get(), copy.get());
    table.insert(old.get(), second.get());

    ASSERT_TRUE(table.lookup(old.get()).has_value());
    EXPECT_EQ(&table.lookup(old.get())->get(), copy.get());
    EXPECT_FALSE(table.lookup(copy.get()).has_value());
    EXPECT_EQ(table.size(), 1u);
    EXPECT_TRUE(table.isCopy(*copy));
    EXPECT_TRUE(table.isCopy(*second));
    EXPECT_FALSE(table.isCopy(*old));
    table.forget(*second);
    EXPECT_EQ(&table.lookup(old.get())->get(), copy.get());
}

TEST(ObserverRelation, TableKeepsAnObserverWithoutACopyAsItIs) {
    const auto old = std::make_shared<Listener>();
    const auto copy = std::make_shared<Listener>();
    Table table;
    table.insert(old.get(), nullptr);
    EXPECT_FALSE(table.lookup(old.get()).has_value());
    table.insert(old.get(), copy.get());
    EXPECT_FALSE(table.lookup(old.get()).has_value()) << "a key that is there is not overwritten";
}

TEST(ObserverRelation, TableForgetsAPairOfWhichOnePartGoes) {
    const auto a = std::make_shared<Listener>();
    const auto b = std::make_shared<Listener>();
    const auto copy = std::make_shared<Listener>();
    Table table;
    table.insert(a.get(), copy.get());
    table.insert(b.get(), copy.get());
    table.forget(*a);
    EXPECT_FALSE(table.lookup(a.get()).has_value());
    EXPECT_TRUE(table.lookup(b.get()).has_value());
    EXPECT_TRUE(table.isCopy(*copy));
    table.forget(*copy);
    EXPECT_EQ(table.size(), 0u);
    EXPECT_FALSE(table.isCopy(*copy));
    table.forget(*a);
}

// Scopes ----------------------------------------------------------------------------------------

TEST(ObserverRelation, ScopesOfAThreadShareOneTable) {
    const PreserveObserverRelation outer;
    const PreserveObserverRelation inner;
    const BlockUpdateObservers block(nullptr);
    EXPECT_EQ(inner.getTable(), outer.getTable());
    EXPECT_EQ(block.getTable(), outer.getTable());
    std::shared_ptr<Table> elsewhere;
    std::thread([&] { elsewhere = PreserveObserverRelation().getTable(); }).join();
    EXPECT_NE(elsewhere, outer.getTable());
}

TEST(ObserverRelation, TableLivesAsLongAsAScopeAndEndsEmpty) {
    const auto old = std::make_shared<Listener>();
    const auto copy = std::make_shared<Listener>();
    std::shared_ptr<Table> held;
    std::weak_ptr<Table> watched;
    {
        const PreserveObserverRelation outer;
        {
            const PreserveObserverRelation inner;
            inner.getTable()->insert(old.get(), copy.get());
        }
        EXPECT_EQ(outer.getTable()->size(), 1u) << "the outer scope still holds it";
        held = outer.getTable();
        watched = held;
    }
    EXPECT_EQ(held->size(), 0u);
    EXPECT_FALSE(held->isCopy(*copy));
    held.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(PreserveObserverRelation().getTable()->size(), 0u);
}

TEST(ObserverRelation, ScopeNamesTheContainerThatIsUpdatedAtItsEnd) {
    const auto container = AttrContainer::create();
    BlockUpdateObservers scope(nullptr);
    EXPECT_EQ(scope.getToBeUpdated(), nullptr);
    scope.setToBeUpdated(container);
    EXPECT_EQ(scope.getToBeUpdated(), container);
}

TEST(ObserverRelation, ScopeUpdatesTheContainerThatItNamesLast) {
    const auto listener = std::make_shared<Listener>();
    const auto first = AttrContainer::create();
    const auto last = AttrContainer::create();
    addPending(first->Attr_Name(), *listener);
    addPending(last->Attr_Name(), *listener);
    {
        BlockUpdateObservers scope(first);
        scope.setToBeUpdated(last);
    }
    EXPECT_EQ(listener->getNumObservedByMe(), 1u);
    EXPECT_NE(listener->lookupObservedByMe(last->Attr_Name()), notFound);
}

TEST(ObserverRelation, OnlyTheOutermostScopeUpdates) {
    const auto listener = std::make_shared<Listener>();
    const auto outerContainer = AttrContainer::create();
    const auto innerContainer = AttrContainer::create();
    addPending(outerContainer->Attr_Name(), *listener);
    addPending(innerContainer->Attr_Name(), *listener);
    {
        const BlockUpdateObservers outer(outerContainer);
        { const BlockUpdateObservers inner(innerContainer); }
        EXPECT_EQ(listener->getNumObservedByMe(), 0u);
    }
    EXPECT_EQ(listener->getNumObservedByMe(), 1u);
    EXPECT_NE(listener->lookupObservedByMe(outerContainer->Attr_Name()), notFound);
}

// Recording -------------------------------------------------------------------------------------

TEST(ObserverRelation, ObserverIsRecordedWithItsCopy) {
    const auto bell = std::make_shared<Bell>();
    const auto old = std::make_shared<Listener>();
    const auto copy = std::make_shared<Listener>();
    bell->addObserver(*old, 1, tellAction, false);
    const PreserveObserverRelation scope;
    EXPECT_EQ(copy->copyFrom(*old), 1);
    ASSERT_TRUE(scope.getTable()->lookup(old.get()).has_value());
    EXPECT_EQ(&scope.getTable()->lookup(old.get())->get(), copy.get());
}

TEST(ObserverRelation, ObserverThatWatchesNothingIsNotRecorded) {
    const auto old = std::make_shared<Listener>();
    const auto copy = std::make_shared<Listener>();
    const PreserveObserverRelation scope;
    EXPECT_EQ(copy->copyFrom(*old), 1);
    EXPECT_EQ(scope.getTable()->size(), 0u);
}

TEST(ObserverRelation, PairEndsWithEitherOfItsParts) {
    const auto bell = std::make_shared<Bell>();
    auto old = std::make_shared<Listener>();
    auto copy = std::make_shared<Listener>();
    bell->addObserver(*old, 1, tellAction, false);
    const PreserveObserverRelation scope;
    copy->copyFrom(*old);
    copy.reset();
    EXPECT_FALSE(scope.getTable()->lookup(old.get()).has_value());
    copy = std::make_shared<Listener>();
    copy->copyFrom(*old);
    EXPECT_EQ(scope.getTable()->size(), 1u);
    old.reset();
    EXPECT_EQ(scope.getTable()->size(), 0u);
}

// Swapping --------------------------------------------------------------------------------------

TEST(ObserverRelation, SwapsAPendingRelationToTheCopyOfItsObserver) {
    const auto number = attributeOf<int>(1);
    const auto old = std::make_shared<Listener>();
    const auto copy = std::make_shared<Listener>();
    addPending(*number, *old);
    Table table;
    table.insert(old.get(), copy.get());
    ExchangePtr visitor(table);

    EXPECT_EQ(visitor.visit(*number), VisitorCore::Continue);

    EXPECT_EQ(visitor.getNumExchanged(), 1u);
    EXPECT_EQ(targetOf(*number), copy.get());
    EXPECT_TRUE(number->getPath(0).isActive());
    EXPECT_EQ(copy->getNumObservedByMe(), 1u);
    EXPECT_EQ(old->getNumObservedByMe(), 0u);
    visitor.visit(*number);
    EXPECT_EQ(visitor.getNumExchanged(), 1u);
}

TEST(ObserverRelation, LeavesActiveTextualAndUnknownRelationsAlone) {
    const auto number = attributeOf<int>(1);
    const auto active = std::make_shared<Listener>();
    const auto unknown = std::make_shared<Listener>();
    const auto copy = std::make_shared<Listener>();
    number->addObserver(*active, 1, linkAction, false);
    number->addObserver("nobody", 1, tellAction, false);
    addPending(*number, *unknown);
    Table table;
    table.insert(active.get(), copy.get());
    ExchangePtr visitor(table);
    EXPECT_EQ(visitor.getFirstLevel(), 0u);
    EXPECT_EQ(visitor.getMaxLevel(), ~0u);

    visitor.visit(*number);

    EXPECT_EQ(visitor.getNumExchanged(), 0u);
    EXPECT_EQ(copy->getNumObservedByMe(), 0u);
    EXPECT_EQ(unknown->getNumObservedByMe(), 0u);
}

TEST(ObserverRelation, PutsWhatItDoesNotSwapInForceToo) {
    const auto number = attributeOf<int>(1);
    const auto outside = std::make_shared<Listener>();
    addPending(*number, *outside);
    Table table;
    UpdateObserver visitor(table);
    visitor.visit(*number);
    EXPECT_EQ(visitor.getNumExchanged(), 0u);
    EXPECT_EQ(outside->getNumObservedByMe(), 1u);
    EXPECT_TRUE(number->getPath(0).isActive());
}
