// When two attributes are equal.
#include <AttributeContainer/Attr.h>
#include <AttributeContainer/CachedAttributeInfo.h>

#include "support/Containers.h"
#include "support/FreeAttribute.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

const double notANumber = std::numeric_limits<double>::quiet_NaN();
const float notANumberF = std::numeric_limits<float>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

// Compares both ways round, by both operators, and through the base class.
template <class T>
bool equal(const T& a, const T& b) {
    const auto left = attributeOf(a);
    const auto right = attributeOf(b);
    const Attribute& base = *right;
    const bool result = *left == *right;
    EXPECT_EQ(*right == *left, result);
    EXPECT_EQ(*left != *right, !result);
    EXPECT_EQ(*left == base, result);
    EXPECT_EQ(base == *left, result);
    EXPECT_EQ(base != *left, !result);
    return result;
}

template <class T>
Mat4d<T> matrixWith(std::size_t index, T value) {
    Mat4d<T> matrix;
    matrix[index] = value;
    return matrix;
}

}  // namespace

TEST(AttrComparison, IsFalseBetweenTypesWithoutALookAtTheValues) {
    const auto number = attributeOf(1);
    const auto real = attributeOf(1.0);

    EXPECT_FALSE(*number == *real);
    EXPECT_TRUE(*number != *real);
    EXPECT_FALSE(*number == *attributeOf(std::int64_t{1}));
    EXPECT_FALSE(static_cast<const Attribute&>(*real) == *number);
}

TEST(AttrComparison, WorksBetweenTheTwoKindsOfPlace) {
    const auto mark = Mark::create();
    const CustAttr<int> custom(std::nullopt);

    EXPECT_FALSE(mark->Attr_Count() == custom);
    mark->Count(0);
    EXPECT_TRUE(mark->Attr_Count() == custom);
    EXPECT_FALSE(custom != mark->Attr_Count());
    EXPECT_FALSE(mark->Attr_Count() == mark->Attr_Height());
}

TEST(AttrComparison, IsByValueForIntegersAndBool) {
    EXPECT_TRUE(equal(3, 3));
    EXPECT_FALSE(equal(3, 4));
    EXPECT_FALSE(equal<signed char>(1, -1));
    EXPECT_FALSE(equal<unsigned char>(200, 201));
    EXPECT_TRUE(equal<std::uint64_t>(~0ull, ~0ull));
    EXPECT_FALSE(equal(true, false));
    EXPECT_TRUE(equal(true, true));
}

TEST(AttrComparison, HasNoTolerance) {
    EXPECT_FALSE(equal(1.0, std::nextafter(1.0, 2.0)));
    EXPECT_FALSE(equal(1.0, -1.0));
    EXPECT_TRUE(equal(0.0, -0.0));
    EXPECT_TRUE(equal(infinity, infinity));
    EXPECT_FALSE(equal(infinity, -infinity));
}

TEST(AttrComparison, TakesNotANumberForAnything) {
    EXPECT_TRUE(equal(notANumber, 1.0));
    EXPECT_TRUE(equal(notANumber, notANumber));
    EXPECT_TRUE(equal(notANumber, infinity));
}

TEST(AttrComparison, GoesComponentByComponent) {
    EXPECT_TRUE(equal(Vec3d<double>(1, 2, 3), Vec3d<double>(1, 2, 3)));
    EXPECT_FALSE(equal(Vec3d<double>(1, 2, 3), Vec3d<double>(1, 2, 4)));
    EXPECT_TRUE(equal(Vec3d<double>(1, notANumber, 3), Vec3d<double>(1, 2, 3)));
    EXPECT_FALSE(equal(Vec3d<double>(1, notANumber, 3), Vec3d<double>(1, 2, 4)));
    EXPECT_TRUE(equal(Vec3d<float>(notANumberF, notANumberF, notANumberF), Vec3d<float>(1, 2, 3)));
    EXPECT_TRUE(equal(Vec4d<double>(1, 2, 3, notANumber), Vec4d<double>(1, 2, 3, 4)));
    EXPECT_FALSE(equal(Vec4d<float>(1, 2, 3, 4), Vec4d<float>(1, 2, 3, 5)));
    EXPECT_TRUE(equal(SVec2d<double>(notANumber, 2), SVec2d<double>(1, 2)));
    EXPECT_FALSE(equal(SVec2d<float>(1, 2), SVec2d<float>(2, 1)));
    EXPECT_FALSE(equal(SVec2d<int>(1, 2), SVec2d<int>(1, 3)));
    EXPECT_FALSE(equal(SVec3d<unsigned short>(1, 2, 3), SVec3d<unsigned short>(1, 2, 4)));
}

TEST(AttrComparison, LooksAtAllSixteenNumbersOfAMatrix) {
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_FALSE(equal(Mat4d<double>(), matrixWith(i, 1.0))) << i;
        EXPECT_FALSE(equal(Mat4d<float>(), matrixWith(i, 1.0f))) << i;
        EXPECT_TRUE(equal(Mat4d<double>(), matrixWith(i, notANumber))) << i;
    }
    EXPECT_TRUE(equal(Mat4d<double>::identity(), Mat4d<double>::identity()));
}

TEST(AttrComparison, ComparesListsElementByElement) {
    using Doubles = std::vector<double>;
    EXPECT_TRUE(equal(Doubles{1, notANumber}, Doubles{1, 2}));
    EXPECT_FALSE(equal(Doubles{1}, Doubles{1, 2}));
    EXPECT_FALSE(equal(Doubles{1, 2}, Doubles{2, 1}));
    EXPECT_TRUE(equal(Doubles{}, Doubles{}));
    using Points = std::vector<Vec3d<double>>;
    EXPECT_TRUE(equal(Points{{1, 2, notANumber}}, Points{{1, 2, 3}}));
    EXPECT_FALSE(equal(Points{{1, 2, 3}}, Points{{1, 2, 4}}));
    using Polygons = std::vector<Points>;
    EXPECT_TRUE(equal(Polygons{{{1, notANumber, 3}}, {}}, Polygons{{{1, 2, 3}}, {}}));
    EXPECT_FALSE(equal(Polygons{{{1, 2, 3}}, {}}, Polygons{{}, {{1, 2, 3}}}));
    using Matrices = std::vector<Mat4d<double>>;
    EXPECT_TRUE(equal(Matrices{matrixWith(5, notANumber)}, Matrices{{}}));
    using Bools = std::vector<bool>;
    EXPECT_FALSE(equal(Bools{true}, Bools{false}));
    EXPECT_TRUE(equal(Bools{true, false}, Bools{true, false}));
}

TEST(AttrComparison, ComparesSetsAndMapsPairwise) {
    using Set = std::set<std::string>;
    EXPECT_TRUE(equal(Set{"b", "a"}, Set{"a", "b"}));
    EXPECT_FALSE(equal(Set{"a"}, Set{"a", "b"}));
    EXPECT_TRUE(equal(StringMap{{"k", "v"}}, StringMap{{"k", "v"}}));
    EXPECT_FALSE(equal(StringMap{{"k", "v"}}, StringMap{{"k", "w"}}));
    EXPECT_FALSE(equal(StringMap{{"k", "v"}}, StringMap{{"j", "v"}}));
    const auto uuid = uuids::uuid::generate();
    EXPECT_TRUE(equal(std::set<uuids::uuid>{uuid}, std::set<uuids::uuid>{uuid}));
    EXPECT_FALSE(equal(std::set<uuids::uuid>{uuid}, {}));
}

TEST(AttrComparison, ComparesTextsByTheirBytes) {
    EXPECT_TRUE(equal<std::string>("a", "a"));
    EXPECT_FALSE(equal<std::string>("a", "A"));
    EXPECT_FALSE(equal(std::string("a\0b", 3), std::string("a\0c", 3)));
    EXPECT_FALSE(equal(JsonValue{"{}"}, JsonValue{"{ }"}));
    EXPECT_TRUE(equal(JsonValue{"{}"}, JsonValue{"{}"}));
}

TEST(AttrComparison, ComparesUuidsByValue) {
    const auto uuid = uuids::uuid::generate();
    EXPECT_TRUE(equal(uuid, uuid));
    EXPECT_FALSE(equal(uuid, uuids::uuid()));
}

TEST(AttrComparison, ComparesScanPointsByPositionAndColour) {
    const ScanPt point{{1, 2, 3}, {10, 20, 30, 255}};
    EXPECT_TRUE(equal(point, point));
    EXPECT_FALSE(equal(point, ScanPt{{1, 2, 4}, {10, 20, 30, 255}}));
    EXPECT_FALSE(equal(point, ScanPt{{1, 2, 3}, {10, 20, 30, 254}}));
}

TEST(AttrComparison, TakesNotANumberForAnythingInAScanPointToo) {
    const ScanPt point{{1, 2, 3}, {10, 20, 30, 255}};
    const ScanPt nowhere{{1, notANumberF, 3}, {10, 20, 30, 255}};
    EXPECT_TRUE(equal(point, nowhere));
    EXPECT_TRUE(equal(std::vector<ScanPt>{point}, std::vector<ScanPt>{nowhere}));
    EXPECT_FALSE(equal(nowhere, ScanPt{{1, 2, 4}, {10, 20, 30, 255}}));
}

TEST(AttrComparison, ComparesTheCurrentValueWhileAnotherOneIsPending) {
    const auto attribute = attributeOf(1);
    attribute->addNotifyInfo(std::make_shared<CachedAttributeInfo>(attributeOf(2)));

    Attribute::setIsCachedAttributePending(true);
    const bool equalToPending = *attribute == *attributeOf(2);
    const bool equalToOwn = *attributeOf(1) == *attribute;
    Attribute::setIsCachedAttributePending(false);

    EXPECT_TRUE(equalToPending);
    EXPECT_FALSE(equalToOwn);
    EXPECT_TRUE(*attribute == *attributeOf(1));
}

TEST(AttrComparison, FindsAnAttributeEqualToItself) {
    const auto attribute = attributeOf(std::vector<double>{notANumber});
    EXPECT_TRUE(*attribute == *attribute);
    EXPECT_FALSE(*attribute != *attribute);
}
