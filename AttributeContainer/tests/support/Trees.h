// Builds trees for tests.
#pragma once

#include <AttributeContainer/Object.h>

#include <memory>
#include <string>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// A new object of class `X` with a name.
template <class X = Object>
std::shared_ptr<X> named(const std::string& name) {
    const auto object = X::create();
    [[maybe_unused]] const auto refused = object->setName(name);
    return object;
}

/// The same as a child of `parent`, whatever the names that it has; empty if it is refused.
template <class X = Object>
std::shared_ptr<X> addNamed(Object& parent, const std::string& name) {
    const auto child = named<X>(name);
    return parent.addChild(child, AddFlags::SkipNameTest) ? child : nullptr;
}

inline std::vector<std::string> childNames(const Object& object) {
    std::vector<std::string> names;
    for (const auto& child : object.getChildren()) names.push_back(child->getName());
    return names;
}

using Names = std::vector<std::string>;

/// A chain of `length` objects below `root`, each the child of the one before.
inline std::shared_ptr<Object> addChain(const std::shared_ptr<Object>& root, int length) {
    std::shared_ptr<Object> last = root;
    for (int i = 0; i < length; ++i) last = addNamed(*last, "link");
    return last;
}

}  // namespace QOR::AttributeContainer::Testing
