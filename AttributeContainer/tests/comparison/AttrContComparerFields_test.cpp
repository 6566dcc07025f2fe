#include <AttributeContainer/AttrContComparer.h>

#include "support/Containers.h"
#include "support/RecordingComparer.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr int onlyInSecond = AttrContComparer::ignoreOnlyInSecond;
constexpr int onlyInFirst = AttrContComparer::ignoreOnlyInFirst;

// A field that has the name of its slot, and so two attributes: that one and "Gain".
std::shared_ptr<AttrContainer> addGain(AttrContainer& container, const std::string& name,
                                       double gain) {
    const auto field = AttrContainer::create();
    field->name(name);
    addCustom(*field, "Gain", gain);
    return container.addField(field, name, 0) ? field : nullptr;
}

struct AttrContComparerFields : testing::Test {
    std::uint64_t compare(int mode = 0, int categories = -1) const {
        comparer.setCategories(categories);
        comparer.setCompareMode(mode);
        return comparer.compare(*first, *second);
    }

    std::shared_ptr<AttrContainer> first = AttrContainer::create();
    std::shared_ptr<AttrContainer> second = AttrContainer::create();
    mutable RecordingComparer comparer;
};

}  // namespace

TEST_F(AttrContComparerFields, ArePairedByName) {
    addGain(*first, "A", 1);
    addGain(*first, "B", 2);
    addGain(*second, "B", 2);
    addGain(*second, "A", 3);
    EXPECT_EQ(compare(), 1u);
    EXPECT_EQ(comparer.calls, (Names{"+A", "Gain|Gain", "-A", "+B", "-B"}));
}

TEST_F(AttrContComparerFields, AreWalkedToTheBottom) {
    addGain(*addGain(*addGain(*first, "A", 1), "B", 1), "C", 1);
    addGain(*addGain(*addGain(*second, "A", 1), "B", 1), "C", 2);
    EXPECT_EQ(compare(), 1u);
    EXPECT_EQ(comparer.calls, (Names{"+A", "+B", "+C", "Gain|Gain", "-C", "-B", "-A"}));
}

TEST_F(AttrContComparerFields, OfTheFirstAloneCountWithTheirAttributesUnlessBitTwoIsSet) {
    addGain(*addGain(*first, "A", 1), "B", 1);
    EXPECT_EQ(compare(), 4u);
    EXPECT_EQ(comparer.calls, (Names{"+A", "Name|", "Gain|", "+B", "Name|", "Gain|", "-B", "-A"}));
    EXPECT_EQ(compare(onlyInSecond), 4u);
    EXPECT_EQ(compare(onlyInFirst), 0u);
    EXPECT_EQ(comparer.calls, (Names{"+A", "-A"}));
}

TEST_F(AttrContComparerFields, OfTheSecondAloneCountWithTheirAttributesUnlessBitOneIsSet) {
    addGain(*second, "A", 1);
    EXPECT_EQ(compare(), 2u);
    EXPECT_EQ(comparer.calls, (Names{"+A", "|Name", "|Gain", "-A"}));
    EXPECT_EQ(compare(onlyInFirst), 2u);
    EXPECT_EQ(compare(onlyInSecond), 0u);
    EXPECT_TRUE(comparer.calls.empty());
}

TEST_F(AttrContComparerFields, OfOneSideAloneCountTheActiveCategoriesOnly) {
    addGain(*second, "A", 1);
    EXPECT_EQ(compare(0, AttrDefinition::nameRow), 1u);
    EXPECT_EQ(compare(0, AttrDefinition::custom), 1u);
    EXPECT_EQ(compare(0, AttrDefinition::domain), 0u);
}

TEST_F(AttrContComparerFields, OfTheSecondAloneAreNotReachedBelowTheLengthOfTheFirstList) {
    addGain(*first, "A", 1);
    addGain(*second, "B", 1);
    EXPECT_EQ(compare(onlyInFirst), 0u);  // "B" stands where the first one has "A"
    EXPECT_EQ(compare(), 2u);             // the two of "A"
}

TEST_F(AttrContComparerFields, BehindTheLengthOfTheFirstListCountAlsoWhereTheyArePaired) {
    addGain(*first, "A", 1);
    addGain(*second, "B", 1);
    addGain(*second, "A", 1);
    EXPECT_EQ(compare(), 2u);
    EXPECT_EQ(comparer.calls, (Names{"+A", "-A", "+A", "|Name", "|Gain", "-A"}));
}

TEST_F(AttrContComparerFields, BehindTheFirstListAreNotReachedWhereBothAreOfOneLength) {
    addGain(*first, "A", 1);
    addGain(*first, "B", 1);
    addGain(*second, "A", 1);
    addGain(*second, "C", 1);
    EXPECT_EQ(compare(onlyInFirst), 0u);
}

TEST_F(AttrContComparerFields, InADeclaredSlotGoByTheNameOfTheSlot) {
    const auto a = Pole::create();
    const auto b = Pole::create();
    b->Mark().lock()->Height(2);
    a->Top().lock()->name("lamp");
    b->Top().lock()->name("torch");
    const RecordingComparer record;
    EXPECT_EQ(record.compare(*a, *b), 2u);
    EXPECT_EQ(record.calls,
              (Names{"+Mark", "Height|Height", "-Mark", "+lamp", "Name|Name", "-lamp"}));
}

TEST_F(AttrContComparerFields, WithoutANameOfTheirSlotGoByTheirOwn) {
    const auto field = AttrContainer::create();
    {
        const BlockObserver noGuard;  // no name that a container would take
        field->name("");
    }
    first->addField(field, "", AddFlags::SkipNameTest);
    field->name("A");
    EXPECT_EQ(first->getFieldName(0), "");
    addGain(*second, "A", 1);
    EXPECT_EQ(compare(onlyInSecond), 0u);  // both are "A"
    EXPECT_EQ(compare(), 1u);              // "Gain"
}

TEST_F(AttrContComparerFields, ThatTheFirstLacksInADeclaredSlotCountForTheSecond) {
    const auto a = Pole::create();
    const auto b = Pole::create();
    a->setField(Pole::MarkField, nullptr);
    const RecordingComparer record;
    EXPECT_EQ(record.compare(*a, *b), 4u);
    EXPECT_EQ(record.calls,
              (Names{"+", "|Name", "|Label", "|Height", "|Count", "-", "+Top", "-Top"}));
    EXPECT_EQ(RecordingComparer(-1, onlyInSecond).compare(*a, *b), 0u);
}

TEST_F(AttrContComparerFields, ThatTheSecondLacksInADeclaredSlotCountForTheFirst) {
    const auto a = Pole::create();
    const auto b = Pole::create();
    b->setField(Pole::MarkField, nullptr);
    EXPECT_EQ(RecordingComparer().compare(*a, *b), 4u);
    EXPECT_EQ(RecordingComparer(-1, onlyInFirst).compare(*a, *b), 0u);
}

TEST_F(AttrContComparerFields, ThatBothLackInADeclaredSlotCountNothing) {
    const auto a = Pole::create();
    const auto b = Pole::create();
    a->setField(Pole::MarkField, nullptr);
    b->setField(Pole::MarkField, nullptr);
    EXPECT_EQ(RecordingComparer().compare(*a, *b), 0u);
}

TEST_F(AttrContComparerFields, CountNothingByThemselves) {
    addNamedField(*first, "A");
    EXPECT_EQ(compare(0, AttrDefinition::custom), 0u);
}

// What derived classes can call --------------------------------------------------------------

TEST_F(AttrContComparerFields, AreComparedWhereOneOrBothAreMissing) {
    addCustom(*first, "Gain", 1);
    using None = RecordingComparer::OptionalContainer;
    const RecordingComparer exact;
    EXPECT_EQ(exact.runComparison(std::nullopt, std::nullopt), 0u);
    EXPECT_EQ(exact.runComparison(None(*first), std::nullopt), 2u);
    EXPECT_EQ(exact.runComparison(std::nullopt, None(*first)), 2u);
    EXPECT_EQ(exact.calls, (Names{"Name|", "Gain|", "|Name", "|Gain"}));
    const RecordingComparer neither(-1, onlyInFirst | onlyInSecond);
    EXPECT_EQ(neither.runComparison(None(*first), std::nullopt), 0u);
    EXPECT_EQ(neither.runComparison(std::nullopt, None(*first)), 0u);
    EXPECT_TRUE(neither.calls.empty());
}

TEST_F(AttrContComparerFields, OfOneSideAreAddedWhateverTheModeSays) {
    addGain(*addGain(*first, "A", 1), "B", 1);
    const RecordingComparer record(AttrDefinition::custom, onlyInFirst | onlyInSecond);
    EXPECT_EQ(record.addAttributes(std::nullopt, true), 0u);
    EXPECT_EQ(record.addAttributes(RecordingComparer::OptionalContainer(*first), true), 2u);
    EXPECT_EQ(record.calls, (Names{"+A", "|Gain", "+B", "|Gain", "-B", "-A"}));
}
