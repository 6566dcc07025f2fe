// A walk over all that a document's tree is made of.
#pragma once

#include <AttributeContainer/Object.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

/// An object or a field with its place in the tree.
struct Element {
    std::shared_ptr<ac::AttrContainer> container;
    std::shared_ptr<ac::Object> object;  ///< the same where it is an object; null for other fields
    std::string path;                    ///< as in "/Scans/First"; "/" for the root
    int depth = 0;                       ///< 0 for the root
    bool isField = false;                ///< hangs in its parent as a field
};

/// Visits an element ahead of its fields, and those ahead of its children, all in their order. A
/// field that hangs in two places is visited at both. Each visit says whether to go below it.
void forEachElement(const std::shared_ptr<ac::Object>& root,
                    const std::function<bool(const Element&)>& visit);

/// The same from any element on; the depth counts from its own.
void forEachElementBelow(const Element& start, const std::function<bool(const Element&)>& visit);

/// Visits the attributes of one container in the order of their tokens.
void forEachAttribute(const ac::AttrContainer& container,
                      const std::function<void(const std::shared_ptr<ac::Attribute>&)>& visit);

/// The path of what hangs under `path` by that name.
std::string pathBelow(const std::string& path, const std::string& name);

/// The class that a container stands for: that of the file where our build does not know it.
std::string classOf(const ac::AttrContainer& container);

/// Whether the class is not known here and a placeholder stands for it.
bool isUnknownClass(const ac::AttrContainer& container);

}  // namespace qormodel
