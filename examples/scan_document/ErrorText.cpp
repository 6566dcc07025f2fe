#include "ErrorText.h"

#include <any>

namespace example {

std::string describe(const ModelError& error) {
    std::string text = error.isWarning() ? "warning " : "error ";
    text += QOR::AttributeContainer::getErrorCodeName(error.getCode());
    if (const auto description = error.getDescription()) text += ", " + *description;
    for (const auto& [key, value] : error.getInfos()) {
        if (const auto* const info = std::any_cast<std::string>(&value))
            text += ", " + key + " \"" + *info + "\"";
    }
    text += " (" + error.getLocation() + ")";
    for (const auto& reason : error.getReasons()) {
        if (const auto* const known = dynamic_cast<const ModelError*>(reason.get()))
            text += ", because of " + describe(*known);
    }
    return text;
}

}  // namespace example
