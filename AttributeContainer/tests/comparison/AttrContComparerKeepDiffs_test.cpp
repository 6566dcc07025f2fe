#include <AttributeContainer/AttrContComparerKeepDiffs.h>

#include "support/Containers.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <typeinfo>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

struct AttrContComparerKeepDiffsTest : testing::Test {
    Names mismatches() const {
        Names found;
        for (std::uint64_t i = 0; i < comparer.getNumMismatches(); ++i)
            found.push_back(comparer.getMismatch(i).value_or("(none)"));
        return found;
    }
    std::uint64_t compare() const { return comparer.compare(*first, *second); }

    std::shared_ptr<AttrContainer> first = AttrContainer::create();
    std::shared_ptr<AttrContainer> second = AttrContainer::create();
    AttrContComparerKeepDiffs comparer;
};

// Lets a test take a walk in steps.
class Stepper : public AttrContComparerKeepDiffs {
public:
    using AttrContComparerKeepDiffs::enterField;
    using AttrContComparerKeepDiffs::exitField;
    using AttrContComparerKeepDiffs::handleAttributes;
};

}  // namespace

TEST_F(AttrContComparerKeepDiffsTest, ComparesAllCategoriesExactly) {
    EXPECT_EQ(comparer.getCategories(), -1);
    EXPECT_EQ(comparer.getCompareMode(), 0);
}

TEST_F(AttrContComparerKeepDiffsTest, KeepsNothingOfAContainerAndItself) {
    addCustom(*first, "Gain", 2.5);
    addField(*first, "Lens");
    EXPECT_EQ(comparer.compare(*first, *first), 0u);
    EXPECT_EQ(comparer.getNumMismatches(), 0u);
}

TEST_F(AttrContComparerKeepDiffsTest, NamesAnAttributeOfTheSecondAlone) {
    addCustom(*second, "Gain", 2.5);
    EXPECT_EQ(compare(), 1u);
    EXPECT_EQ(mismatches(), (Names{"Gain"}));
    comparer.setCompareMode(AttrContComparer::ignoreOnlyInSecond);
    EXPECT_EQ(compare(), 0u);
    EXPECT_EQ(comparer.getNumMismatches(), 0u);
}

TEST_F(AttrContComparerKeepDiffsTest, TellsThePathOfTheFieldsWithoutALeadingSlash) {
    addCustom(*addField(*addField(*first, "Outer"), "Inner"), "Gain", 1);
    addCustom(*addField(*addField(*second, "Outer"), "Inner"), "Gain", 2);
    EXPECT_EQ(compare(), 1u);
    EXPECT_EQ(mismatches(), (Names{"Outer/Inner/Gain"}));
}

TEST_F(AttrContComparerKeepDiffsTest, ShortensThePathBehindEachField) {
    for (const auto& [container, gain] : {std::pair(first, 1), std::pair(second, 2)}) {
        addCustom(*container, "Gain", gain);
        addCustom(*addField(*addField(*container, "Long.name"), "B"), "Gain", gain);
        addCustom(*addField(*container, "C"), "Gain", gain);
    }
    EXPECT_EQ(compare(), 3u);
    EXPECT_EQ(mismatches(), (Names{"Gain", "Long.name/B/Gain", "C/Gain"}));
}

TEST_F(AttrContComparerKeepDiffsTest, PutsTheNameOfTheFieldItselfInThePathAndNotThatOfItsSlot) {
    const auto a = Pole::create();
    const auto b = Pole::create();
    a->Top().lock()->name("lamp");
    b->Top().lock()->name("lamp");
    b->Top().lock()->Height(3);
    EXPECT_EQ(comparer.compare(*a, *b), 1u);
    EXPECT_EQ(mismatches(), (Names{"lamp/Height"}));
}

TEST_F(AttrContComparerKeepDiffsTest, NamesThePathOfAFieldOfTheSecondAlone) {
    addCustom(*addField(*second, "Lens"), "Gain", 1);
    EXPECT_EQ(compare(), 2u);
    EXPECT_EQ(mismatches(), (Names{"Lens/Name", "Lens/Gain"}));
}

TEST_F(AttrContComparerKeepDiffsTest, AddsNothingToThePathForASlotThatHoldsNoField) {
    const auto a = Pole::create();
    const auto b = Pole::create();
    a->setField(Pole::MarkField, nullptr);
    b->Top().lock()->Height(3);
    EXPECT_EQ(comparer.compare(*a, *b), 5u);
    EXPECT_EQ(mismatches(), (Names{"Name", "Label", "Height", "Count", "Top/Height"}));
}

TEST_F(AttrContComparerKeepDiffsTest, ListsAlsoWhatTheToleranceForgives) {
    addCustom(*first, "Gain", 1.0);
    addCustom(*second, "Gain", 1.000001);
    comparer.setCompareMode(AttrContComparer::withTolerance);
    EXPECT_EQ(compare(), 0u);
    EXPECT_EQ(mismatches(), (Names{"Gain"}));
}

TEST_F(AttrContComparerKeepDiffsTest, ListsWhatMadeTheToleranceThrow) {
    addCustom(*first, "Gain", 1.0);
    comparer.setCompareMode(AttrContComparer::withTolerance);
    EXPECT_THROW(compare(), std::bad_typeid);
    EXPECT_EQ(mismatches(), (Names{"Gain"}));
}

TEST_F(AttrContComparerKeepDiffsTest, GivesNoMismatchAtTheSizeOrBehindIt) {
    addCustom(*first, "Gain", 1);
    compare();
    EXPECT_EQ(comparer.getMismatch(0), "Gain");
    EXPECT_EQ(comparer.getMismatch(1), std::nullopt);
    EXPECT_EQ(comparer.getMismatch(~std::uint64_t{0}), std::nullopt);
}

TEST_F(AttrContComparerKeepDiffsTest, ForgetsAtTheNextComparison) {
    addCustom(*addField(*first, "Lens"), "Gain", 1.0);
    comparer.setCompareMode(AttrContComparer::withTolerance);
    EXPECT_THROW(compare(), std::bad_typeid);  // in the middle of a field
    comparer.setCompareMode(0);
    addCustom(*first, "Width", 1);
    EXPECT_EQ(compare(), 3u);
    EXPECT_EQ(mismatches(), (Names{"Width", "Lens/Name", "Lens/Gain"}));
}

TEST_F(AttrContComparerKeepDiffsTest, GivesItsMismatchesToACopy) {
    addCustom(*first, "Gain", 1);
    compare();
    const AttrContComparerKeepDiffs copy(comparer);
    AttrContComparerKeepDiffs assigned;
    assigned = comparer;
    comparer.compare(*first, *first);
    EXPECT_EQ(copy.getMismatch(0), "Gain");
    EXPECT_EQ(assigned.getMismatch(0), "Gain");
    EXPECT_EQ(comparer.getNumMismatches(), 0u);
}

TEST_F(AttrContComparerKeepDiffsTest, GivesACopyThePathThatItHasReached) {
    const auto gain = addCustom(*first, "Gain", 1);
    const auto lens = addField(*first, "Lens");
    const Stepper walking;
    walking.enterField(*lens);
    const Stepper copy(walking);
    Stepper assigned;
    assigned = walking;
    for (const Stepper* comparer : {&copy, &std::as_const(assigned)}) {
        comparer->handleAttributes(gain.get(), nullptr);
        comparer->exitField(*lens);
        comparer->handleAttributes(nullptr, gain.get());
        EXPECT_EQ(comparer->getMismatch(0), "Lens/Gain");
        EXPECT_EQ(comparer->getMismatch(1), "Gain");
    }
    EXPECT_EQ(walking.getNumMismatches(), 0u);
}
