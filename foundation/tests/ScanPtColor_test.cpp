#include <QOR/ScanPtColor.h>
#include <QOR/Vec.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Point = QOR::ScanPtColor<QOR::Vec3d<float>>;

TEST(ScanPtColor, IsAPlainValueOfAPositionAndFourBytes) {
    EXPECT_TRUE(std::is_trivially_copyable_v<Point>);
    EXPECT_EQ(sizeof(Point), 3 * sizeof(float) + 4);
}

TEST(ScanPtColor, IsAllZeroAtFirst) {
    const Point point;

    EXPECT_EQ(point.position, QOR::Vec3d<float>());
    EXPECT_EQ(point.color, (std::array<std::uint8_t, 4>{0, 0, 0, 0}));
}

TEST(ScanPtColor, TakesPositionAndColour) {
    const Point point{{1, 2, 3}, {10, 20, 30, 255}};

    EXPECT_EQ(point.position.y, 2.0f);
    EXPECT_EQ(point.color[3], 255);
}

TEST(ScanPtColor, DiffersInPositionOrColour) {
    const Point point{{1, 2, 3}, {10, 20, 30, 40}};

    EXPECT_TRUE(point == (Point{{1, 2, 3}, {10, 20, 30, 40}}));
    EXPECT_TRUE(point != (Point{{1, 2, 4}, {10, 20, 30, 40}}));
    EXPECT_TRUE(point != (Point{{1, 2, 3}, {10, 20, 30, 41}}));
}

}  // namespace
