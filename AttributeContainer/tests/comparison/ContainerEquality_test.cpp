#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/HoledContainer.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <set>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Tokens = std::vector<std::uint64_t>;

// Selects by two sets, and writes down what it is asked.
class Selection : public AttrContainer::CompareSelectTokens {
public:
    bool includesAll() const override { return all; }
    bool includes(std::uint64_t token) const override {
        asked.push_back(token);
        return included.contains(token);
    }
    bool excludes(std::uint64_t token) const override { return excluded.contains(token); }

    bool all = false;
    std::set<std::uint64_t> included;
    std::set<std::uint64_t> excluded;
    mutable Tokens asked;
};

// Two containers of the class Mark: tokens 0 to 3, then what a test adds.
struct ContainerEquality : testing::Test {
    bool isEqual() const { return a->isEqualTo(*b, nullptr, nullptr); }
    Tokens differing(const AttrContainer::CompareSelectTokens* select = nullptr) const {
        Tokens tokens;
        const bool isEqualThere = a->isEqualTo(*b, &tokens, select);
        EXPECT_EQ(isEqualThere, tokens.empty());
        return tokens;
    }

    std::shared_ptr<Mark> a = Mark::create();
    std::shared_ptr<Mark> b = Mark::create();
};

}  // namespace

TEST_F(ContainerEquality, HoldsForAContainerAndItselfAndForEqualOnes) {
    EXPECT_TRUE(a->isEqualTo(*a, nullptr, nullptr));
    EXPECT_TRUE(isEqual());
    EXPECT_TRUE(differing().empty());
}

TEST_F(ContainerEquality, FailsForEqualAttributesInAnotherOrder) {
    addCustom(*a, "A", 1);
    addCustom(*a, "B", 2);
    addCustom(*b, "B", 2);
    addCustom(*b, "A", 1);
    EXPECT_FALSE(isEqual());
    EXPECT_EQ(differing(), (Tokens{4, 5}));
}

TEST_F(ContainerEquality, LooksAtPlacesAndNotAtNames) {
    addCustom(*a, "A", 1);
    addCustom(*b, "B", 1);
    EXPECT_TRUE(isEqual());
}

TEST_F(ContainerEquality, IsExactAndByTypes) {
    addCustom(*a, "A", 1.0);
    const auto other = addCustom(*b, "A", 1.0 + 1e-15);
    EXPECT_FALSE(isEqual());
    other->set(1.0);
    EXPECT_TRUE(isEqual());
    addCustom(*a, "B", 1);
    addCustom(*b, "B", 1.0);
    EXPECT_EQ(differing(), (Tokens{5}));
}

TEST_F(ContainerEquality, GoesOnBehindTheFirstDifferenceToListThemAll) {
    b->name("other");
    b->Count(8);
    addCustom(*a, "A", 1);
    addCustom(*b, "A", 2);
    EXPECT_FALSE(isEqual());
    EXPECT_EQ(differing(), (Tokens{0, 3, 4}));
}

TEST_F(ContainerEquality, AppendsToTheListThatIsGiven) {
    b->Count(8);
    Tokens tokens{77};
    EXPECT_FALSE(a->isEqualTo(*b, &tokens, nullptr));
    EXPECT_EQ(tokens, (Tokens{77, 3}));
}

TEST_F(ContainerEquality, LeavesTheListAloneForTheContainerItself) {
    Tokens tokens{77};
    EXPECT_TRUE(a->isEqualTo(*a, &tokens, nullptr));
    EXPECT_EQ(tokens, (Tokens{77}));
}

TEST_F(ContainerEquality, FailsForUnlikeNumbersOfAttributes) {
    addCustom(*b, "A", 1);
    EXPECT_FALSE(isEqual());
    EXPECT_FALSE(b->isEqualTo(*a, nullptr, nullptr));
}

TEST_F(ContainerEquality, OverlooksWhatTheOtherHasMoreWhereAListOrASelectionIsGiven) {
    addCustom(*b, "A", 1);
    Selection all;
    all.all = true;
    EXPECT_TRUE(differing().empty());
    EXPECT_TRUE(a->isEqualTo(*b, nullptr, &all));
}

TEST_F(ContainerEquality, CountsWhatTheOtherLacksAsDiffering) {
    addCustom(*a, "A", 1);
    Selection all;
    all.all = true;
    EXPECT_EQ(differing(), (Tokens{4}));
    EXPECT_FALSE(a->isEqualTo(*b, nullptr, &all));
}

TEST_F(ContainerEquality, CountsADeclaredAttributeThatIsNotThereAsDiffering) {
    const auto holed = Holed::make();
    const auto other = Holed::make();
    EXPECT_TRUE(holed->isEqualTo(*holed, nullptr, nullptr));
    EXPECT_FALSE(holed->isEqualTo(*other, nullptr, nullptr));
    Tokens tokens;
    EXPECT_FALSE(holed->isEqualTo(*other, &tokens, nullptr));
    EXPECT_EQ(tokens, (Tokens{1}));
}

TEST_F(ContainerEquality, LooksAtTheIncludedTokensAlone) {
    b->Label("other");
    b->Count(8);
    Selection selection;
    EXPECT_TRUE(a->isEqualTo(*b, nullptr, &selection));
    EXPECT_EQ(selection.asked, (Tokens{0, 1, 2, 3}));
    selection.included = {2, 3};
    EXPECT_FALSE(a->isEqualTo(*b, nullptr, &selection));
    EXPECT_EQ(differing(&selection), (Tokens{3}));
}

TEST_F(ContainerEquality, PassesOverTheExcludedTokensWhetherIncludedOneByOneOrAllAtOnce) {
    b->Label("other");
    b->Count(8);
    Selection selection;
    selection.included = {0, 1, 2, 3};
    selection.excluded = {3};
    EXPECT_EQ(differing(&selection), (Tokens{1}));
    selection.all = true;
    EXPECT_EQ(differing(&selection), (Tokens{1}));
    selection.excluded = {1, 3};
    EXPECT_TRUE(a->isEqualTo(*b, nullptr, &selection));
}

TEST_F(ContainerEquality, StopsAtTheFirstDifferenceWithoutAList) {
    b->Label("other");
    Selection selection;
    selection.included = {0, 1, 2, 3};
    EXPECT_FALSE(a->isEqualTo(*b, nullptr, &selection));
    EXPECT_EQ(selection.asked, (Tokens{0, 1}));
}

TEST_F(ContainerEquality, DoesNotLookAtFieldsChildrenOrCategories) {
    addNamedField(*b, "Lens");
    EXPECT_TRUE(isEqual());
    const auto first = named("root");
    const auto second = named("root");
    addNamed(*second, "child");
    EXPECT_TRUE(first->isEqualTo(*second, nullptr, nullptr));
}

TEST_F(ContainerEquality, IsForTheClassToOverride) {
    class Twin : public ContainerClass<Twin, AttrContainer, "Twin"> {
    public:
        using Block::Block;
        bool isEqualTo(const AttrContainer&, std::vector<std::uint64_t>*,
                       const CompareSelectTokens*) const override {
            return true;
        }
    };
    const std::shared_ptr<const AttrContainer> twin = Twin::create();
    EXPECT_TRUE(twin->isEqualTo(*a, nullptr, nullptr));
}
