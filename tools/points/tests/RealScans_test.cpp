// Scans that instruments have made, where somebody has put them beside the repository.
#include <points/PointFile.h>
#include <points/TrackFile.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace points {
namespace {

class RealScan : public testing::Test {
protected:
    static std::filesystem::path fileOf(const char* name) {
        return std::filesystem::path(QOR_SHARED_DATA_DIR) / name;
    }
    void SetUp() override {
        if (!std::filesystem::exists(fileOf("trajectory.vtk"))) GTEST_SKIP() << "no real scans";
    }
};

TEST_F(RealScan, OfLinesHasItsPointsAndNormals) {
    const Scan scan = readPointFile(fileOf("car_cloud400.csv"));

    EXPECT_EQ(scan.points.size(), 24989U);
    EXPECT_EQ(scan.normals.size(), 24989U);
    EXPECT_EQ(scan.points.front(), (Point{-3.5376, 0.639553, -1.37678}));
}

TEST_F(RealScan, OfVtkTextHasItsPoints) {
    const Scan scan = readPointFile(fileOf("cloud.00000.vtk"));

    EXPECT_EQ(scan.points.size(), 24989U);
    EXPECT_EQ(scan.points.front(), (Point{-3.79521, 0.0131325, -0.95763}));
}

TEST_F(RealScan, HasATrackOfItsPoses) {
    EXPECT_EQ(readTrackFile(fileOf("trajectory.vtk")).poses.size(), 525U);
}

}  // namespace
}  // namespace points
