#include <AttributeContainer/ObserverList.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Owner = ObserverPath::Owner;
using Target = ObserverPath::OptionalObserver;
using Text = std::optional<const std::string>;
using Priorities = std::vector<short>;

std::unique_ptr<ObserverPath> byText(const std::string& text, short priority = 1,
                                     std::uint64_t action = tellAction) {
    return std::make_unique<ObserverPath>(Owner{}, Text{text}, priority, action);
}

std::unique_ptr<ObserverPath> liveTo(Observer& observer, short priority,
                                     std::uint64_t action = tellAction) {
    return std::make_unique<ObserverPath>(Owner{}, Target{observer}, priority, action);
}

// A list with one text for each priority, in that order.
ObserverList listOf(const Priorities& priorities) {
    ObserverList list;
    for (const short priority : priorities)
        list.add(byText("p" + std::to_string(priority), priority));
    return list;
}

}  // namespace

TEST(ObserverList, StartsEmpty) {
    const ObserverList list;
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0u);
}

TEST(ObserverList, FailsPastItsEnd) {
    ObserverList list = listOf({1});
    const ObserverList& constList = list;
    try {
        list.get(1);
        FAIL() << "nothing was thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
    EXPECT_THROW(constList.get(notFound), std::out_of_range);
}

TEST(ObserverList, AppendsAndGivesTheAddress) {
    ObserverList list;
    ObserverPath* const first = list.add(byText("a", 9));
    ObserverPath* const second = list.add(byText("b", 1));
    EXPECT_EQ(&list.get(0), first);
    EXPECT_EQ(&list.get(1), second);
}

TEST(ObserverList, KeepsAddressesWhileItGrowsAndIsSorted) {
    ObserverList list;
    ObserverPath* const first = list.add(byText("first", 50));
    for (short i = 0; i < 100; ++i) list.add(byText("p" + std::to_string(i), i));
    list.sort();
    EXPECT_EQ(first->getPath(), "first");
    EXPECT_EQ(list.lookup(*first) / 2, 25u) << "at 50 or 51, with one other of its priority";
}

TEST(ObserverList, InsertsBehindAnIndex) {
    ObserverList list = listOf({1, 2, 3});
    ObserverPath* const added = list.addAfter(0, byText("a", 7));
    EXPECT_EQ(added, &list.get(1));
    EXPECT_EQ(prioritiesOf(list), (Priorities{1, 7, 2, 3}));
}

TEST(ObserverList, InsertsInFrontBehindAllOnes) {
    ObserverList list = listOf({1, 2});
    ObserverPath* const added = list.addAfter(notFound, byText("a", 7));
    EXPECT_EQ(added, &list.get(0));
    EXPECT_EQ(prioritiesOf(list), (Priorities{7, 1, 2}));
    ObserverList empty;
    empty.addAfter(notFound, byText("a", 7));
    EXPECT_EQ(empty.size(), 1u);
}

TEST(ObserverList, AppendsBehindAnIndexAtOrPastTheEnd) {
    ObserverList list = listOf({1, 2});
    list.addAfter(1, byText("a", 7));
    list.addAfter(99, byText("b", 8));
    list.addAfter(notFound - 1, byText("c", 9));
    EXPECT_EQ(prioritiesOf(list), (Priorities{1, 2, 7, 8, 9}));
}

TEST(ObserverList, TakesNoEmptyPointer) {
    ObserverList list = listOf({1});
    EXPECT_EQ(list.add(nullptr), nullptr);
    EXPECT_EQ(list.addAfter(0, nullptr), nullptr);
    EXPECT_EQ(list.size(), 1u);
}

TEST(ObserverList, DropsRelationsWithoutAnActionWhenCompressed) {
    ObserverList list = listOf({1, 2, 3, 4});
    list.get(1).setAction(noAction);
    list.get(3).setAction("no such action");
    list.compress(false);
    EXPECT_EQ(prioritiesOf(list), (Priorities{1, 3}));
    list.compress(true);
    EXPECT_EQ(list.size(), 2u);
}

TEST(ObserverList, DropsRelationsWhoseObserverHasGoneWhenCompressed) {
    auto listener = std::make_shared<Listener>();
    ObserverList list = listOf({1});
    list.add(liveTo(*listener, 2));
    list.compress(true);
    EXPECT_EQ(list.size(), 2u);
    listener.reset();
    list.compress(true);
    EXPECT_EQ(prioritiesOf(list), Priorities{1});
}

TEST(ObserverList, FindsTheLastOfEqualRelations) {
    ObserverList list;
    list.add(byText("a", 1));
    list.add(byText("b", 2));
    list.add(byText("a", 3));
    list.add(byText("c", 4));
    EXPECT_EQ(list.lookup(*byText("a", 99)), 2u);
    EXPECT_EQ(list.lookup(*byText("b")), 1u);
    EXPECT_EQ(list.lookup(*byText("a", 1, askAction)), notFound);
    EXPECT_EQ(ObserverList().lookup(*byText("a")), notFound);
}

TEST(ObserverList, FindsByContentWhatItFindsAtAll) {
    ObserverList list = listOf({1, 2});
    const auto wanted = byText("p1", 9);
    const auto unknown = byText("p3");
    EXPECT_EQ(list.lookupContent(*wanted), 0u);
    EXPECT_EQ(list.lookupContent(*unknown), notFound);
}

TEST(ObserverList, TakesARelationOut) {
    ObserverList list = listOf({1, 2, 3});
    ObserverPath* const wanted = &list.get(1);

    const auto removed = list.remove(1, 0);

    EXPECT_EQ(removed.get(), wanted);
    EXPECT_EQ(prioritiesOf(list), (Priorities{1, 3}));
}

TEST(ObserverList, LeavesARelationInPlaceAsNotifyWhileANotificationRuns) {
    ObserverList list;
    list.add(byText("a", 1, linkAction));

    EXPECT_EQ(list.remove(0, 1), nullptr);

    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list.get(0).getActionToken(), 0u);
    list.compress(true);
    EXPECT_EQ(list.size(), 1u) << "it has an action";
}

TEST(ObserverList, GivesNothingForAnIndexPastItsEnd) {
    ObserverList list = listOf({1});
    EXPECT_EQ(list.remove(1, 0), nullptr);
    EXPECT_EQ(list.remove(notFound, 0), nullptr);
    EXPECT_EQ(list.size(), 1u);
    EXPECT_THROW(list.remove(1, 1), std::out_of_range);
}

TEST(ObserverList, AnswersFalseAndKeepsAnElementThatItIsToRemove) {
    ObserverList list = listOf({1, 2});
    EXPECT_FALSE(list.removeElement(*byText("p2"), 0));
    EXPECT_FALSE(list.removeElement(*byText("p2"), 1));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.get(1).getActionToken(), tellAction);
}

TEST(ObserverList, AnswersTrueForAnElementThatIsNotThere) {
    ObserverList list = listOf({1, 2});
    EXPECT_TRUE(list.removeElement(*byText("p3"), 0));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_THROW(list.removeElement(*byText("p3"), 1), std::out_of_range);
}

TEST(ObserverList, SortsTheWeakestToTheFront) {
    ObserverList list = listOf({5, -3, 100, 0});
    list.sort();
    EXPECT_EQ(prioritiesOf(list), (Priorities{-3, 0, 5, 100}));
}

TEST(ObserverList, SortsLiveRelationsBehindAllOthers) {
    const auto one = std::make_shared<Listener>();
    const auto other = std::make_shared<Listener>();
    ObserverList list;
    list.add(liveTo(*one, 3));
    list.add(byText("a", 100));
    list.add(liveTo(*other, -5));
    list.add(byText("b", -9));
    list.sort();
    EXPECT_EQ(prioritiesOf(list), (Priorities{-9, 100, -5, 3}));
}

TEST(ObserverList, SortsNothingWhenItIsEmpty) {
    ObserverList list;
    list.sort();
    EXPECT_TRUE(list.empty());
}

TEST(ObserverList, PutsANewRelationBehindThoseOfEqualPriority) {
    const ObserverList list = listOf({1, 5, 5, 9});
    EXPECT_EQ(list.findInsertionPoint(*byText("a", 5)), 2u);
    EXPECT_EQ(list.findInsertionPoint(*byText("a", 10)), 3u);
    EXPECT_EQ(list.findInsertionPoint(*byText("a", 0)), notFound);
    EXPECT_EQ(ObserverList().findInsertionPoint(*byText("a", 5)), notFound);
}

TEST(ObserverList, PutsALiveRelationBehindAllTexts) {
    const auto listener = std::make_shared<Listener>();
    const ObserverList texts = listOf({1, 100});
    EXPECT_EQ(texts.findInsertionPoint(*liveTo(*listener, -5)), 1u);
}

TEST(ObserverList, PutsATextInFrontOfAllLiveRelations) {
    const auto listener = std::make_shared<Listener>();
    ObserverList list = listOf({1});
    list.add(liveTo(*listener, -5));
    EXPECT_EQ(list.findInsertionPoint(*byText("a", 100)), 0u);
}

TEST(ObserverList, DoesNotOrderByRelationsWhoseObserverHasGone) {
    const auto weak = std::make_shared<Listener>();
    const auto strong = std::make_shared<Listener>();
    auto gone = std::make_shared<Listener>();
    ObserverList list;
    list.add(liveTo(*weak, 5));
    list.add(liveTo(*gone, 10));
    list.add(liveTo(*strong, 20));
    gone.reset();
    const auto newcomer = std::make_shared<Listener>();
    EXPECT_EQ(list.findInsertionPoint(*liveTo(*newcomer, 3)), notFound);
    EXPECT_EQ(list.findInsertionPoint(*liveTo(*newcomer, 7)), 0u);
}
