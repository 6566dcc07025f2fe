// What the example says of a scan: its statistics, markers and panorama.
#include "../Statistics.h"
#include "../Document.h"

#include <AttributeContainer/MarkerBase.h>
#include <AttributeContainer/PanoramaPicture.h>
#include <AttributeContainer/TMOReinhard02Field.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace example {
namespace {

// At distances of 5, 1 and 3 from the instrument.
const std::vector<Point> points{{3, 4, 0}, {0, 0, -1}, {-1, 2, 2}};
Scan scanWith(const std::vector<Point>& normals) { return {"small", points, normals}; }

TEST(Statistics, MeasureTheDistances) {
    const Distances distances = measure(points);

    EXPECT_DOUBLE_EQ(distances.mean, 3);
    EXPECT_EQ(distances.min, 1);
    EXPECT_EQ(distances.max, 5);
    EXPECT_DOUBLE_EQ(distances.deviation, std::sqrt(8.0 / 3));
    EXPECT_DOUBLE_EQ(distances.logarithmicAverage, std::cbrt(15.0));
    EXPECT_EQ(distances.nearest, 1U);
    EXPECT_EQ(distances.farthest, 0U);
}

TEST(Statistics, CopeWithTheLargestNumbersAndWithTheOrigin) {
    const Distances far = measure({{1e300, 0, 0}, {-3e300, 0, 0}});
    EXPECT_DOUBLE_EQ(far.mean, 2e300);
    EXPECT_DOUBLE_EQ(far.deviation, 1e300);

    const Distances near = measure({{0, 0, 0}});
    EXPECT_EQ(near.deviation, 0);
    EXPECT_EQ(near.logarithmicAverage, 0);
}

TEST(Statistics, GoIntoThePropertiesOfTheScan) {
    const auto properties = model::ScanProperties::create();
    const Scan scan = scanWith({});

    store(*properties, scan, measure(scan.points));

    EXPECT_EQ(properties->DistanceStatisticsMean(), 3);
    EXPECT_EQ(properties->DistanceStatisticsMin(), 1);
    EXPECT_EQ(properties->DistanceStatisticsMax(), 5);
    EXPECT_EQ(properties->DistanceStatisticsDeviation(), 1.63299316);
    EXPECT_TRUE(properties->DistanceStatisticsValid());
    EXPECT_FALSE(properties->ReflectionStatisticsValid());
    EXPECT_EQ(properties->BoundingBoxMin(), (Point{-1, 0, -1}));
    EXPECT_EQ(properties->BoundingBoxMax(), (Point{3, 4, 2}));
    EXPECT_FALSE(properties->HasNormals());
    EXPECT_EQ(properties->HasDirectedNormals(), -1);
    EXPECT_GT(properties->LastPointDataSaveTimeStamp(), 1'700'000'000);
}

TEST(Statistics, TellWhetherNormalsPointToTheInstrument) {
    const auto directed = [](const std::vector<Point>& normals) {
        const auto properties = model::ScanProperties::create();
        const Scan scan = scanWith(normals);
        store(*properties, scan, measure(scan.points));
        EXPECT_TRUE(properties->HasNormals());
        return properties->HasDirectedNormals();
    };

    EXPECT_EQ(directed({{-1, 0, 0}, {0, 0, 1}, {1, 0, 0}}), 1);
    EXPECT_EQ(directed({{-1, 0, 0}, {0, 0, -1}, {1, 0, 0}}), 0);
}

TEST(ScanParts, MarkTheNearestAndTheFarthestPoint) {
    Document document;
    const auto scan = document.addScan(scanWith({{-1, 0, 0}, {0, 0, 1}, {1, 0, 0}}));

    const auto nearest = std::dynamic_pointer_cast<model::MarkerBase>(scan->inqChild("Nearest"));
    const auto farthest = std::dynamic_pointer_cast<model::MarkerBase>(scan->inqChild("Farthest"));

    ASSERT_NE(nearest, nullptr);
    EXPECT_EQ(nearest->Position(), (Point{0, 0, -1}));
    EXPECT_EQ(nearest->normal(), (Point{0, 0, 1}));
    EXPECT_FALSE(nearest->id().is_nil());
    ASSERT_NE(farthest, nullptr);
    EXPECT_EQ(farthest->Position(), (Point{3, 4, 0}));
    EXPECT_NE(farthest->id(), nearest->id());
}

TEST(ScanParts, MapTheDistancesToThePanorama) {
    Document document;
    const auto scan = document.addScan(scanWith({}));

    const auto panorama =
        std::dynamic_pointer_cast<model::PanoramaPicture>(scan->inqChild("Panorama"));
    ASSERT_NE(panorama, nullptr);
    EXPECT_EQ(panorama->getSaveBinaryDataStreamName(), "Pictures/Range/Panorama");
    const auto mapping = std::dynamic_pointer_cast<model::TMOReinhard02Field>(
        panorama->PictureColorPropertiesField().lock()->HDRParameterField().lock());
    ASSERT_NE(mapping, nullptr);
    EXPECT_EQ(mapping->MinimalLuminance(), 1);
    EXPECT_EQ(mapping->MaximalLuminance(), 5);
    EXPECT_EQ(mapping->KeyValue(), 0.18);
}

}  // namespace
}  // namespace example
