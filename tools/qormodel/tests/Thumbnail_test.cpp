#include "page/Thumbnail.h"

#include "model/ModelPath.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>

using namespace qormodel;
using namespace qormodel::testing;

namespace {
std::optional<PointSet> pointsIn(const Document& document) { return inqPointSet(*document.root); }

// A document whose root holds these lists: names, each with its coordinates.
std::string modelWith(const std::vector<std::pair<std::string, std::string>>& lists) {
    std::string body = "AttrContainer { \n";
    for (const auto& [name, numbers] : lists)
        body += "Attr<Vec3ddVector> { \nName \"" + name + "\"\nValue { " + numbers + " } \n}\n";
    return modelText(body + "}\n");
}

// The cells as digits, a row a line, '.' for those without a point.
std::string drawn(const Thumbnail& thumbnail) {
    std::string text;
    for (std::size_t i = 0; i < thumbnail.cells.size(); ++i) {
        text += ".123456789abcdef"[thumbnail.cells[i]];
        if ((i + 1) % thumbnail.numColumns == 0) text += '\n';
    }
    return text;
}
}  // namespace

TEST(PointSet, KnowsTheBoxAroundItsPoints) {
    const LoadedText text(modelWith({{"Points", "1 2 3 -4 5 6"}}));

    const auto points = pointsIn(text.document);

    ASSERT_TRUE(points);
    EXPECT_EQ(points->attribute->getName(), "Points");
    EXPECT_EQ(points->numPoints, 2u);
    EXPECT_EQ(points->min, (std::array{-4.0, 2.0, 3.0}));
    EXPECT_EQ(points->max, (std::array{1.0, 5.0, 6.0}));
}

TEST(PointSet, IsTheLongestListAndNormalsOnlyWhereNothingElseIs) {
    const LoadedText both(modelWith({{"Normals", "0 0 1 0 0 1"},
                                     {"Few", "1 2 3"},
                                     {"Points", "1 2 3 4 5 6"},
                                     {"Others", "7 8 9 7 8 9"}}));
    const LoadedText one(modelWith({{"Normals", "0 0 1 0 0 1"}, {"Empty", ""}}));

    EXPECT_EQ(pointsIn(both.document)->attribute->getName(), "Points");
    EXPECT_EQ(pointsIn(one.document)->attribute->getName(), "Normals");
}

TEST(PointSet, IsNotThereWithoutAPointOfFiniteCoordinates) {
    const LoadedText none(modelWith({{"Points", ""}}));
    const LoadedText infinite(modelWith({{"Points", "1.#INF 0 0 0 -1.#INF 0"}}));

    EXPECT_FALSE(pointsIn(none.document));
    EXPECT_FALSE(pointsIn(infinite.document));
}

TEST(Thumbnail, SeesPointsFromAboveWithTheHighestInEachCell) {
    // Along x on the ground, along y higher; the cell at the corner has both.
    const LoadedText text(modelWith({{"Points", "0 0 0 1 0 0 2 0 0 3.9 0 0 0 0 15 0 3.9 7.5"}}));

    const Thumbnail thumbnail = makeThumbnail(*pointsIn(text.document), 4);

    EXPECT_EQ(drawn(thumbnail),
              "8...\n"
              "....\n"
              "....\n"
              "f111\n");
}

TEST(Thumbnail, HasTheShapeOfWhatItShows) {
    const LoadedText text(modelWith({{"Points", "0 0 0 8 2 0"}}));

    EXPECT_EQ(drawn(makeThumbnail(*pointsIn(text.document), 8)), ".......8\n8.......\n");
}

TEST(Thumbnail, ShowsASinglePointAndCoordinatesOfAnySize) {
    const LoadedText single(modelWith({{"Points", "5 5 5"}}));
    const LoadedText huge(modelWith({{"Points", "-1.7e308 -1.7e308 0 1.7e308 1.7e308 1"}}));

    EXPECT_EQ(drawn(makeThumbnail(*pointsIn(single.document), 4)), "8\n");
    EXPECT_EQ(drawn(makeThumbnail(*pointsIn(huge.document), 2)), ".f\n1.\n");
}

TEST(Thumbnail, PacksTwoCellsIntoAByte) {
    EXPECT_EQ(packCells({2, 1, {1, 15}}), "Hw==");               // 1f
    EXPECT_EQ(packCells({3, 1, {4, 13, 6}}), "TWA=");            // 4d 60
    EXPECT_EQ(packCells({6, 1, {4, 13, 6, 1, 6, 14}}), "TWFu");  // 4d 61 6e
}

TEST(Thumbnail, KeepsAllOfAPageBelowAMegabyte) {
    constexpr std::uint64_t many = 1'000'000;
    EXPECT_EQ(sideFor(1, many), 128u);
    for (std::size_t number = 1; number <= 5000; ++number) {
        const std::size_t side = sideFor(number, many);
        const std::size_t numBytes = (side * side / 2 + 2) / 3 * 4;
        ASSERT_LT(std::min(number, maxNumThumbnails) * numBytes, 1'000'000u) << number;
    }
}

TEST(Thumbnail, HasLargerCellsForFewPoints) {
    EXPECT_EQ(sideFor(1, 1), 16u);
    EXPECT_EQ(sideFor(1, 400), 40u);
    EXPECT_EQ(sideFor(1, 4096), 128u);
    EXPECT_EQ(sideFor(500, 400), 32u);
}
