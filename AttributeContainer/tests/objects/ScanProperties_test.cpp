#include <AttributeContainer/ScanProperties.h>

#include "support/ClassTable.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <memory>

namespace QOR::AttributeContainer::Testing {

namespace {
#define ROW(...) QOR_CLASS_ROW(ScanProperties, __VA_ARGS__)
const ClassRow rows[] = {
    ROW(1, ReflectionStatisticsLimits1, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(2, ReflectionStatisticsLimits2, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(3, ReflectionStatisticsHLimits1, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(4, ReflectionStatisticsHLimits2, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(5, ReflectionStatisticsMean, "Attr<double>", 18, {0.0}),
    ROW(6, ReflectionStatisticsMin, "Attr<double>", 18, {0.0}),
    ROW(7, ReflectionStatisticsMax, "Attr<double>", 18, {0.0}),
    ROW(8, ReflectionStatisticsDeviation, "Attr<double>", 18, {0.0}),
    ROW(9, ReflectionBrightenedStatisticsLimits1, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(10, ReflectionBrightenedStatisticsLimits2, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(11, ReflectionBrightenedStatisticsHLimits1, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(12, ReflectionBrightenedStatisticsHLimits2, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(13, ReflectionBrightenedStatisticsMean, "Attr<double>", 18, {0.0}),
    ROW(14, ReflectionBrightenedStatisticsMin, "Attr<double>", 18, {0.0}),
    ROW(15, ReflectionBrightenedStatisticsMax, "Attr<double>", 18, {0.0}),
    ROW(16, ReflectionBrightenedStatisticsDeviation, "Attr<double>", 18, {0.0}),
    ROW(17, DistanceStatisticsLimits1, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(18, DistanceStatisticsLimits2, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(19, DistanceStatisticsHLimits1, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(20, DistanceStatisticsHLimits2, "Attr<SVec2dd>", 18, {0, 0}),
    ROW(21, DistanceStatisticsHPrecision, "Attr<double>", 18, {0.1}),
    ROW(22, DistanceStatisticsMean, "Attr<double>", 18, {0.0}),
    ROW(23, DistanceStatisticsMin, "Attr<double>", 18, {0.0}),
    ROW(24, DistanceStatisticsMax, "Attr<double>", 18, {0.0}),
    ROW(25, DistanceStatisticsDeviation, "Attr<double>", 18, {0.0}),
    ROW(26, DistanceStatisticsValid, "Attr<bool>", 18, {false}),
    ROW(27, ReflectionStatisticsValid, "Attr<bool>", 18, {false}),
    ROW(28, ReflectionBrightenedStatisticsValid, "Attr<bool>", 18, {false}),
    ROW(29, BoundingBoxMin, "Attr<Vec3dd>", 18, {0, 0, 0}),
    ROW(30, BoundingBoxMax, "Attr<Vec3dd>", 18, {0, 0, 0}),
    ROW(31, LastPointDataSaveTimeStamp, "Attr<int64_t>", 18, {0}),
    ROW(32, HasNormals, "Attr<bool>", 18, {false}),
    ROW(33, HasDirectedNormals, "Attr<int>", 18, {-1}),
};
#undef ROW
}  // namespace

QOR_CLASS_TABLE(ScanProperties, rows);

TEST(ScanProperties, IsAContainerOfThirtyThreeNumbers) {
    expectClass<ScanProperties, AttrContainer>("ScanProperties", 1, 33);
    EXPECT_EQ(ScanProperties::create()->getName(), "ScanProperties");
    EXPECT_EQ(ScanProperties::create()->getNumFields(), 0u);
}

TEST(ScanProperties, DoesNotKnowAtFirstWhereNormalsPoint) {
    const auto properties = ScanProperties::create();

    EXPECT_EQ(properties->getAttrToken("HasDirectedNormals"), 33u);
    EXPECT_EQ(properties->HasDirectedNormals(), -1);
    EXPECT_FALSE(properties->HasNormals());
}

TEST(ScanProperties, HasOneStatisticThatIsNotZero) {
    EXPECT_EQ(ScanProperties::create()->DistanceStatisticsHPrecision(), 0.1);
}

TEST(ScanProperties, LeavesItToTheHostToCallStatisticsValid) {
    const auto properties = ScanProperties::create();

    properties->DistanceStatisticsMean(4.5);
    properties->ReflectionStatisticsMax(255);
    properties->ReflectionBrightenedStatisticsLimits1({1, 2});

    EXPECT_FALSE(properties->DistanceStatisticsValid());
    EXPECT_FALSE(properties->ReflectionStatisticsValid());
    EXPECT_FALSE(properties->ReflectionBrightenedStatisticsValid());

    properties->DistanceStatisticsValid(true);

    EXPECT_TRUE(properties->DistanceStatisticsValid());
    EXPECT_FALSE(properties->ReflectionStatisticsValid());
    EXPECT_EQ(properties->DistanceStatisticsMean(), 4.5);
}

TEST(ScanProperties, TakesAllValuesFromItsSource) {
    const auto properties = ScanProperties::create();
    properties->LastPointDataSaveTimeStamp(-1234567890123);

    const auto copy = std::dynamic_pointer_cast<ScanProperties>(properties->duplicate(CreateDeep));
    const auto fresh =
        std::dynamic_pointer_cast<ScanProperties>(properties->duplicate(CreateEmpty));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->LastPointDataSaveTimeStamp(), -1234567890123);
    EXPECT_EQ(copy->HasDirectedNormals(), -1);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->LastPointDataSaveTimeStamp(), 0);
}

TEST(ScanProperties, IsComparedByItsValues) {
    const auto properties = ScanProperties::create();
    const auto other = ScanProperties::create();
    EXPECT_TRUE(properties->isEqualTo(*other, nullptr, nullptr));

    other->HasDirectedNormals(1);

    EXPECT_FALSE(properties->isEqualTo(*other, nullptr, nullptr));
}

TEST(ScanProperties, ComesBackFromAStream) {
    const auto properties = ScanProperties::create();
    properties->BoundingBoxMin({-1.5, 0, 2});
    properties->DistanceStatisticsHPrecision(0);
    properties->HasDirectedNormals(0);
    properties->LastPointDataSaveTimeStamp(9000000000000000000);

    const auto copy = ScanProperties::create();
    ASSERT_EQ(readText(*copy, written(*properties)), std::nullopt);

    EXPECT_EQ(copy->BoundingBoxMin(), (Vec3d<double>{-1.5, 0, 2}));
    EXPECT_EQ(copy->DistanceStatisticsHPrecision(), 0.0);
    EXPECT_EQ(copy->HasDirectedNormals(), 0);
    EXPECT_EQ(copy->LastPointDataSaveTimeStamp(), 9000000000000000000);
}

}  // namespace QOR::AttributeContainer::Testing
