// The parameters of the tone-mapping operator that works by presets.
#pragma once

#include <AttributeContainer/HDRParameterField.h>

#include <string>

namespace QOR::AttributeContainer {

/// The range of luminance and the preset of a tone mapping by presets.
class QOR_API TMOEasyHDRField
    : public ContainerClass<TMOEasyHDRField, HDRParameterField, "TMOEasyHDRField"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(5, double, MaximalLuminance);
    QOR_ATTRIBUTE(6, double, MinimalLuminance);
    QOR_ATTRIBUTE(7, std::string, PresetFileName, "Default");
};

}  // namespace QOR::AttributeContainer
