#include <AttributeContainer/AttrCopyVisitor.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr unsigned allLevels = std::numeric_limits<unsigned>::max();

// A chain of three levels, each with "Gain" of a value.
std::shared_ptr<AttrContainer> makeChain(int gain) {
    const auto root = AttrContainer::create();
    addCustom(*root, "Gain", gain);
    const auto middle = addNamedField(*root, "Middle");
    addCustom(*middle, "Gain", gain);
    addCustom(*addNamedField(*middle, "Bottom"), "Gain", gain);
    return root;
}

int gainOf(AttrContainer& container) {
    return dynamic_cast<Attr<int>&>(*container.getAttribute("Gain").lock()).get();
}
std::vector<int> gainsOf(AttrContainer& root) {
    const auto middle = root.getField("Middle").lock();
    return {gainOf(root), gainOf(*middle), gainOf(*middle->getField("Bottom").lock())};
}
using Gains = std::vector<int>;

VisitorCore::VisitResult copyInto(AttrContainer& source, AttrContainer& target,
                                  unsigned maxLevel = allLevels) {
    AttrCopyVisitor visitor(target, maxLevel);
    return source.attributeVisitor(visitor, true);
}

}  // namespace

TEST(AttrCopyVisitor, BeginsAtTheTopAndCopiesAllWhetherMarkedOrNot) {
    const auto target = AttrContainer::create();
    const AttrCopyVisitor visitor(*target, 7);
    EXPECT_EQ(visitor.getFirstLevel(), 0u);
    EXPECT_EQ(visitor.getMaxLevel(), 7u);
    EXPECT_EQ(visitor.getHierLevel(), 0u);
    EXPECT_FALSE(visitor.getConsiderAuxiliaryOnly());
}

TEST(AttrCopyVisitor, CopiesTheValuesOfATreeIntoAnother) {
    const auto target = makeChain(1);
    EXPECT_EQ(copyInto(*makeChain(2), *target), VisitorCore::Continue);
    EXPECT_EQ(gainsOf(*target), (Gains{2, 2, 2}));
}

TEST(AttrCopyVisitor, CopiesNoFurtherDownThanItsLastLevel) {
    const auto target = makeChain(1);
    copyInto(*makeChain(2), *target, 1);
    EXPECT_EQ(gainsOf(*target), (Gains{2, 2, 1}));
}

TEST(AttrCopyVisitor, ReachesOnlyTheStartWithLevelZero) {
    const auto target = makeChain(1);
    copyInto(*makeChain(2), *target, 0);
    EXPECT_EQ(gainsOf(*target), (Gains{2, 1, 1}));
}

TEST(AttrCopyVisitor, CopiesOnlyWhatIsMarkedWhenAskedTo) {
    const auto source = makeChain(2);
    const auto target = makeChain(1);
    AttrCopyVisitor visitor(*target, allLevels);
    visitor.setConsiderAuxiliaryOnly(true);
    EXPECT_TRUE(visitor.getConsiderAuxiliaryOnly());
    source->attributeVisitor(visitor, true);
    EXPECT_EQ(gainsOf(*target), (Gains{1, 1, 1}));

    source->getField("Middle").lock()->getAttribute("Gain").lock()->setMarked(true);
    source->attributeVisitor(visitor, true);
    EXPECT_EQ(gainsOf(*target), (Gains{1, 2, 1}));
}

TEST(AttrCopyVisitor, LeavesTheSubtreeOfAMissingFieldOutAndCopiesItsSiblings) {
    const auto source = LongPole::create();
    const auto target = LongPole::create();
    source->Mark().lock()->Height(3);
    source->Top().lock()->Height(4);
    addCustom(*addNamedField(*source->Top().lock(), "Lamp"), "Gain", 1);
    source->Bottom().lock()->Height(5);
    target->setField(Pole::TopField, nullptr);
    EXPECT_EQ(copyInto(*source, *target), 4);
    EXPECT_EQ(target->Mark().lock()->Height(), 3);
    EXPECT_EQ(target->Bottom().lock()->Height(), 5);
}

TEST(AttrCopyVisitor, SkipsAnAttributeWithoutCounterpart) {
    const auto source = makeChain(2);
    const auto target = makeChain(1);
    addCustom(*source, "Extra", 1);
    copyInto(*source, *target);
    EXPECT_EQ(target->getNumAttributes(), 2u);
    EXPECT_EQ(gainsOf(*target), (Gains{2, 2, 2}));
}

TEST(AttrCopyVisitor, PairsByTokenWhateverTheNames) {
    const auto source = AttrContainer::create();
    const auto target = AttrContainer::create();
    addCustom(*source, "A", 1);
    const auto other = addCustom(*target, "B", 2);
    copyInto(*source, *target);
    EXPECT_EQ(other->get(), 1);
}

TEST(AttrCopyVisitor, PairsDeclaredAttributesWithAddedOnesOfTheSameToken) {
    const auto plain = AttrContainer::create();
    const auto mark = Mark::create();
    addCustom(*plain, "Gain", 5);  // token 1, as "Label" is
    copyInto(*plain, *mark);
    EXPECT_EQ(mark->Label(), "5");
    EXPECT_EQ(mark->Height(), 1.75);

    mark->Label("6");
    copyInto(*mark, *plain);
    EXPECT_EQ(gainOf(*plain), 6);
}

TEST(AttrCopyVisitor, FindsDeclaredAndCustomAttributes) {
    const auto source = Mark::create();
    const auto target = Mark::create();
    source->Label("tall");
    source->Count(9);
    addCustom(*source, "Gain", 5);
    const auto gain = addCustom(*target, "Gain", 1);
    copyInto(*source, *target);
    EXPECT_EQ(target->Label(), "tall");
    EXPECT_EQ(target->Count(), 9);
    EXPECT_EQ(gain->get(), 5);
}

TEST(AttrCopyVisitor, ConvertsUnlikeTypesThroughText) {
    const auto source = AttrContainer::create();
    const auto target = AttrContainer::create();
    addCustom(*source, "A", 12);
    addCustom(*source, "B", 2.5);
    const auto a = addCustom<std::string>(*target, "A", "");
    const auto b = addCustom(*target, "B", 0.0);
    copyInto(*source, *target);
    EXPECT_EQ(a->get(), "12");
    EXPECT_EQ(b->get(), 2.5);
}

TEST(AttrCopyVisitor, ThrowsForTheTextOfAMalformedNumber) {
    const auto source = AttrContainer::create();
    const auto target = AttrContainer::create();
    addCustom<std::string>(*source, "A", "1e");
    addCustom(*target, "A", 1.5);
    EXPECT_THROW(copyInto(*source, *target), std::invalid_argument);
}

TEST(AttrCopyVisitor, AsksAndTellsTheObserversOfTheTarget) {
    const auto source = AttrContainer::create();
    const auto target = AttrContainer::create();
    addCustom(*source, "Gain", 1);
    const auto observer = watch(*addCustom(*target, "Gain", 1));
    copyInto(*source, *target);
    EXPECT_EQ(observer->asked, 1);
    EXPECT_EQ(observer->told, 1);
}

TEST(AttrCopyVisitor, DoesNotMindARefusalUnlessTheTargetIsAText) {
    const auto source = AttrContainer::create();
    const auto target = AttrContainer::create();
    addCustom(*source, "Gain", 5);
    addCustom(*source, "Note", 6);
    const auto gain = addCustom(*target, "Gain", 1);
    const auto note = addCustom<std::string>(*target, "Note", "old");
    const auto ofGain = watch<Refuser>(*gain);
    const auto ofNote = watch<Refuser>(*note);
    copyInto(*source, *target);
    EXPECT_EQ(gain->get(), 5);
    EXPECT_EQ(ofGain->asked, 1);
    EXPECT_EQ(note->get(), "old");
    EXPECT_EQ(ofNote->asked, 1);
    EXPECT_EQ(ofNote->told, 0);
}

TEST(AttrCopyVisitor, LeavesTheNameOfTheTargetWhereThatOfTheSourceIsInvalid) {
    const auto source = AttrContainer::create();
    const auto target = AttrContainer::create();
    target->name("target");
    source->name("source");
    copyInto(*source, *target);
    EXPECT_EQ(target->name(), "source");
    {
        const BlockObserver noGuard;
        source->name("no name");
    }
    copyInto(*source, *target);
    EXPECT_EQ(target->name(), "source");
}

TEST(AttrCopyVisitor, CanWalkSeveralTimes) {
    const auto target = makeChain(1);
    AttrCopyVisitor visitor(*target, allLevels);
    makeChain(2)->attributeVisitor(visitor, true);
    makeChain(3)->attributeVisitor(visitor, true);
    EXPECT_EQ(gainsOf(*target), (Gains{3, 3, 3}));
}

TEST(AttrCopyVisitor, GoesByTheFirstSlotOfAFieldThatStandsInTwo) {
    const auto source = AttrContainer::create();
    const auto target = AttrContainer::create();
    const auto shared = addNamedField(*source, "A");
    source->addField(shared, "B", 0);
    addCustom(*shared, "Gain", 5);
    const auto first = addCustom(*addNamedField(*target, "A"), "Gain", 1);
    const auto second = addCustom(*addNamedField(*target, "B"), "Gain", 1);
    copyInto(*source, *target);
    EXPECT_EQ(first->get(), 5);
    EXPECT_EQ(second->get(), 1);
}

TEST(AttrCopyVisitor, KeepsToThePairsWhereAnObserverChangesTheSource) {
    const auto source = AttrContainer::create();
    const auto target = AttrContainer::create();
    for (const char* name : {"A", "B", "C"}) {
        addCustom(*addNamedField(*source, name), "Gain", 5);
        addCustom(*addNamedField(*target, name), "Gain", 1);
    }
    const auto gain = target->getField("A").lock()->getAttribute("Gain").lock();
    const auto observer = watch<Actor>(*gain);
    // The last one, "C", takes over the slot of "B".
    observer->after = [&](Observable&, auto&&) { source->rmField("B"); };
    copyInto(*source, *target);
    EXPECT_EQ(gainOf(*target->getField("B").lock()), 5);
    EXPECT_EQ(gainOf(*target->getField("C").lock()), 1);
}

TEST(AttrCopyVisitor, CopiesNothingWhereItMeetsAnAttributeAheadOfAnyContainer) {
    const auto target = makeChain(1);
    AttrCopyVisitor visitor(*target, allLevels);
    EXPECT_EQ(visitor.visit(*makeChain(2)->getAttribute("Gain").lock()), VisitorCore::Continue);
    EXPECT_EQ(gainsOf(*target), (Gains{1, 1, 1}));
}
