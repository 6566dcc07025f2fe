// The parameters of the linear tone-mapping operator.
#pragma once

#include <AttributeContainer/HDRParameterField.h>

namespace QOR::AttributeContainer {

/// The range of luminance that a linear tone mapping spreads over the display.
class QOR_API TMOLinearField
    : public ContainerClass<TMOLinearField, HDRParameterField, "TMOLinearField"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(5, double, MaximalLuminance);
    QOR_ATTRIBUTE(6, double, MinimalLuminance);
};

}  // namespace QOR::AttributeContainer
