// The statistics of a scan.
#pragma once

#include <AttributeContainer/ContainerClass.h>

#include <QOR/Vec.h>

#include <cstdint>

namespace QOR::AttributeContainer {

/// The statistics of a scan, a field of it: the ranges of its reflection channels and distances,
/// its bounding box, and what is known of its normals. The host computes the numbers and says with
/// the `Valid` flags which of them hold; the library stores them.
class QOR_API ScanProperties
    : public ContainerClass<ScanProperties, AttrContainer, "ScanProperties"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, SVec2d<double>, ReflectionStatisticsLimits1);
    QOR_ATTRIBUTE(2, SVec2d<double>, ReflectionStatisticsLimits2);
    QOR_ATTRIBUTE(3, SVec2d<double>, ReflectionStatisticsHLimits1);
    QOR_ATTRIBUTE(4, SVec2d<double>, ReflectionStatisticsHLimits2);
    QOR_ATTRIBUTE(5, double, ReflectionStatisticsMean);
    QOR_ATTRIBUTE(6, double, ReflectionStatisticsMin);
    QOR_ATTRIBUTE(7, double, ReflectionStatisticsMax);
    QOR_ATTRIBUTE(8, double, ReflectionStatisticsDeviation);
    QOR_ATTRIBUTE(9, SVec2d<double>, ReflectionBrightenedStatisticsLimits1);
    QOR_ATTRIBUTE(10, SVec2d<double>, ReflectionBrightenedStatisticsLimits2);
    QOR_ATTRIBUTE(11, SVec2d<double>, ReflectionBrightenedStatisticsHLimits1);
    QOR_ATTRIBUTE(12, SVec2d<double>, ReflectionBrightenedStatisticsHLimits2);
    QOR_ATTRIBUTE(13, double, ReflectionBrightenedStatisticsMean);
    QOR_ATTRIBUTE(14, double, ReflectionBrightenedStatisticsMin);
    QOR_ATTRIBUTE(15, double, ReflectionBrightenedStatisticsMax);
    QOR_ATTRIBUTE(16, double, ReflectionBrightenedStatisticsDeviation);
    QOR_ATTRIBUTE(17, SVec2d<double>, DistanceStatisticsLimits1);
    QOR_ATTRIBUTE(18, SVec2d<double>, DistanceStatisticsLimits2);
    QOR_ATTRIBUTE(19, SVec2d<double>, DistanceStatisticsHLimits1);
    QOR_ATTRIBUTE(20, SVec2d<double>, DistanceStatisticsHLimits2);
    QOR_ATTRIBUTE(21, double, DistanceStatisticsHPrecision, 0.1);
    QOR_ATTRIBUTE(22, double, DistanceStatisticsMean);
    QOR_ATTRIBUTE(23, double, DistanceStatisticsMin);
    QOR_ATTRIBUTE(24, double, DistanceStatisticsMax);
    QOR_ATTRIBUTE(25, double, DistanceStatisticsDeviation);
    QOR_ATTRIBUTE(26, bool, DistanceStatisticsValid);
    QOR_ATTRIBUTE(27, bool, ReflectionStatisticsValid);
    QOR_ATTRIBUTE(28, bool, ReflectionBrightenedStatisticsValid);
    QOR_ATTRIBUTE(29, Vec3d<double>, BoundingBoxMin);
    QOR_ATTRIBUTE(30, Vec3d<double>, BoundingBoxMax);
    QOR_ATTRIBUTE(31, std::int64_t, LastPointDataSaveTimeStamp);
    QOR_ATTRIBUTE(32, bool, HasNormals);
    QOR_ATTRIBUTE(33, int, HasDirectedNormals, -1);
};

}  // namespace QOR::AttributeContainer
