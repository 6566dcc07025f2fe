#include <AttributeContainer/AttrContMerger.h>

#include <AttributeContainer/AttrContComparer.h>
#include <AttributeContainer/AttributeWriteProtection.h>

#include "support/Containers.h"
#include "support/HoledContainer.h"
#include "support/MergeResults.h"
#include "support/ObserverActors.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Merger = AttrContMerger;

struct AttrContMergerTest : testing::Test {
    Counters merge(unsigned flags = 0) { return mergeResult(*target, *source, flags); }

    std::shared_ptr<AttrContainer> target = AttrContainer::create();
    std::shared_ptr<AttrContainer> source = AttrContainer::create();
};

}  // namespace

TEST(AttrContMerger, HasItsFlagsAsBits) {
    EXPECT_EQ(Merger::ASSIGN_ONLY_CHANGED_VALUES, 1u);
    EXPECT_EQ(Merger::KEEP_NON_EXISTENT_IN_SOURCE, 2u);
    EXPECT_EQ(Merger::CONSIDER_ONLY_MARKED, 4u);
    EXPECT_EQ(Merger::MARK_CHANGED_WITH_AUXILIARY, 8u);
    EXPECT_EQ(Merger::TRIGGER_OBSERVERS_AFTER_MERGE_IS_COMPLETE, 16u);
    EXPECT_EQ(Merger::BLOCK_OBSERVERS, 32u);
}

TEST(AttrContMerger, HasSixCountersInTheirOrder) {
    const Merger::Result result{1, 2, 3, 4, 5, 6};
    EXPECT_EQ(result.numChanged, 1u);
    EXPECT_EQ(result.numUnchanged, 2u);
    EXPECT_EQ(result.numAttributesAdded, 3u);
    EXPECT_EQ(result.numAttributesRemoved, 4u);
    EXPECT_EQ(result.numFieldsAdded, 5u);
    EXPECT_EQ(result.numFieldsRemoved, 6u);
    static_assert(sizeof(Merger::Result) == 6 * sizeof(std::uint32_t));
}

TEST_F(AttrContMergerTest, CountsEqualAttributesAsUnchanged) {
    addCustom(*target, "Gain", 2.5);
    addCustom(*source, "Gain", 2.5);
    EXPECT_EQ(merge(), (Counters{.unchanged = 2}));
}

TEST_F(AttrContMergerTest, AssignsWhatDiffers) {
    const auto gain = addCustom(*target, "Gain", 2.5);
    addCustom(*source, "Gain", 3.5);
    EXPECT_EQ(merge(), (Counters{.changed = 1, .unchanged = 1}));
    EXPECT_EQ(gain->get(), 3.5);
}

TEST_F(AttrContMergerTest, AssignsTheSmallestDifference) {
    const auto gain = addCustom(*target, "Gain", 1.0);
    addCustom(*source, "Gain", 1.0 + 1e-15);
    EXPECT_EQ(merge().changed, 1u);
    EXPECT_EQ(gain->get(), 1.0 + 1e-15);
}

TEST_F(AttrContMergerTest, AddsACustomAttributeWithItsValueAndType) {
    const auto original = addCustom(*source, "Gain", 2.5);
    EXPECT_EQ(merge(), (Counters{.unchanged = 1, .attributesAdded = 1}));
    const auto added = target->getAttribute("Gain").lock();
    ASSERT_TRUE(added);
    EXPECT_NE(added, original);
    EXPECT_EQ(added->getClassName(), "Attr<double>");
    EXPECT_EQ(static_cast<Attr<double>&>(*added).get(), 2.5);
    EXPECT_EQ(&added->getLocation()->get(), target.get());
    EXPECT_FALSE(added->isMarked());
}

TEST_F(AttrContMergerTest, AddsADeclaredAttributeOfTheSourceAsACustomOne) {
    source = Mark::create();
    source->name("AttrContainer");
    EXPECT_EQ(merge(), (Counters{.unchanged = 1, .attributesAdded = 3}));
    EXPECT_EQ(target->getNumHardCodedAttributes(), 1u);
    EXPECT_EQ(target->getAttribute("Height").lock()->getValueString(), "1.75");
}

TEST_F(AttrContMergerTest, CountsOnlyAddedAttributesThatTheTargetTookIn) {
    addCustom(*source, "Lens", 1);
    addNamedField(*target, "Lens");  // the name is taken
    EXPECT_EQ(merge(Merger::KEEP_NON_EXISTENT_IN_SOURCE), (Counters{.unchanged = 1}));
    EXPECT_TRUE(target->getAttribute("Lens").expired());
}

TEST_F(AttrContMergerTest, RemovesACustomAttributeOfTheTargetAlone) {
    addCustom(*target, "Gain", 2.5);
    EXPECT_EQ(merge(), (Counters{.unchanged = 1, .attributesRemoved = 1}));
    EXPECT_TRUE(target->getAttribute("Gain").expired());
}

TEST_F(AttrContMergerTest, KeepsACustomAttributeOfTheTargetAloneWithFlagTwo) {
    addCustom(*target, "Gain", 2.5);
    EXPECT_EQ(merge(Merger::KEEP_NON_EXISTENT_IN_SOURCE), (Counters{.unchanged = 1}));
    EXPECT_FALSE(target->getAttribute("Gain").expired());
}

TEST_F(AttrContMergerTest, RemovesTheRightOnesOfMany) {
    for (const char* name : {"A", "B", "C", "D", "E", "F"}) addCustom(*target, name, 1);
    for (const char* name : {"F", "B"}) addCustom(*source, name, 1);
    EXPECT_EQ(merge(), (Counters{.unchanged = 3, .attributesRemoved = 4}));
    EXPECT_EQ(target->getNumAttributes(), 3u);
    EXPECT_FALSE(target->getAttribute("B").expired());
    EXPECT_FALSE(target->getAttribute("F").expired());
}

TEST_F(AttrContMergerTest, CountsADeclaredAttributeThatTheSourceLacksButLeavesIt) {
    const auto mark = Mark::create();
    mark->name("AttrContainer");
    EXPECT_EQ(mergeResult(*mark, *source, 0), (Counters{.unchanged = 1, .attributesRemoved = 3}));
    EXPECT_EQ(mark->getNumAttributes(), 4u);
    EXPECT_EQ(mark->Height(), 1.75);
}

TEST_F(AttrContMergerTest, MarksWhatItChangedOrAddedWithFlagEight) {
    const auto changed = addCustom(*target, "Changed", 1);
    const auto same = addCustom(*target, "Same", 1);
    addCustom(*source, "Changed", 2);
    addCustom(*source, "Same", 1);
    const auto original = addCustom(*source, "Added", 1);
    merge(Merger::MARK_CHANGED_WITH_AUXILIARY);
    EXPECT_TRUE(changed->isMarked());
    EXPECT_TRUE(target->getAttribute("Added").lock()->isMarked());
    EXPECT_FALSE(same->isMarked());
    EXPECT_FALSE(original->isMarked());
}

TEST_F(AttrContMergerTest, LeavesTheMarksOfTheSourceWhereTheyAre) {
    const auto gain = addCustom(*target, "Gain", 1);
    const auto same = addCustom(*target, "Same", 1);
    for (const auto& [name, value] : {std::pair("Gain", 2), std::pair("Same", 1)})
        addCustom(*source, name, value)->setMarked(true);
    addCustom(*source, "Added", 1)->setMarked(true);
    same->setMarked(true);
    EXPECT_EQ(merge(), (Counters{.changed = 1, .unchanged = 2, .attributesAdded = 1}));
    EXPECT_FALSE(gain->isMarked());
    EXPECT_FALSE(target->getAttribute("Added").lock()->isMarked());
    EXPECT_TRUE(same->isMarked());  // no merge takes a mark away
    EXPECT_TRUE(source->getAttribute("Gain").lock()->isMarked());
}

TEST_F(AttrContMergerTest, CountsAndMarksTheSameWhoeverIsToldAndWhen) {
    addCustom(*source, "Gain", 2);
    addCustom(*source, "Added", 1);
    addNamedField(*source, "Lens");
    for (const unsigned flags : {0u, 1u, 16u, 17u, 32u, 33u, 48u, 49u}) {
        target = AttrContainer::create();
        const auto gain = addCustom(*target, "Gain", 1);
        addCustom(*target, "Gone", 1);
        addNamedField(*target, "Hood");
        EXPECT_EQ(merge(flags | Merger::MARK_CHANGED_WITH_AUXILIARY), (Counters{1, 1, 1, 1, 1, 1}))
            << flags;
        EXPECT_TRUE(gain->isMarked()) << flags;
        EXPECT_TRUE(target->getAttribute("Added").lock()->isMarked()) << flags;
        EXPECT_FALSE(target->Attr_Name().isMarked()) << flags;
    }
}

TEST_F(AttrContMergerTest, TakesOnlyMarkedAttributesOfTheSourceWithFlagFour) {
    const auto gain = addCustom(*target, "Gain", 1);
    const auto width = addCustom(*target, "Width", 1);
    addCustom(*source, "Gain", 2)->setMarked(true);
    addCustom(*source, "Width", 2);
    addCustom(*source, "Added", 1)->setMarked(true);
    addCustom(*source, "NotAdded", 1);
    EXPECT_EQ(merge(Merger::CONSIDER_ONLY_MARKED), (Counters{.changed = 1, .attributesAdded = 1}));
    EXPECT_EQ(gain->get(), 2);
    EXPECT_EQ(width->get(), 1);
    EXPECT_TRUE(target->getAttribute("NotAdded").expired());
}

TEST_F(AttrContMergerTest, DoesNothingWithFlagsFourAndTwoWhereNothingIsMarked) {
    addCustom(*target, "Gain", 1);
    addCustom(*target, "Kept", 1);
    addCustom(*source, "Gain", 2);
    addCustom(*source, "Added", 1);
    const auto before = target->duplicate(CreateDeep);
    EXPECT_EQ(merge(Merger::CONSIDER_ONLY_MARKED | Merger::KEEP_NON_EXISTENT_IN_SOURCE),
              Counters{});
    EXPECT_EQ(AttrContComparer(-1, 0).compare(*before, *target), 0u);
}

TEST_F(AttrContMergerTest, RemovesWithFlagFourWhatTheSourceLacks) {
    addCustom(*target, "Gone", 1);
    addNamedField(*target, "Lens");
    EXPECT_EQ(merge(Merger::CONSIDER_ONLY_MARKED),
              (Counters{.attributesRemoved = 1, .fieldsRemoved = 1}));
}

TEST_F(AttrContMergerTest, CountsAnAttributeWhoseObserverRefusedAsChanged) {
    const auto gain = addCustom(*target, "Gain", 1);
    addCustom(*source, "Gain", 2);
    const auto refuser = watch<Refuser>(*gain);
    EXPECT_EQ(merge(Merger::MARK_CHANGED_WITH_AUXILIARY).changed, 1u);
    EXPECT_EQ(gain->get(), 1);
    EXPECT_TRUE(gain->isMarked());
}

TEST_F(AttrContMergerTest, CountsAWriteProtectedAttributeAsChanged) {
    const auto gain = addCustom(*target, "Gain", 1);
    addCustom(*source, "Gain", 2);
    const auto protection = AttributeWriteProtection::create(
        gain, [](Attribute& attribute) -> std::optional<std::string> {
            const auto info = attribute.lookupNotifyInfo(typeid(NewValueInfo<int>));
            if (!info) return std::nullopt;
            return std::to_string(static_cast<NewValueInfo<int>&>(*info).getValue());
        });
    EXPECT_EQ(merge().changed, 1u);
    EXPECT_EQ(gain->get(), 1);
}

TEST_F(AttrContMergerTest, AcceptsNoResult) {
    addCustom(*source, "Gain", 2);
    addNamedField(*addNamedField(*source, "Lens"), "Glass");
    addCustom(*target, "Gone", 2);
    Merger::merge(*target, *source, 0, nullptr);
    Merger::merge(*target, *source, 16, nullptr);
    EXPECT_EQ(AttrContComparer(-1, 0).compare(*source, *target), 0u);
}

TEST_F(AttrContMergerTest, AddsToTheCountersThatItIsGiven) {
    Merger::Result result{10, 20, 30, 40, 50, 60};
    addCustom(*source, "Gain", 2);
    Merger::merge(*target, *source, 0, &result);
    EXPECT_EQ(Counters::of(result), (Counters{10, 21, 31, 40, 50, 60}));
}

TEST_F(AttrContMergerTest, FindsAContainerAndItselfEqual) {
    addCustom(*target, "Gain", 2);
    addNamedField(*target, "Lens");
    EXPECT_EQ(mergeResult(*target, *target, 0), (Counters{.unchanged = 3}));
}

TEST_F(AttrContMergerTest, DoesNotLookAtTheChildrenOfObjects) {
    const auto to = named("root");
    const auto from = named("root");
    addNamed(*to, "one");
    addNamed(*from, "two");
    mergeResult(*to, *from, 0);
    EXPECT_EQ(childNames(*to), (Names{"one"}));
}

TEST_F(AttrContMergerTest, PassesOverADeclaredAttributeThatIsNotThere) {
    const auto holed = Holed::make();
    holed->name("AttrContainer");
    EXPECT_EQ(mergeResult(*target, *holed, 0), (Counters{.unchanged = 1}));
    EXPECT_EQ(mergeResult(*holed, *source, 0), (Counters{.unchanged = 1}));
}
