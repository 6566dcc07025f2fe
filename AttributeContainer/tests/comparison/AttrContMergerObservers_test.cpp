#include <AttributeContainer/AttrContMerger.h>

#include "support/Containers.h"
#include "support/MergeResults.h"
#include "support/ObserverActors.h"
#include "support/ObserverGraph.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr unsigned onlyChanged = AttrContMerger::ASSIGN_ONLY_CHANGED_VALUES;
constexpr unsigned keep = AttrContMerger::KEEP_NON_EXISTENT_IN_SOURCE;
constexpr unsigned after = AttrContMerger::TRIGGER_OBSERVERS_AFTER_MERGE_IS_COMPLETE;
constexpr unsigned block = AttrContMerger::BLOCK_OBSERVERS;

// "Same" is equal in both, "Gain" is not; each has an observer in the target.
struct AttrContMergerObservers : testing::Test {
    AttrContMergerObservers() {
        addCustom(*source, "Same", 1);
        addCustom(*source, "Gain", 2);
    }
    void merge(unsigned flags) { mergeResult(*target, *source, flags); }
    /// How often each of the two was asked and told.
    using Calls = std::vector<int>;
    Calls calls() const { return {ofSame->asked, ofSame->told, ofGain->asked, ofGain->told}; }

    std::shared_ptr<AttrContainer> target = AttrContainer::create();
    std::shared_ptr<AttrContainer> source = AttrContainer::create();
    std::shared_ptr<Attr<int>> same = addCustom(*target, "Same", 1);
    std::shared_ptr<Attr<int>> gain = addCustom(*target, "Gain", 1);
    std::shared_ptr<Actor> ofSame = watch<Actor>(*same);
    std::shared_ptr<Actor> ofGain = watch<Actor>(*gain);
};

}  // namespace

TEST_F(AttrContMergerObservers, HearOfAnAssignmentTwiceAndOfAnEqualValueOnce) {
    merge(0);
    EXPECT_EQ(calls(), (Calls{0, 1, 1, 2}));
}

TEST_F(AttrContMergerObservers, HearOfAllAttributesOfEqualContainersOnce) {
    gain->set(2);
    const auto ofName = watch(target->Attr_Name());
    const int toldOfSet = ofGain->told;
    EXPECT_EQ(mergeResult(*target, *source, 0), (Counters{.unchanged = 3}));
    EXPECT_EQ(ofName->told, 1);
    EXPECT_EQ(ofSame->told, 1);
    EXPECT_EQ(ofGain->told, toldOfSet + 1);
}

TEST_F(AttrContMergerObservers, HearNothingOfEqualContainersWithFlagOne) {
    merge(onlyChanged);
    EXPECT_EQ(calls(), (Calls{0, 0, 1, 2}));
    const auto before = calls();
    merge(onlyChanged);
    merge(onlyChanged | after);
    EXPECT_EQ(calls(), before);
}

TEST_F(AttrContMergerObservers, HearOnceOfEachAfterTheMergeWithFlagSixteen) {
    merge(after);
    EXPECT_EQ(calls(), (Calls{0, 1, 0, 1}));
}

TEST_F(AttrContMergerObservers, HearOfChangesAloneWithFlagsSixteenAndOne) {
    merge(after | onlyChanged);
    EXPECT_EQ(calls(), (Calls{0, 0, 0, 1}));
}

TEST_F(AttrContMergerObservers, SeeAllNewValuesWithFlagSixteen) {
    addCustom(*source, "Added", 1);
    addNamedField(*source, "Lens");
    addCustom(*target, "Gone", 1);
    bool sawAll = false;
    ofSame->after = [&](Observable&, auto&&) {
        sawAll = gain->get() == 2 && !target->getAttribute("Added").expired() &&
                 !target->getField("Lens").expired() && target->getAttribute("Gone").expired();
    };
    merge(0);
    EXPECT_FALSE(sawAll);  // "Same" comes ahead of "Gain"
    gain->set(1);
    addCustom(*target, "Gone", 1);
    merge(after);
    EXPECT_TRUE(sawAll);
}

TEST_F(AttrContMergerObservers, AreToldInTheOrderOfTheSource) {
    Names order;
    ofSame->after = [&](Observable& changed, auto&&) { order.push_back(changed.getName()); };
    ofGain->after = ofSame->after;
    source->rmAttribute("Same");
    addCustom(*source, "Same", 1);
    merge(after);
    EXPECT_EQ(order, (Names{"Gain", "Same"}));
}

TEST_F(AttrContMergerObservers, HearNothingWithFlagThirtyTwo) {
    merge(block);
    EXPECT_EQ(gain->get(), 2);
    EXPECT_EQ(calls(), (Calls{0, 0, 0, 0}));
}

TEST_F(AttrContMergerObservers, HearNothingWithFlagsSixteenAndThirtyTwo) {
    merge(after | block);
    EXPECT_EQ(gain->get(), 2);
    EXPECT_EQ(calls(), (Calls{0, 0, 0, 0}));
}

TEST_F(AttrContMergerObservers, CannotRefuseWhatTheyAreNotAskedAbout) {
    const auto refuser = watch<Refuser>(*gain);
    merge(after);
    EXPECT_EQ(gain->get(), 2);
}

TEST_F(AttrContMergerObservers, OfFieldsAreToldWithTheOthersAtTheEnd) {
    const auto inner = addCustom(*addNamedField(*target, "Lens"), "Width", 1);
    addCustom(*addNamedField(*source, "Lens"), "Width", 2);
    int seen = 0;
    ofGain->after = [&](Observable&, auto&&) { seen = inner->get(); };
    merge(after);
    EXPECT_EQ(seen, 2);
}

// One field under two names: its attributes have their turn twice.
TEST_F(AttrContMergerObservers, OfAnAttributeThatWasReachedTwiceAreToldTwice) {
    const auto lens = addNamedField(*target, "Lens");
    target->addField(lens, "LensToo", 0);
    const auto width = addCustom(*lens, "Width", 1);
    const auto ofWidth = watch(*width);
    addCustom(*addNamedField(*source, "Lens"), "Width", 1);
    addCustom(*addNamedField(*source, "LensToo"), "Width", 1);
    merge(after);
    EXPECT_EQ(ofWidth->told, 2);
}

TEST_F(AttrContMergerObservers, OfAnAttributeUnderTwoNamesAreToldTwice) {
    target->addAttribute(same, "SameToo");
    addCustom(*source, "SameToo", 1);
    merge(after);
    EXPECT_EQ(ofSame->told, 2);
    merge(0);
    EXPECT_EQ(ofSame->told, 4);
}

// The assignment ends at the refusal; that the merge was here is told all the same.
TEST_F(AttrContMergerObservers, HearOnceOfAnAssignmentThatWasRefused) {
    const auto refuser = watch<Refuser>(*gain);
    merge(0);
    EXPECT_EQ(gain->get(), 1);
    EXPECT_EQ(refuser->asked, 1);
    EXPECT_EQ(refuser->told, 1);
}

TEST_F(AttrContMergerObservers, MayEndAnAttributeWhoseTurnIsToCome) {
    std::weak_ptr<Attribute> ending = gain;
    gain.reset();
    ofSame->after = [&](Observable&, auto&&) { target->rmAttribute("Gain"); };
    merge(after);
    EXPECT_TRUE(ending.expired());
    EXPECT_EQ(ofGain->told, 0);
}

TEST_F(AttrContMergerObservers, MayTakeAttributesAwayWhileTheMergeRuns) {
    ofSame->after = [&](Observable&, auto&&) {
        source->rmAttribute("Gain");
        target->rmAttribute("Gain");
        target->rmAttribute("Same");
    };
    merge(0);
    EXPECT_TRUE(target->getAttribute("Gain").expired());
}

TEST_F(AttrContMergerObservers, OfAnAddedAttributeHearNothingOfItsMaking) {
    const auto added = addCustom(*source, "Added", 1);
    const auto counter = listenerAt("/listener");  // a copy keeps the relation to it
    added->addObserver(*counter, 5, tellAction, false);
    added->addPreObserver(*counter, 5, askAction, false);
    for (const unsigned flags : {0u, after, block}) {
        target->rmAttribute("Added");
        merge(flags);
        const auto copy = target->getAttribute("Added").lock();
        ASSERT_TRUE(copy);
        EXPECT_EQ(copy->getNumPostObservers(), 1u);
        EXPECT_EQ(counter->told, 0) << flags;
        EXPECT_EQ(counter->asked, 0) << flags;
    }
}

TEST_F(AttrContMergerObservers, OfAnAddedFieldHearNothingOfItsMaking) {
    const auto width = addCustom(*addNamedField(*source, "Lens"), "Width", 1);
    const auto counter = listenerAt("/listener");  // a copy keeps the relation to it
    width->addObserver(*counter, 5, tellAction, false);
    width->addPreObserver(*counter, 5, askAction, false);
    for (const unsigned flags : {0u, after, block}) {
        target->rmField("Lens");
        merge(flags);
        const auto copy = target->getField("Lens").lock();
        ASSERT_TRUE(copy);
        EXPECT_EQ(copy->getAttribute("Width").lock()->getNumPostObservers(), 1u);
        EXPECT_EQ(counter->told, 0) << flags;
        EXPECT_EQ(counter->asked, 0) << flags;
    }
}

TEST_F(AttrContMergerObservers, AreUnblockedBehindAMergeThatBlockedThem) {
    for (const unsigned flags : {after, block, after | block}) {
        merge(flags);
        EXPECT_FALSE(Attribute::isObservingBlocked());
    }
}

TEST_F(AttrContMergerObservers, HearNothingWhereTheCallerBlocksThem) {
    const BlockObserver blocked;
    merge(0);
    EXPECT_EQ(gain->get(), 2);
    EXPECT_EQ(calls(), (Calls{0, 0, 0, 0}));
    EXPECT_TRUE(Attribute::isObservingBlocked());
}

TEST_F(AttrContMergerObservers, AreUnblockedByAMergeThatDefersAlsoWhereTheCallerBlockedThem) {
    const BlockObserver blocked;
    merge(after | keep);
    EXPECT_FALSE(Attribute::isObservingBlocked());
    EXPECT_EQ(ofGain->told, 1);
}
