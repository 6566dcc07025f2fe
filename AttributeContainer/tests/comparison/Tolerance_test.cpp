#include <AttributeContainer/Attr.h>

#include "support/Containers.h"
#include "support/FreeAttribute.h"
#include "support/RecordingComparer.h"
#include "support/ValueSamples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <concepts>
#include <limits>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

// How many differences two values stand for where the tolerance is on.
template <class T> std::uint64_t differences(const T& a, const T& b) {
    const RecordingComparer comparer(-1, AttrContComparer::withTolerance);
    return comparer.handleAttributes(attributeOf(a).get(), attributeOf(b).get());
}

// One type that has a tolerance, with the scale of a difference.
template <class T, int Scale> struct Row {
    using Value = T;
    static constexpr double scale = Scale;
};
constexpr int coarse = 100000;
constexpr int fine = 100000000;
using Rows =
    testing::Types<Row<double, coarse>, Row<Vec3d<double>, fine>, Row<Vec4d<double>, fine>,
                   Row<Vec3d<float>, fine>, Row<Vec4d<float>, fine>, Row<SVec2d<double>, fine>,
                   Row<SVec2d<float>, fine>, Row<Mat4d<float>, coarse>, Row<Mat4d<double>, fine>,
                   Row<std::vector<double>, coarse>, Row<std::vector<Vec4d<double>>, fine>,
                   Row<std::vector<SVec2d<double>>, fine>,
                   Row<std::vector<std::vector<Vec3d<double>>>, fine>,
                   Row<std::vector<Vec3d<float>>, fine>, Row<std::vector<Mat4d<double>>, fine>>;

template <class T>
constexpr bool hasTolerance =
    std::same_as<T, double> || std::same_as<T, Vec3d<double>> || std::same_as<T, Vec4d<double>> ||
    std::same_as<T, Vec3d<float>> || std::same_as<T, Vec4d<float>> ||
    std::same_as<T, SVec2d<double>> || std::same_as<T, SVec2d<float>> ||
    std::same_as<T, Mat4d<float>> || std::same_as<T, Mat4d<double>> ||
    std::same_as<T, std::vector<double>> || std::same_as<T, std::vector<Vec4d<double>>> ||
    std::same_as<T, std::vector<SVec2d<double>>> ||
    std::same_as<T, std::vector<std::vector<Vec3d<double>>>> ||
    std::same_as<T, std::vector<Vec3d<float>>> || std::same_as<T, std::vector<Mat4d<double>>>;

// All components zero; lists have two elements.
template <class T> struct Zero {
    static T value() { return {}; }
};
template <class Element> struct Zero<std::vector<Element>> {
    static std::vector<Element> value() { return {Zero<Element>::value(), Zero<Element>::value()}; }
};

// Puts `number` into the component that `index` counts down to.
template <class T> void put(T& value, std::size_t& index, double number) {
    if constexpr (std::floating_point<T>) {
        if (index-- == 0) value = static_cast<T>(number);
    } else {
        for (std::size_t i = 0; i < value.size(); ++i) put(value[i], index, number);
    }
}

template <class T> std::size_t numComponents(const T& value) {
    if constexpr (std::floating_point<T>) {
        return 1;
    } else {
        std::size_t number = 0;
        for (std::size_t i = 0; i < value.size(); ++i) number += numComponents(value[i]);
        return number;
    }
}

// A value with one component that is not zero.
template <class T> T withComponent(std::size_t index, double number) {
    T value = Zero<T>::value();
    put(value, index, number);
    return value;
}

template <class RowOfTable> struct ToleranceRows : testing::Test {};
TYPED_TEST_SUITE(ToleranceRows, Rows);

template <class T> struct ToleranceTypes : testing::Test {};
TYPED_TEST_SUITE(ToleranceTypes, AllValues, WordOfType);

}  // namespace

TYPED_TEST(ToleranceRows, ForgiveLessThanHalfAStepInAnyComponent) {
    using T = typename TypeParam::Value;
    for (std::size_t i = 0; i < numComponents(Zero<T>::value()); ++i) {
        EXPECT_EQ(differences(Zero<T>::value(), withComponent<T>(i, 0.49 / TypeParam::scale)), 0u)
            << i;
        EXPECT_EQ(differences(withComponent<T>(i, 0.49 / TypeParam::scale), Zero<T>::value()), 0u)
            << i;
    }
}

TYPED_TEST(ToleranceRows, CountMoreThanHalfAStepInAnyComponent) {
    using T = typename TypeParam::Value;
    for (std::size_t i = 0; i < numComponents(Zero<T>::value()); ++i) {
        EXPECT_EQ(differences(Zero<T>::value(), withComponent<T>(i, 0.51 / TypeParam::scale)), 1u)
            << i;
        EXPECT_EQ(differences(withComponent<T>(i, 0.51 / TypeParam::scale), Zero<T>::value()), 1u)
            << i;
    }
}

TYPED_TEST(ToleranceRows, TakeNotANumberInAComponentForAnything) {
    using T = typename TypeParam::Value;
    for (std::size_t i = 0; i < numComponents(Zero<T>::value()); ++i) {
        EXPECT_EQ(differences(withComponent<T>(i, notANumber), withComponent<T>(i, 3)), 0u) << i;
        EXPECT_EQ(differences(withComponent<T>(i, infinity), withComponent<T>(i, infinity)), 0u)
            << i;
        EXPECT_EQ(differences(withComponent<T>(i, infinity), withComponent<T>(i, -infinity)), 1u)
            << i;
    }
}

TYPED_TEST(ToleranceRows, CountListsOfUnlikeSizes) {
    using T = typename TypeParam::Value;
    if constexpr (requires(T & value) { value.pop_back(); }) {
        T shorter = Zero<T>::value();
        shorter.pop_back();
        EXPECT_EQ(differences(shorter, Zero<T>::value()), 1u);
        EXPECT_EQ(differences(Zero<T>::value(), shorter), 1u);
    }
}

TEST(Tolerance, CountsListsOfListsWithUnlikeInnerSizes) {
    using Polygons = std::vector<std::vector<Vec3d<double>>>;
    EXPECT_EQ(differences(Polygons{{{1, 2, 3}}, {}}, Polygons{{{1, 2, 3}}, {{0, 0, 0}}}), 1u);
    EXPECT_EQ(differences(Polygons{{{1, 2, 3}}, {}}, Polygons{{{1, 2, 3}}, {}}), 0u);
}

TYPED_TEST(ToleranceTypes, CountEveryPairOfATypeWithoutTolerance) {
    const auto value = Sample<TypeParam>::value();
    EXPECT_EQ(differences(value, value), hasTolerance<TypeParam> ? 0u : 1u);
}

TEST(Tolerance, ForgivesNumbersThatDifferByATenthOfAStep) {
    EXPECT_EQ(differences(1.0, 1.000001), 0u);
}

TEST(Tolerance, CountsNumbersThatDifferByAStep) { EXPECT_EQ(differences(1.0, 1.00001), 1u); }

// 5e-9f times 1e8 is 0.499999997: a float product of it is 0.5 and rounds up, a double one does
// not.
TEST(Tolerance, ScalesInFloatWhereTheComponentsAreFloats) {
    EXPECT_EQ(differences(Vec3d<float>{}, Vec3d<float>{5e-9f, 0, 0}), 1u);
    EXPECT_EQ(differences(SVec2d<float>{}, SVec2d<float>{0, 5e-9f}), 1u);
    using Points = std::vector<Vec3d<float>>;
    EXPECT_EQ(differences(Points{{}}, Points{{0, 0, 5e-9f}}), 1u);
    Mat4d<float> matrix;
    matrix[7] = 5e-6f;  // 0.49999998737 with the coarser scale
    EXPECT_EQ(differences(Mat4d<float>{}, matrix), 1u);
}

TEST(Tolerance, ScalesTheFloatsOfAVectorOfFourInDouble) {
    EXPECT_EQ(differences(Vec4d<float>{}, Vec4d<float>{0, 0, 0, 5e-9f}), 0u);
}

// The exact difference, 5.00000006e-9, would round up; as a float it is 5e-9f.
TEST(Tolerance, SubtractsTheFloatsOfAVectorOfFourInFloat) {
    EXPECT_EQ(differences(Vec4d<float>{5e-9f, 0, 0, 0}, Vec4d<float>{-9e-17f, 0, 0, 0}), 0u);
}

TEST(Tolerance, IsCoarseForMatricesOfFloatsAlone) {
    Mat4d<float> ofFloats;
    ofFloats[0] = 1e-6f;
    Mat4d<double> ofDoubles;
    ofDoubles[0] = 1e-6;
    EXPECT_EQ(differences(Mat4d<float>{}, ofFloats), 0u);
    EXPECT_EQ(differences(Mat4d<double>{}, ofDoubles), 1u);
}

TEST(Tolerance, CountsTheSmallestDifferenceOfListsOfPointsInDouble) {
    using Points = std::vector<Vec3d<double>>;
    EXPECT_EQ(differences(Points{{1, 2, 3}}, Points{{1, 2, 3 + 1e-12}}), 1u);
}

TEST(Tolerance, CountsUnlikeTypes) {
    const RecordingComparer comparer(-1, AttrContComparer::withTolerance);
    EXPECT_EQ(comparer.handleAttributes(attributeOf(1.0).get(), attributeOf(1).get()), 1u);
    EXPECT_EQ(comparer.handleAttributes(attributeOf(Vec3d<double>{}).get(),
                                        attributeOf(Vec3d<float>{}).get()),
              1u);
}

TEST(Tolerance, CountsADeclaredAttributeAgainstAnAddedOneOfTheSameValueType) {
    const auto mark = Mark::create();
    const RecordingComparer comparer(-1, AttrContComparer::withTolerance);
    EXPECT_EQ(comparer.handleAttributes(&mark->Attr_Height(), attributeOf(1.75).get()), 1u);
}

TEST(Tolerance, IsNotAskedUnlessTheModeHasIt) {
    const RecordingComparer comparer(-1, ~AttrContComparer::withTolerance);
    EXPECT_EQ(comparer.handleAttributes(attributeOf(1.0).get(), attributeOf(1.0).get()), 1u);
    EXPECT_EQ(comparer.handleAttributes(attributeOf(1.0).get(), nullptr), 1u);
    EXPECT_EQ(comparer.handleAttributes(nullptr, attributeOf(1.0).get()), 1u);
}
