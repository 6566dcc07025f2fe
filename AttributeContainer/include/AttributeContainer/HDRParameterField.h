// The parameters by which a picture of high dynamic range is shown.
#pragma once

#include <AttributeContainer/ContainerClass.h>

namespace QOR::AttributeContainer {

/// The parameters of the display of a picture of high dynamic range, a field of its colour
/// properties. Each tone-mapping operator has a class of its own below this one.
///
/// The library computes no tone mapping; the host gives `ToneMappingType` its meaning.
class QOR_API HDRParameterField
    : public ContainerClass<HDRParameterField, AttrContainer, "HDRParameterField"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, int, ToneMappingType);
    QOR_ATTRIBUTE(2, bool, AnalysisRequired);
    QOR_ATTRIBUTE(3, int, HDRGroup);
    QOR_ATTRIBUTE(4, int, HDRIndex);
};

}  // namespace QOR::AttributeContainer
