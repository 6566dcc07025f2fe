#include <AttributeContainer/AttrContComparer.h>

#include "support/Containers.h"
#include "support/HoledContainer.h"
#include "support/RecordingComparer.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <limits>
#include <typeinfo>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr int onlyInSecond = AttrContComparer::ignoreOnlyInSecond;
constexpr int onlyInFirst = AttrContComparer::ignoreOnlyInFirst;
constexpr int tolerance = AttrContComparer::withTolerance;

// Two containers with nothing but their name, which is that of the class.
struct AttrContComparerTest : testing::Test {
    std::uint64_t compare(int mode = 0, int categories = -1) const {
        return AttrContComparer(categories, mode).compare(*first, *second);
    }

    std::shared_ptr<AttrContainer> first = AttrContainer::create();
    std::shared_ptr<AttrContainer> second = AttrContainer::create();
};

}  // namespace

TEST(AttrContComparer, KeepsItsCategoriesAndMode) {
    AttrContComparer comparer(6, 3);
    EXPECT_EQ(comparer.getCategories(), 6);
    EXPECT_EQ(comparer.getCompareMode(), 3);
    comparer.setCategories(16);
    comparer.setCompareMode(4);
    EXPECT_EQ(comparer.getCategories(), 16);
    EXPECT_EQ(comparer.getCompareMode(), 4);
}

TEST(AttrContComparer, HasModeBitsOneTwoAndFour) {
    EXPECT_EQ(onlyInSecond, 1);
    EXPECT_EQ(onlyInFirst, 2);
    EXPECT_EQ(tolerance, 4);
}

TEST_F(AttrContComparerTest, FindsNothingBetweenAContainerAndItself) {
    addCustom(*first, "Gain", 2.5);
    addCustom(*first, "Broken", std::numeric_limits<double>::quiet_NaN());
    addCustom(*addNamedField(*first, "Lens"), "Width", 3);
    for (int mode = 0; mode < 8; ++mode)
        EXPECT_EQ(AttrContComparer(-1, mode).compare(*first, *first), 0u) << mode;
}

TEST_F(AttrContComparerTest, PairsAttributesByNameAndNotByPlace) {
    addCustom(*first, "Gain", 2.5);
    addCustom(*first, "Width", 3);
    addCustom(*second, "Width", 3);
    addCustom(*second, "Gain", 2.5);
    EXPECT_EQ(compare(), 0u);
}

TEST_F(AttrContComparerTest, CountsEachAttributeThatDiffers) {
    addCustom(*first, "Gain", 2.5);
    addCustom(*second, "Gain", 2.75);
    [[maybe_unused]] const auto refused = second->setName("other");
    EXPECT_EQ(compare(), 2u);
}

TEST_F(AttrContComparerTest, CountsAttributesOfUnlikeTypes) {
    addCustom(*first, "Gain", 2);
    addCustom(*second, "Gain", 2.0);
    EXPECT_EQ(compare(), 1u);
    EXPECT_EQ(compare(tolerance), 1u);
}

TEST_F(AttrContComparerTest, CountsAnAttributeOfTheSecondAloneUnlessBitOneIsSet) {
    addCustom(*second, "Gain", 2.5);
    EXPECT_EQ(compare(), 1u);
    EXPECT_EQ(compare(onlyInFirst), 1u);
    EXPECT_EQ(compare(onlyInSecond), 0u);
}

TEST_F(AttrContComparerTest, CountsAnAttributeOfTheFirstAloneUnlessBitTwoIsSet) {
    addCustom(*first, "Gain", 2.5);
    EXPECT_EQ(compare(), 1u);
    EXPECT_EQ(compare(onlyInSecond), 1u);
    EXPECT_EQ(compare(onlyInFirst), 0u);
}

TEST_F(AttrContComparerTest, CountsNothingWhereNoCategoryIsActive) {
    addCustom(*first, "Gain", 2.5);
    addCustom(*first, "Width", 1);
    addCustom(*second, "Width", 2);
    addCustom(*second, "Height", 2);
    addNamedField(*first, "Lens");
    addNamedField(*second, "Filter");
    addNamedField(*second, "Shade");
    EXPECT_NE(compare(), 0u);
    EXPECT_EQ(compare(0, 0), 0u);
}

TEST_F(AttrContComparerTest, LooksAtTheActiveCategoriesAlone) {
    const auto a = TallMark::create();
    const auto b = TallMark::create();
    b->name("other");          // category 4
    b->Height(2);              // 18
    b->Count(8);               // 18
    b->Cached(1);              // 48
    addCustom(*b, "Gain", 1);  // 64
    EXPECT_EQ(AttrContComparer(4, 0).compare(*a, *b), 1u);
    EXPECT_EQ(AttrContComparer(2, 0).compare(*a, *b), 2u);
    EXPECT_EQ(AttrContComparer(16, 0).compare(*a, *b), 3u);
    EXPECT_EQ(AttrContComparer(32, 0).compare(*a, *b), 1u);
    EXPECT_EQ(AttrContComparer(64, 0).compare(*a, *b), 1u);
    EXPECT_EQ(AttrContComparer(-1, 0).compare(*a, *b), 5u);
}

// "Height" of the first is no domain attribute, but at its place the second one has "Label".
TEST_F(AttrContComparerTest, TakesAPairInForTheCategoryOfTheSecondOnesNeighbour) {
    const auto mark = Mark::create();
    addCustom(*first, "Height", 2.0);  // token 1
    EXPECT_EQ(AttrContComparer(AttrDefinition::domain, onlyInSecond).compare(*first, *mark), 1u);
}

// "Height" of the second is a domain attribute, but at token 4 it has none.
TEST_F(AttrContComparerTest, PassesAPairOverForTheCategoryAtThePlaceOfTheFirst) {
    const auto mark = Mark::create();
    for (const char* filler : {"A", "B", "C"}) addCustom(*first, filler, 0);
    addCustom(*first, "Height", 2.0);  // token 4
    EXPECT_EQ(AttrContComparer(AttrDefinition::domain, onlyInSecond).compare(*first, *mark), 0u);
}

TEST_F(AttrContComparerTest, TakesAPairInForTheCategoryOfTheFirst) {
    const auto mark = Mark::create();
    addCustom(*second, "Height", 2.0);  // token 1, while that of the first is 2
    EXPECT_EQ(AttrContComparer(AttrDefinition::domain, onlyInFirst).compare(*mark, *second), 1u);
}

// At token 2 the second one has nothing, and what has no row counts as a custom attribute.
TEST_F(AttrContComparerTest, TakesAPairInForTheCategoryOfAPlaceThatTheSecondDoesNotHave) {
    const auto mark = Mark::create();
    addCustom(*second, "Height", 2.0);  // token 1, while that of the first is 2
    EXPECT_EQ(AttrContComparer(AttrDefinition::custom, onlyInFirst).compare(*mark, *second), 1u);
}

// The second one knows it by its first name alone, so the second name has found no counterpart.
TEST_F(AttrContComparerTest, CountsAnAttributeOfTheSecondThatStandsThereUnderTwoNames) {
    addCustom(*first, "A", 1);
    addCustom(*first, "B", 1);
    second->addAttribute(addCustom(*second, "A", 1), "B");
    const RecordingComparer comparer;
    EXPECT_EQ(comparer.compare(*first, *second), 1u);
    EXPECT_EQ(comparer.calls, (Names{"|A"}));
    EXPECT_EQ(compare(onlyInSecond), 0u);
}

TEST_F(AttrContComparerTest, PassesOverADeclaredAttributeThatIsNotThere) {
    const auto a = Holed::make();
    const auto b = Holed::make();
    addCustom(*a, "Gain", 1);
    addCustom(*b, "Gain", 1);
    first->name("Holed");
    addCustom(*first, "Gain", 1);
    for (int mode = 0; mode < 8; ++mode) {
        const AttrContComparer comparer(-1, mode);
        EXPECT_EQ(comparer.compare(*a, *b), 0u) << mode;
        EXPECT_EQ(comparer.compare(*a, *first), 0u) << mode;
        EXPECT_EQ(comparer.compare(*first, *a), 0u) << mode;
    }
    second->addField(a, "Lens", 0);
    first->rmAttribute("Gain");
    first->name("AttrContainer");
    EXPECT_EQ(compare(), 2u);  // "Name" and "Gain" of the field
}

TEST_F(AttrContComparerTest, DoesNotLookAtTheChildrenOfObjects) {
    const auto a = named("root");
    const auto b = named("root");
    addNamed(*a, "one");
    addNamed(*b, "two");
    addNamed(*b, "three");
    EXPECT_EQ(AttrContComparer(-1, 0).compare(*a, *b), 0u);
}

TEST_F(AttrContComparerTest, ForgivesWithTheToleranceWhatItCountsWithoutIt) {
    addCustom(*first, "Gain", 1.0);
    addCustom(*second, "Gain", 1.000001);
    EXPECT_EQ(compare(), 1u);
    EXPECT_EQ(compare(tolerance), 0u);
}

TEST_F(AttrContComparerTest, CountsADifferenceThatRoundsToOneStep) {
    addCustom(*first, "Gain", 1.0);
    addCustom(*second, "Gain", 1.00001);
    EXPECT_EQ(compare(tolerance), 1u);
}

TEST_F(AttrContComparerTest, ThrowsWithTheToleranceForAnAttributeOfTheFirstAlone) {
    addCustom(*first, "Gain", 1.0);
    EXPECT_THROW(compare(tolerance), std::bad_typeid);
    EXPECT_EQ(compare(tolerance | onlyInFirst), 0u);
}

TEST_F(AttrContComparerTest, ThrowsWithTheToleranceForAnAttributeOfTheSecondAlone) {
    addCustom(*second, "Gain", 1.0);
    EXPECT_THROW(compare(tolerance), std::bad_typeid);
    EXPECT_EQ(compare(tolerance | onlyInSecond), 0u);
}

TEST_F(AttrContComparerTest, StartsAnewAfterAComparisonThatThrew) {
    addCustom(*addNamedField(*first, "Lens"), "Gain", 1.0);
    addNamedField(*second, "Lens");
    const AttrContComparer comparer(-1, tolerance);
    EXPECT_THROW(comparer.compare(*first, *second), std::bad_typeid);
    EXPECT_EQ(comparer.compare(*second, *second), 0u);
}

TEST_F(AttrContComparerTest, TellsDerivedClassesOfEachPairThatDiffersInTheOrderOfTheFirst) {
    addCustom(*first, "A", 1);
    addCustom(*first, "B", 1);
    addCustom(*first, "C", 1);
    addCustom(*second, "D", 1);
    addCustom(*second, "C", 2);
    addCustom(*second, "B", 1);
    const RecordingComparer comparer;
    EXPECT_EQ(comparer.compare(*first, *second), 3u);
    EXPECT_EQ(comparer.calls, (Names{"A|", "C|C", "|D"}));
}

TEST_F(AttrContComparerTest, CountsWhatDerivedClassesMakeOfEachPair) {
    class Triple : public AttrContComparer {
    public:
        Triple() : AttrContComparer(-1, 0) {}
        std::uint64_t handleAttributes(const Attribute*, const Attribute*) const override {
            return 3;
        }
    };
    addCustom(*first, "A", 1);
    addCustom(*addNamedField(*first, "Lens"), "B", 1);  // and its name
    EXPECT_EQ(Triple().compare(*first, *second), 9u);
}

TEST_F(AttrContComparerTest, CanBeCopiedAndAssigned) {
    addCustom(*first, "A", 1);
    const AttrContComparer original(64, onlyInSecond);
    const AttrContComparer copy(original);
    AttrContComparer assigned(0, 0);
    assigned = original;
    for (const auto* comparer : {&copy, &std::as_const(assigned)}) {
        EXPECT_EQ(comparer->getCategories(), 64);
        EXPECT_EQ(comparer->getCompareMode(), onlyInSecond);
        EXPECT_EQ(comparer->compare(*first, *second), 1u);
    }
}
