#include <QOR/Mat4d.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using QOR::Mat4d;

TEST(Mat4d, IsAPlainValueOfSixteenNumbers) {
    EXPECT_EQ(Mat4d<double>::size(), 16u);
    EXPECT_EQ(sizeof(Mat4d<double>), 16 * sizeof(double));
    EXPECT_EQ(sizeof(Mat4d<float>), 16 * sizeof(float));
    EXPECT_TRUE(std::is_trivially_copyable_v<Mat4d<double>>);
}

TEST(Mat4d, IsAllZeroAtFirst) {
    const Mat4d<double> matrix;
    for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(matrix[i], 0.0);
}

TEST(Mat4d, KeepsItsNumbersRowAfterRow) {
    Mat4d<double> matrix;

    matrix(1, 2) = 5.0;
    matrix[12] = 7.0;

    EXPECT_EQ(matrix[6], 5.0);
    EXPECT_EQ(matrix(3, 0), 7.0);
}

TEST(Mat4d, TakesItsNumbersRowAfterRow) {
    const Mat4d<float> matrix({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});

    EXPECT_EQ(matrix(0, 3), 3.0f);
    EXPECT_EQ(matrix(1, 0), 4.0f);
    EXPECT_EQ(matrix(2, 1), 9.0f);
    EXPECT_EQ(matrix(3, 3), 15.0f);
}

TEST(Mat4d, IdentityHasOnesOnTheDiagonalOnly) {
    const auto identity = Mat4d<double>::identity();
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            EXPECT_EQ(identity(row, column), row == column ? 1.0 : 0.0);
}

TEST(Mat4d, DiffersInAnyNumber) {
    const Mat4d<double> zero;
    EXPECT_TRUE(zero == Mat4d<double>());
    EXPECT_FALSE(zero != Mat4d<double>());
    for (std::size_t i = 0; i < 16; ++i) {
        Mat4d<double> other;
        other[i] = 1.0;
        EXPECT_TRUE(zero != other);
        EXPECT_FALSE(zero == other);
    }
}

TEST(Mat4d, WorksInConstantExpressions) {
    static_assert(Mat4d<double>::identity()(2, 2) == 1.0);
    static_assert(Mat4d<float>::identity() != Mat4d<float>());
    SUCCEED() << "the compiler has tested it";
}

}  // namespace
