#include <QOR/Vec.h>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

using namespace QOR;

template <class Vector> class VecOf : public testing::Test {};

using Vectors =
    testing::Types<Vec3d<float>, Vec3d<double>, Vec4d<float>, Vec4d<double>, Vec4d<unsigned char>,
                   SVec2d<int>, SVec2d<unsigned int>, SVec2d<unsigned short>, SVec2d<float>,
                   SVec2d<double>, SVec3d<unsigned short>, SVec3d<unsigned int>, SVec3d<int>,
                   SVec3d<float>, SVec3d<double>>;
TYPED_TEST_SUITE(VecOf, Vectors);

TYPED_TEST(VecOf, IsAPlainValue) {
    EXPECT_TRUE(std::is_trivially_copyable_v<TypeParam>);
    EXPECT_FALSE(std::is_polymorphic_v<TypeParam>);
    EXPECT_EQ(sizeof(TypeParam), TypeParam::size() * sizeof(typename TypeParam::value_type));
}

TYPED_TEST(VecOf, IsZeroAtFirst) {
    const TypeParam vector;
    for (std::size_t i = 0; i < TypeParam::size(); ++i) EXPECT_EQ(vector[i], 0);
}

TYPED_TEST(VecOf, KeepsEveryComponentByItself) {
    using Number = typename TypeParam::value_type;
    TypeParam vector;
    for (std::size_t i = 0; i < TypeParam::size(); ++i) vector[i] = static_cast<Number>(i + 1);

    const auto& constant = vector;
    for (std::size_t i = 0; i < TypeParam::size(); ++i)
        EXPECT_EQ(constant[i], static_cast<Number>(i + 1));
}

TYPED_TEST(VecOf, DiffersInAnyComponent) {
    const TypeParam zero;
    EXPECT_TRUE(zero == TypeParam{});
    EXPECT_FALSE(zero != TypeParam{});
    for (std::size_t i = 0; i < TypeParam::size(); ++i) {
        TypeParam other;
        other[i] = 1;
        EXPECT_FALSE(zero == other);
        EXPECT_TRUE(zero != other);
    }
}

TEST(Vec, IndexFollowsTheOrderOfTheNamedComponents) {
    const SVec2d<int> pair{1, 2};
    EXPECT_EQ(pair[0], pair.x);
    EXPECT_EQ(pair[1], pair.y);
    const SVec3d<int> triple{1, 2, 3};
    EXPECT_EQ(triple[0], triple.x);
    EXPECT_EQ(triple[1], triple.y);
    EXPECT_EQ(triple[2], triple.z);
    const Vec3d<double> position{1, 2, 3};
    EXPECT_EQ(position[0], position.x);
    EXPECT_EQ(position[1], position.y);
    EXPECT_EQ(position[2], position.z);
    const Vec4d<double> four{1, 2, 3, 4};
    EXPECT_EQ(four[0], four.x);
    EXPECT_EQ(four[1], four.y);
    EXPECT_EQ(four[2], four.z);
    EXPECT_EQ(four[3], four.w);
}

TEST(Vec, TakesItsComponentsInOrder) {
    const Vec4d<unsigned char> colour(10, 20, 30, 40);

    EXPECT_EQ(colour.x, 10);
    EXPECT_EQ(colour.y, 20);
    EXPECT_EQ(colour.z, 30);
    EXPECT_EQ(colour.w, 40);
    EXPECT_EQ(SVec2d<int>(-1, 2).x, -1);
    EXPECT_EQ(SVec2d<int>(-1, 2).y, 2);
}

TEST(Vec, ComesApartLikeAPair) {
    const auto [first, second] = SVec2d<int>{7, 8};

    EXPECT_EQ(first, 7);
    EXPECT_EQ(second, 8);
}

TEST(Vec, TellsItsSize) {
    EXPECT_EQ(SVec2d<int>::size(), 2u);
    EXPECT_EQ(SVec3d<int>::size(), 3u);
    EXPECT_EQ(Vec3d<double>::size(), 3u);
    EXPECT_EQ(Vec4d<double>::size(), 4u);
}

TEST(Vec, ComparesFloatingComponentsAsNumbers) {
    const auto nan = std::numeric_limits<double>::quiet_NaN();

    EXPECT_EQ(Vec3d<double>(0.0, 0.0, 0.0), Vec3d<double>(-0.0, 0.0, 0.0));
    EXPECT_NE(Vec3d<double>(nan, 0.0, 0.0), Vec3d<double>(nan, 0.0, 0.0));
}

TEST(Vec, WorksInConstantExpressions) {
    constexpr Vec3d<double> position{1.0, 2.0, 3.0};
    static_assert(position[1] == 2.0);
    static_assert(position == Vec3d<double>{1.0, 2.0, 3.0});
    static_assert(Vec4d<float>{} == Vec4d<float>{0, 0, 0, 0});
    EXPECT_EQ(position.z, 3.0);
}

}  // namespace
