// What is taken for a track, and what is said of what is none.
#include <points/TrackFile.h>
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <string>

namespace points {
namespace {

const std::string twoPoints =
    "# vtk DataFile Version 3.0\na title\nASCII\nDATASET POLYDATA\nPOINTS 2 float\n"
    "1 2 3\n4 5 6\n";
const std::string axisX = "VECTORS orientationX float\n0 1 0\n1 0 0\n";
const std::string axisY = "VECTORS orientationY float\n-1 0 0\n0 1 0\n";
const std::string axisZ = "VECTORS orientationZ float\n0 0 1\n0 0 1\n";
const std::string others =
    "VERTICES 2 4\n1 0\n1 1\nPOINT_DATA 2\nVECTORS speed float\n7 7 7\n7 7 7\n";

class TrackFile : public FileTest {
protected:
    Track read(const std::string& text) const {
        store(text);
        return readTrackFile(file);
    }
    std::string complaint(const std::string& text) const {
        return complaintOf([](const auto& name) { readTrackFile(name); }, text);
    }
};

TEST_F(TrackFile, GivesAPoseForEachPosition) {
    const Track track = read(twoPoints + others + axisX + axisY + axisZ);

    EXPECT_EQ(track.name, file.stem().string());
    ASSERT_EQ(track.poses.size(), 2U);
    EXPECT_EQ(track.poses[0], Pose({0, -1, 0, 1, 1, 0, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1}));
    EXPECT_EQ(track.poses[1], Pose({1, 0, 0, 4, 0, 1, 0, 5, 0, 0, 1, 6, 0, 0, 0, 1}));
}

TEST_F(TrackFile, TakesTheAxesInAnyOrder) {
    EXPECT_EQ(read(twoPoints + axisZ + axisX + others + axisY).poses,
              read(twoPoints + axisX + axisY + axisZ).poses);
}

TEST_F(TrackFile, LooksAlongTheAxesOfTheTrackWithoutAnyOfItsOwn) {
    const Track track = read(twoPoints + others);

    ASSERT_EQ(track.poses.size(), 2U);
    EXPECT_EQ(track.poses[0], Pose({1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1}));
}

TEST_F(TrackFile, NeedsAllAxesOrNone) {
    EXPECT_EQ(complaint(twoPoints + axisX + axisY),
              "13: the file has some of the orientations X, Y and Z only");
}

TEST_F(TrackFile, NeedsAnOrientationForEachPosition) {
    EXPECT_EQ(complaint(twoPoints + "VECTORS orientationX float\n0 1 0\n"),
              "9: the file ends behind 1 of 2 orientations");
    EXPECT_EQ(complaint(twoPoints + "VECTORS orientationX float\n0 1 0\n1 0 0 1\n"),
              "10: there are more orientations than were announced");
}

TEST_F(TrackFile, IsVtkText) {
    EXPECT_EQ(complaint("x,y,z,nx,ny,nz\n"),
              "1: \"# vtk DataFile\" is expected here: a track is VTK text");
    EXPECT_EQ(complaint(""), " is empty");
    EXPECT_EQ(complaint("# vtk DataFile Version 3.0\na title\nASCII\nPOINTS 0 float\n"),
              "4: the file holds no points");
}

}  // namespace
}  // namespace points
