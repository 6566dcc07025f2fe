#include "model/Elements.h"

#include <AttributeContainer/IFallbackObject.h>
#include <AttributeContainer/UnknownAttrContainer.h>

#include <utility>
#include <vector>

namespace qormodel {

namespace {
Element elementOf(std::shared_ptr<ac::AttrContainer> container, const Element& parent,
                  bool isField) {
    Element element;
    element.object = std::dynamic_pointer_cast<ac::Object>(container);
    element.path = pathBelow(parent.path, container->getName());
    element.container = std::move(container);
    element.depth = parent.depth + 1;
    element.isField = isField;
    return element;
}

// What hangs below an element, the last one first, as a stack wants it.
std::vector<Element> below(const Element& element) {
    std::vector<Element> found;
    for (std::uint64_t i = 0; i < element.container->getNumFields(); ++i)
        if (auto field = element.container->getField(i).lock())
            found.push_back(elementOf(std::move(field), element, true));
    if (element.object)
        for (const auto& child : element.object->getChildren())
            found.push_back(elementOf(child, element, false));
    return {std::make_move_iterator(found.rbegin()), std::make_move_iterator(found.rend())};
}
}  // namespace

void forEachElement(const std::shared_ptr<ac::Object>& root,
                    const std::function<bool(const Element&)>& visit) {
    forEachElementBelow({root, root, "/", 0, false}, visit);
}

void forEachElementBelow(const Element& start, const std::function<bool(const Element&)>& visit) {
    std::vector<Element> waiting{start};
    while (!waiting.empty()) {
        const Element element = std::move(waiting.back());
        waiting.pop_back();
        if (!visit(element)) continue;
        auto next = below(element);
        waiting.insert(waiting.end(), std::make_move_iterator(next.begin()),
                       std::make_move_iterator(next.end()));
    }
}

void forEachAttribute(const ac::AttrContainer& container,
                      const std::function<void(const std::shared_ptr<ac::Attribute>&)>& visit) {
    for (std::uint64_t token = 0; token < container.getNumAttributes(); ++token) {
        // The walk itself changes nothing; whoever asks for a tree that is const gets it so.
        const auto found = container.getAttribute(token).lock();
        if (found) visit(std::const_pointer_cast<ac::Attribute>(found));
    }
}

std::string pathBelow(const std::string& path, const std::string& name) {
    return (path == "/" ? path : path + '/') + name;
}

std::string classOf(const ac::AttrContainer& container) {
    if (const auto* const fallback = dynamic_cast<const ac::IFallbackObject*>(&container))
        return fallback->getOriginalClassName();
    if (const auto* const unknown = dynamic_cast<const ac::UnknownAttrContainer*>(&container))
        return unknown->getUnknownTypeName();
    return container.getClassName();
}

bool isUnknownClass(const ac::AttrContainer& container) {
    return dynamic_cast<const ac::IFallbackObject*>(&container) != nullptr ||
           dynamic_cast<const ac::UnknownAttrContainer*>(&container) != nullptr;
}

}  // namespace qormodel
