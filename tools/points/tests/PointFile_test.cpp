// What is taken for a point file, and what is said of what is none.
#include <points/PointFile.h>
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace points {
namespace {

using Points = std::vector<Point>;

const std::string heading = "x,y,z,nx,ny,nz\n";
const std::string vtk = "# vtk DataFile Version 3.0\na title\nASCII\nDATASET POLYDATA\n";

class PointFile : public PointFileTest {};

TEST_F(PointFile, GivesPointsAndNormalsOfLinesOfSixNumbers) {
    const Scan scan = read(heading + "-3.5 , 0.25 , 1e1 , -1,0,0\r\n\r\n+1,2,3,0,0,1");

    EXPECT_EQ(scan.name, file.stem().string());
    EXPECT_EQ(scan.points, (Points{{-3.5, 0.25, 10}, {1, 2, 3}}));
    EXPECT_EQ(scan.normals, (Points{{-1, 0, 0}, {0, 0, 1}}));
}

TEST_F(PointFile, GivesThePointsOfVtkTextAndLeavesWhatFollows) {
    const Scan scan = read(vtk + "POINTS 2 float\n1 2 3 4 5\n6\nVERTICES 2 nan\n");

    EXPECT_EQ(scan.points, (Points{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(scan.normals, Points{});
}

TEST_F(PointFile, GivesPointsAloneOfLinesOfThreeNumbers) {
    const Scan scan = read("X , Y , Z\n1,2,3\n4 , 5 , 6\n");

    EXPECT_EQ(scan.points, (Points{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(scan.normals, Points{});
}

TEST_F(PointFile, NeedsNoHeadingLine) {
    const Scan scan = read("1,2,3,0,0,1\n4,5,6,0,1,0\n");

    EXPECT_EQ(scan.points, (Points{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(scan.normals, (Points{{0, 0, 1}, {0, 1, 0}}));
}

TEST_F(PointFile, NamesTheLineThatIsNoRow) {
    const std::string rest =
        ": numbers with commas between them are expected: x,y,z or x,y,z,nx,ny,nz";

    EXPECT_EQ(complaint(heading + "1,2,3,0,0,1\n1,2,3,0,0\n"), "3" + rest);
    EXPECT_EQ(complaint(heading + "1,2,3,0,0,1,7\n"), "2" + rest);
    EXPECT_EQ(complaint(heading + "1,2,3,0,0,1.2.3\n"), "2" + rest);
    EXPECT_EQ(complaint(heading + "1,2\n"), "2" + rest);
    EXPECT_EQ(complaint(heading + "1,2,\n"), "2" + rest);
    EXPECT_EQ(complaint("words\nand words\n"), "2" + rest);
}

TEST_F(PointFile, WantsTheSameNumberOfNumbersInAllLines) {
    EXPECT_EQ(complaint(heading + "1,2,3,0,0,1\n1,2,3\n"),
              "3: there are 3 numbers, and 6 in the lines before");
    EXPECT_EQ(complaint("1,2,3\n\n1,2,3,0,0,1\n"),
              "3: there are 6 numbers, and 3 in the lines before");
}

TEST_F(PointFile, RefusesNumbersThatAreNotFinite) {
    EXPECT_EQ(complaint(heading + "1,2,3,0,0,nan\n"), "2: \"nan\" is no finite number");
    EXPECT_EQ(complaint(heading + "-inf,2,3,0,0,1\n"), "2: \"-inf\" is no finite number");
    EXPECT_EQ(complaint(heading + "1,2,1e999,0,0,1\n"), "2: \"1e999\" is no finite number");
    EXPECT_EQ(complaint(vtk + "POINTS 1 float\n1 inf 3\n"), "6: \"inf\" is no finite number");
}

TEST_F(PointFile, RefusesAFileWithNoPoints) {
    EXPECT_EQ(complaint(""), " is empty");
    EXPECT_EQ(complaint(heading), "1: the file holds no points");
    EXPECT_EQ(complaint(vtk + "POINTS 0 float\n"), "5: the file holds no points");
    EXPECT_EQ(complaint(vtk), "4: the file ends and has no \"POINTS\"");
}

TEST_F(PointFile, HoldsVtkTextAgainstTheNumberOfPointsItAnnounces) {
    EXPECT_EQ(complaint(vtk + "POINTS 3 float\n1 2 3 4 5\n6\n"),
              "7: the file ends behind 2 of 3 points");
    EXPECT_EQ(complaint(vtk + "POINTS 9999999999999 float\n1 2 3\n"),
              "6: the file ends behind 1 of 9999999999999 points");
    EXPECT_EQ(complaint(vtk + "POINTS 1 float\n1 2 3 4\n"),
              "6: there are more points than were announced");
    EXPECT_EQ(complaint(vtk + "POINTS 2 float\n1 2 3 4 5\nVERTICES 3\n"),
              "7: a number is expected, not \"VERTICES\"");
    EXPECT_EQ(complaint(vtk + "POINTS -1 float\n"),
              "5: the number of points is expected behind \"POINTS\"");
}

TEST_F(PointFile, RefusesTheBinaryFormOfVtk) {
    EXPECT_EQ(complaint("# vtk DataFile Version 3.0\na title\nBINARY\n"),
              "3: \"ASCII\" is expected here: only the text form can be read");
}

TEST(PointFileOnDisk, MustBeThereAndBeAFile) {
    EXPECT_THROW(readPointFile("no such file"), BadPointFile);
    EXPECT_THROW(readPointFile(std::filesystem::temp_directory_path()), BadPointFile);
}

}  // namespace
}  // namespace points
