// Paths that users write: to elements, and to attributes of elements.
#pragma once

#include "model/Document.h"
#include "model/Elements.h"

#include <memory>
#include <optional>
#include <string>

namespace qormodel {

/// The element at a path such as "/Scans/First"; its depth counts as 0. Names compare as the library
/// compares them. \return none where the path leads to no element
std::optional<Element> inqElement(const Document& document, const std::string& path);

/// An attribute with the element that holds it.
struct FoundAttribute {
    std::shared_ptr<ac::Attribute> attribute;
    Element element;
    std::string path;  ///< of the attribute, as in "/Scans/First/Points"
};

/// The attribute at a path; none where it leads to no attribute.
std::optional<FoundAttribute> inqAttribute(const Document& document, const std::string& path);

/// The path in two: of the element and of the name behind the last separator.
std::pair<std::string, std::string> splitPath(const std::string& path);

}  // namespace qormodel
