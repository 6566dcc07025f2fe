// Which values are the same, exactly and nearly.
#include "compare/ValueEquality.h"

#include <AttributeContainer/Attr.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace qormodel {
namespace {

using Point = QOR::Vec3d<double>;
using Points = std::vector<Point>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

template <class T> bool areSame(const T& a, const T& b, const Tolerance& tolerance = {}) {
    ac::CustAttr<T> first(std::nullopt);
    ac::CustAttr<T> second(std::nullopt);
    first.set(a);
    second.set(b);
    return isSameValue(first, second, tolerance);
}

const Tolerance library{true, std::nullopt};

TEST(ValueEquality, IsExactAtFirst) {
    EXPECT_TRUE(areSame(1.5, 1.5));
    EXPECT_FALSE(areSame(1.0, std::nextafter(1.0, 2.0)));
    EXPECT_TRUE(areSame<std::string>("a", "a"));
    EXPECT_FALSE(areSame<std::string>("a", "A"));
    EXPECT_FALSE((areSame<Points>({{1, 2, 3}}, {{1, 2, 3}, {4, 5, 6}})));
    EXPECT_FALSE((areSame<Points>({{1, 2, 3}}, {{1, 2, 4}})));
    EXPECT_TRUE((areSame<Points>({{1, 2, 3}}, {{1, 2, 3}})));
}

TEST(ValueEquality, TakesANotANumberForTheSameAsItselfAlone) {
    EXPECT_TRUE(areSame(nan, nan));
    EXPECT_FALSE(areSame(nan, 1.0));
    EXPECT_TRUE(areSame(nan, 1.0, library));
}

TEST(ValueEquality, TellsTypesApart) {
    ac::CustAttr<int> first(std::nullopt);
    ac::CustAttr<short> second(std::nullopt);

    EXPECT_FALSE(isSameValue(first, second));
    EXPECT_FALSE(isSameValue(first, second, library));
    EXPECT_FALSE(isSameValue(first, second, Tolerance{false, 1.0}));
}

TEST(ValueEquality, ForgivesDifferencesUpToANumber) {
    const Tolerance half{false, 0.5};

    EXPECT_TRUE(areSame(1.0, 1.5, half));
    EXPECT_FALSE(areSame(1.0, 1.75, half));
    EXPECT_TRUE((areSame<Points>({{1, 2, 3}}, {{1.5, 2, 2.5}}, half)));
    EXPECT_FALSE((areSame<Points>({{1, 2, 3}}, {{1, 2, 4}}, half)));
    EXPECT_FALSE(areSame(1, 2, Tolerance{false, 5.0}));  // whole numbers are exact
}

TEST(ValueEquality, ForgivesWhatTheLibraryForgives) {
    EXPECT_TRUE(areSame(1.0, 1.000004, library));
    EXPECT_FALSE(areSame(1.0, 1.000006, library));
    EXPECT_TRUE(areSame(Point{1, 2, 3}, Point{1, 2, 3.000000004}, library));
    EXPECT_FALSE(areSame(Point{1, 2, 3}, Point{1, 2, 3.000000006}, library));
    EXPECT_FALSE((areSame<Points>({{1, 2, 3}}, {{1, 2, 3.000000004}}, library)));
}

TEST(ValueEquality, ReadsATolerance) {
    EXPECT_TRUE(Tolerance::parse("library")->isLibrary);
    EXPECT_EQ(Tolerance::parse("1e-3")->greatest, 1e-3);
    EXPECT_FALSE(Tolerance::parse("-1"));
    EXPECT_FALSE(Tolerance::parse("nan"));
    EXPECT_FALSE(Tolerance::parse("1 mm"));
    EXPECT_FALSE(Tolerance::parse(""));
}

TEST(ValueEquality, CountsTheElementsInWhichListsDiffer) {
    ac::CustAttr<Points> first(std::nullopt);
    ac::CustAttr<Points> second(std::nullopt);
    first.set({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    second.set({{1, 2, 3}, {4, 5, 0}, {7, 8, 0}, {1, 1, 1}});

    const auto delta = compareLists(first, second);

    ASSERT_TRUE(delta);
    EXPECT_EQ(delta->firstSize, 3U);
    EXPECT_EQ(delta->secondSize, 4U);
    EXPECT_EQ(delta->numDifferent, 2U);
    EXPECT_EQ(delta->place, 1U);
}

TEST(ValueEquality, CountsNoElementsOfWhatIsNoList) {
    ac::CustAttr<double> number(std::nullopt);
    ac::CustAttr<std::string> text(std::nullopt);

    EXPECT_FALSE(compareLists(number, number));
    EXPECT_FALSE(compareLists(text, text));
}

}  // namespace
}  // namespace qormodel
