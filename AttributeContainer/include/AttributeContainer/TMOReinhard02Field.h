// The parameters of the photographic tone-mapping operator.
#pragma once

#include <AttributeContainer/HDRParameterField.h>

namespace QOR::AttributeContainer {

/// The parameters of a photographic tone mapping with dodging and burning.
class QOR_API TMOReinhard02Field
    : public ContainerClass<TMOReinhard02Field, HDRParameterField, "TMOReinhard02Field"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(5, double, WhitePoint);
    QOR_ATTRIBUTE(6, double, KeyValue, 0.18);
    QOR_ATTRIBUTE(7, double, LogarithmicAverage);
    // An empty range, the maximum below the minimum: the first luminance that is seen becomes both.
    QOR_ATTRIBUTE(8, double, MaximalLuminance, -1000000.0);
    QOR_ATTRIBUTE(9, double, MinimalLuminance, 1000000.0);
    QOR_ATTRIBUTE(10, double, Gamma, 1.6);
    QOR_ATTRIBUTE(11, bool, DodgeAndBurn);
    QOR_ATTRIBUTE(12, double, Phi);
    QOR_ATTRIBUTE(13, double, UpperScale);
    QOR_ATTRIBUTE(14, double, LowerScale);
};

}  // namespace QOR::AttributeContainer
