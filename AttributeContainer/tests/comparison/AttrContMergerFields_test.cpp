#include <AttributeContainer/AttrContMerger.h>

#include <AttributeContainer/AttrContComparer.h>

#include "support/Containers.h"
#include "support/MergeResults.h"

#include <gtest/gtest.h>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

struct AttrContMergerFields : testing::Test {
    Counters merge(unsigned flags = 0) { return mergeResult(*target, *source, flags); }

    std::shared_ptr<AttrContainer> target = AttrContainer::create();
    std::shared_ptr<AttrContainer> source = AttrContainer::create();
};

std::uint64_t numDifferences(const AttrContainer& first, const AttrContainer& second) {
    return AttrContComparer(-1, 0).compare(first, second);
}

}  // namespace

TEST_F(AttrContMergerFields, AreMergedByNameDownToTheBottom) {
    const auto gain = addCustom(*addNamedField(*addNamedField(*target, "A"), "B"), "Gain", 1);
    addNamedField(*source, "First");
    addCustom(*addNamedField(*addNamedField(*source, "A"), "B"), "Gain", 2);
    EXPECT_EQ(merge(), (Counters{.changed = 1, .unchanged = 3, .fieldsAdded = 1}));
    EXPECT_EQ(gain->get(), 2);
}

TEST_F(AttrContMergerFields, ThatAreMissingArriveAsCopiesOfTheirClassUnderTheirName) {
    const auto original = addNamedField<TallMark>(*source, "Lens");
    original->Height(9);
    addCustom(*original, "Gain", 2);
    addNamedField(*original, "Inner");
    EXPECT_EQ(merge(), (Counters{.unchanged = 1, .fieldsAdded = 1}));
    const auto added = std::dynamic_pointer_cast<TallMark>(target->getField("Lens").lock());
    ASSERT_TRUE(added);
    EXPECT_NE(added, original);
    EXPECT_EQ(added->Height(), 9);
    EXPECT_FALSE(added->getAttribute("Gain").expired());
    EXPECT_FALSE(added->getField("Inner").expired());
    EXPECT_NE(added->getField("Inner").lock(), original->getField("Inner").lock());
}

TEST_F(AttrContMergerFields, ThatAreMissingArriveWhateverIsMarked) {
    addCustom(*addNamedField(*source, "Lens"), "Gain", 1);
    EXPECT_EQ(merge(AttrContMerger::CONSIDER_ONLY_MARKED), (Counters{.fieldsAdded = 1}));
    EXPECT_EQ(numDifferences(*source, *target), 0u);
}

TEST_F(AttrContMergerFields, ThatArriveAreNotMarkedWithFlagEight) {
    addCustom(*addNamedField(*source, "Lens"), "Gain", 1)->setMarked(true);
    merge(AttrContMerger::MARK_CHANGED_WITH_AUXILIARY);
    const auto added = target->getField("Lens").lock();
    ASSERT_TRUE(added);
    EXPECT_FALSE(added->getAttribute("Gain").lock()->isMarked());
}

TEST_F(AttrContMergerFields, WhoseNameIsTakenByAnAttributeArriveUnderAnother) {
    addNamedField(*source, "Lens");
    addCustom(*target, "Lens", 1);
    EXPECT_EQ(merge(AttrContMerger::KEEP_NON_EXISTENT_IN_SOURCE),
              (Counters{.unchanged = 1, .fieldsAdded = 1}));
    EXPECT_TRUE(target->getField("Lens").expired());
    EXPECT_EQ(target->getNumFields(), 1u);
    EXPECT_NE(target->getFieldName(0), "Lens");
}

// The source has two elements of one name. Under its new name the field has no counterpart there.
TEST_F(AttrContMergerFields, ThatArriveUnderAnotherNameGoAgainUnlessFlagTwoIsSet) {
    addCustom(*source, "Lens", 1);
    source->addField(AttrContainer::create(), "Lens", AddFlags::SkipNameTest);
    EXPECT_EQ(
        merge(),
        (Counters{.unchanged = 1, .attributesAdded = 1, .fieldsAdded = 1, .fieldsRemoved = 1}));
    EXPECT_EQ(target->getNumFields(), 0u);
    EXPECT_EQ(merge(AttrContMerger::KEEP_NON_EXISTENT_IN_SOURCE),
              (Counters{.unchanged = 2, .fieldsAdded = 1}));
    EXPECT_EQ(target->getNumFields(), 1u);
}

TEST_F(AttrContMergerFields, AreMergedWithTheFlagsOfTheWholeMerge) {
    const auto to = addNamedField(*target, "Lens");
    const auto from = addNamedField(*source, "Lens");
    const auto gain = addCustom(*to, "Gain", 1);
    const auto width = addCustom(*to, "Width", 1);
    addCustom(*to, "Kept", 1);
    addNamedField(*to, "Hood");
    addCustom(*from, "Gain", 2)->setMarked(true);
    addCustom(*from, "Width", 2);
    EXPECT_EQ(
        merge(AttrContMerger::KEEP_NON_EXISTENT_IN_SOURCE | AttrContMerger::CONSIDER_ONLY_MARKED |
              AttrContMerger::MARK_CHANGED_WITH_AUXILIARY),
        (Counters{.changed = 1}));
    EXPECT_EQ(gain->get(), 2);
    EXPECT_TRUE(gain->isMarked());
    EXPECT_EQ(width->get(), 1);
    EXPECT_EQ(merge(),
              (Counters{.changed = 1, .unchanged = 3, .attributesRemoved = 1, .fieldsRemoved = 1}));
    EXPECT_EQ(width->get(), 2);
    EXPECT_FALSE(width->isMarked());
}

TEST_F(AttrContMergerFields, OfTheTargetAloneAreRemoved) {
    addNamedField(*target, "Lens");
    EXPECT_EQ(merge(), (Counters{.unchanged = 1, .fieldsRemoved = 1}));
    EXPECT_EQ(target->getNumFields(), 0u);
}

TEST_F(AttrContMergerFields, OfTheTargetAloneAreKeptWithFlagTwo) {
    addCustom(*addNamedField(*target, "Lens"), "Gain", 1);
    EXPECT_EQ(merge(AttrContMerger::KEEP_NON_EXISTENT_IN_SOURCE), (Counters{.unchanged = 1}));
    EXPECT_FALSE(target->getField("Lens").expired());
}

TEST_F(AttrContMergerFields, AreRemovedAndKeptAmongMany) {
    for (const char* name : {"A", "B", "C", "D", "E", "F"}) addNamedField(*target, name);
    for (const char* name : {"F", "G", "B"}) addNamedField(*source, name);
    EXPECT_EQ(merge(), (Counters{.unchanged = 3, .fieldsAdded = 1, .fieldsRemoved = 4}));
    EXPECT_EQ(target->getNumFields(), 3u);
    for (const char* name : {"B", "F", "G"}) EXPECT_FALSE(target->getField(name).expired()) << name;
}

TEST_F(AttrContMergerFields, InADeclaredSlotAreTakenOutAndTheSlotStays) {
    const auto pole = Pole::create();
    pole->name("AttrContainer");
    EXPECT_EQ(mergeResult(*pole, *source, 0),
              (Counters{.unchanged = 1, .attributesRemoved = 1, .fieldsRemoved = 2}));
    EXPECT_EQ(pole->getNumFields(), 2u);
    EXPECT_TRUE(pole->Mark().expired());
    EXPECT_TRUE(pole->Top().expired());
}

TEST_F(AttrContMergerFields, ThatTheSourceLacksInADeclaredSlotAreTakenOut) {
    const auto to = Pole::create();
    const auto from = Pole::create();
    from->setField(Pole::MarkField, nullptr);  // an empty slot brings nothing
    EXPECT_EQ(mergeResult(*to, *from, 0), (Counters{.unchanged = 2 + 6, .fieldsRemoved = 1}));
    EXPECT_TRUE(to->Mark().expired());
    EXPECT_EQ(to->getNumFields(), 2u);
}

// The removal is asked by name, and a slot has its name whether a field is in it or not.
TEST_F(AttrContMergerFields, CountAsRemovedForADeclaredSlotThatIsEmptyInBoth) {
    const auto to = Pole::create();
    const auto from = Pole::create();
    to->setField(Pole::MarkField, nullptr);
    from->setField(Pole::MarkField, nullptr);
    EXPECT_EQ(mergeResult(*to, *from, 0), (Counters{.unchanged = 2 + 6, .fieldsRemoved = 1}));
}

TEST_F(AttrContMergerFields, GoByTheirOwnNameWhereTheirSlotHasNone) {
    const auto unnamed = [](AttrContainer& container, int gain) {
        const auto field = AttrContainer::create();
        addCustom(*field, "Gain", gain);
        const BlockObserver noGuard;  // no name that a container would take
        field->name("");
        EXPECT_TRUE(container.addField(field, "", AddFlags::SkipNameTest));
        field->name("Lens");
        return field;
    };
    unnamed(*source, 2);
    const auto lens = addNamedField(*target, "Lens");
    lens->name("Lens");
    const auto gain = addCustom(*lens, "Gain", 1);
    EXPECT_EQ(merge(AttrContMerger::KEEP_NON_EXISTENT_IN_SOURCE),
              (Counters{.changed = 1, .unchanged = 2}));
    EXPECT_EQ(gain->get(), 2);
}

TEST_F(AttrContMergerFields, HearOfTheirNewOwnerAndOfTheirRemoval) {
    const auto guest = addNamedField<Guest>(*target, "Gone");
    addNamedField<Guest>(*source, "Come");
    merge();
    ASSERT_EQ(guest->calls.size(), 2u);
    EXPECT_EQ(guest->calls.back().what, "detach");
    const auto come = std::dynamic_pointer_cast<Guest>(target->getField("Come").lock());
    ASSERT_TRUE(come);
    ASSERT_EQ(come->calls.size(), 1u);
    EXPECT_EQ(come->calls.front().what, "attach");
    EXPECT_EQ(come->calls.front().parent.lock(), target);
}

TEST_F(AttrContMergerFields, LeaveNothingBehindThatDiffersFromTheSource) {
    source = LongPole::create();
    const auto to = LongPole::create();
    addNamedField<Pole>(*source, "Extra");
    addNamedField<Mark>(*to, "Old");
    to->Top().lock()->Height(3);
    addCustom(*source, "Gain", 1);
    const auto result = mergeResult(*to, *source, 0);
    EXPECT_EQ(result.fieldsAdded, 1u);
    EXPECT_EQ(result.fieldsRemoved, 1u);
    EXPECT_EQ(numDifferences(*to, *source), 0u);
}
