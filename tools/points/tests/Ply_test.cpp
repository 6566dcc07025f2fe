// What is taken for a PLY file, in its three forms, and what is said of what is none.
#include <points/PointFile.h>
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace points {
namespace {

using Points = std::vector<Point>;

const std::string textHeader = "ply\nformat ascii 1.0\ncomment made by hand\n";
const std::string positions = "property float x\nproperty float y\nproperty float z\n";
const std::string normals = "property float nx\nproperty float ny\nproperty float nz\n";

// 1, 2 and -0.5 as `float`, in both orders of their bytes.
const std::string littlePoint("\x00\x00\x80\x3F\x00\x00\x00\x40\x00\x00\x00\xBF", 12);
const std::string bigPoint("\x3F\x80\x00\x00\x40\x00\x00\x00\xBF\x00\x00\x00", 12);

class Ply : public PointFileTest {};

TEST_F(Ply, GivesPointsAndNormalsOfText) {
    const Scan scan = read(textHeader + "obj_info none\r\nelement vertex 2\r\n" + positions +
                           normals + "end_header\n1 2 3 0 0 1\n\n4 5 -6.5 0 1 0\r\n");

    EXPECT_EQ(scan.name, file.stem().string());
    EXPECT_EQ(scan.points, (Points{{1, 2, 3}, {4, 5, -6.5}}));
    EXPECT_EQ(scan.normals, (Points{{0, 0, 1}, {0, 1, 0}}));
}

TEST_F(Ply, GivesThePointsOfBothBinaryForms) {
    const std::string rest = " 1.0\nelement vertex 2\n" + positions + "end_header\n";

    EXPECT_EQ(read("ply\nformat binary_little_endian" + rest + littlePoint + littlePoint).points,
              (Points{{1, 2, -0.5}, {1, 2, -0.5}}));
    EXPECT_EQ(read("ply\nformat binary_big_endian" + rest + bigPoint + bigPoint).points,
              (Points{{1, 2, -0.5}, {1, 2, -0.5}}));
}

TEST_F(Ply, KnowsEveryTypeOfNumber) {
    const std::string header =
        "ply\nformat binary_little_endian 1.0\nelement vertex 1\n"
        "property int8 x\nproperty uint8 a\nproperty short y\nproperty ushort b\n"
        "property int32 z\nproperty uint c\nproperty double nx\nproperty float32 ny\n"
        "property uchar nz\nend_header\n";
    const std::string content(
        "\xFF\xFF\xFE\xFF\xFE\xFF\xFD\xFF\xFF\xFF\xFD\xFF\xFF\xFF"
        "\x00\x00\x00\x00\x00\x00\xE0\x3F\x00\x00\x80\x3E\xC8",
        27);

    const Scan scan = read(header + content);

    EXPECT_EQ(scan.points, (Points{{-1, -2, -3}}));
    EXPECT_EQ(scan.normals, (Points{{0.5, 0.25, 200}}));
}

TEST_F(Ply, FindsTheVerticesBehindOtherElementsAndAmongOtherProperties) {
    const std::string elements =
        "element camera 1\nproperty list uchar float axes\nproperty int id\n"
        "element vertex 1\nproperty uchar red\n" +
        positions +
        "property list uchar int x\nelement face 7\nproperty list uchar int vertex_indices\n";

    EXPECT_EQ(read(textHeader + elements + "end_header\n2 9 9 4\n255 1 2 3 1 8\n").points,
              (Points{{1, 2, 3}}));
    EXPECT_EQ(read("ply\nformat binary_big_endian 1.0\n" + elements + "end_header\n" +
                   std::string("\x01\x3F\x80\x00\x00\x00\x00\x00\x07\xFF", 10) + bigPoint +
                   std::string("\x00", 1))
                  .points,
              (Points{{1, 2, -0.5}}));
}

TEST_F(Ply, TakesNoNormalsWhereOneOfThemIsMissing) {
    const Scan scan = read(textHeader + "element vertex 1\n" + positions +
                           "property float nx\nproperty float ny\nend_header\n1 2 3 0 1\n");

    EXPECT_EQ(scan.points.size(), 1U);
    EXPECT_EQ(scan.normals, Points{});
}

TEST_F(Ply, HoldsTheVerticesAgainstTheNumberItAnnounces) {
    const std::string rest = "element vertex 18446744073709551615\n" + positions + "end_header\n";

    EXPECT_EQ(complaint(textHeader + rest + "1 2 3\n"),
              " the file ends behind 1 of 18446744073709551615 elements \"vertex\"");
    EXPECT_EQ(complaint("ply\nformat binary_little_endian 1.0\n" + rest + littlePoint + "\x01"),
              " the file ends behind 1 of 18446744073709551615 elements \"vertex\"");
}

TEST_F(Ply, TrustsNoCountOfAnElementWithNoPropertiesOrOfAList) {
    EXPECT_EQ(read(textHeader + "element nothing 18446744073709551615\nelement vertex 1\n" +
                   positions + "end_header\n1 2 3\n")
                  .points,
              (Points{{1, 2, 3}}));
    EXPECT_EQ(complaint("ply\nformat binary_big_endian 1.0\nelement face 1\n"
                        "property list uint char a\nelement vertex 1\n" +
                        positions + "end_header\n\xFF\xFF\xFF\xFFxyz"),
              " the file ends behind 0 of 1 elements \"face\"");
}

TEST_F(Ply, NamesTheLineOfTheHeaderThatIsWrong) {
    EXPECT_EQ(complaint("ply\nformat text 1.0\n"),
              "2: \"ascii\", \"binary_little_endian\" or \"binary_big_endian\" is expected behind "
              "\"format\"");
    EXPECT_EQ(complaint(textHeader + "element vertex -1\n"),
              "4: the number of elements is expected behind \"element vertex\"");
    EXPECT_EQ(complaint(textHeader + "property float x\n"),
              "4: an \"element\" is expected ahead of this");
    EXPECT_EQ(complaint(textHeader + "element vertex 1\nproperty real x\n"),
              "5: a type such as \"float\" is expected");
    EXPECT_EQ(complaint(textHeader + "element vertex 1\nproperty list float int x\n"),
              "5: the number of values must be a whole number");
    EXPECT_EQ(complaint(textHeader + "element vertex 1\nproperty float\n"),
              "5: the name of the property is expected");
    EXPECT_EQ(complaint(textHeader + "vertex 1\n"),
              "4: \"element\", \"property\" or \"end_header\" is expected");
    EXPECT_EQ(complaint("ply\nelement vertex 1\nend_header\n"),
              "3: \"format\" is missing in the header");
    EXPECT_EQ(complaint(textHeader), "3: the file ends and has no \"end_header\"");
    EXPECT_EQ(complaint(textHeader + "end_header\n"), "4: the header has no element \"vertex\"");
    EXPECT_EQ(complaint(textHeader + "element vertex 1\nproperty float x\nend_header\n1\n"),
              "6: the element \"vertex\" has no properties x, y and z");
}

TEST_F(Ply, NamesTheLineOfTextThatIsNoElement) {
    const std::string head = textHeader + "element vertex 2\n" + positions + "end_header\n1 2 3\n";

    EXPECT_EQ(complaint(head + "4 5\n"),
              "10: there are fewer numbers than the header tells, or one is none");
    EXPECT_EQ(complaint(head + "4 5 six\n"),
              "10: there are fewer numbers than the header tells, or one is none");
    EXPECT_EQ(complaint(head + "4 5 6 7\n"), "10: there are more numbers than the header tells");
    EXPECT_EQ(complaint(head + "4 5 nan\n"), "10: \"nan\" is no finite number");
}

TEST_F(Ply, RefusesNumbersOfTheBinaryFormThatAreNotFinite) {
    EXPECT_EQ(complaint("ply\nformat binary_big_endian 1.0\nelement vertex 1\n" + positions +
                        "end_header\n" + std::string("\x7F\x80\x00\x00", 4) + bigPoint),
              " the vertex 1 has a number that is not finite");
}

TEST_F(Ply, RefusesAFileWithNoVertices) {
    EXPECT_EQ(complaint(textHeader + "element vertex 0\n" + positions + "end_header\n"),
              "8: the file holds no points");
}

}  // namespace
}  // namespace points
