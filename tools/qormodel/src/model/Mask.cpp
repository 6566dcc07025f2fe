#include "model/Mask.h"

#include "model/Elements.h"
#include "model/ModelPath.h"

#include <QOR/Text.h>

namespace qormodel {

namespace {
void markAll(const ac::AttrContainer& container, bool isMarked) {
    forEachAttribute(container,
                     [&](const auto& attribute) { attribute->setMarked(isMarked); });
}

// The name is the first attribute of every object.
void markName(const Element& element) {
    if (!element.object) return;
    const auto name = element.container->getAttribute(std::uint64_t{0}).lock();
    if (name) std::const_pointer_cast<ac::Attribute>(name)->setMarked(true);
}

void markWayTo(const Document& document, const std::string& path) {
    for (std::string at = path; at != "/"; at = splitPath(at).first)
        if (const auto element = inqElement(document, at)) markName(*element);
}
}  // namespace

void markOnly(const Document& document, const std::vector<std::string>& paths) {
    forEachElement(document.root, [](const Element& element) {
        markAll(*element.container, false);
        return true;
    });
    for (const auto& path : paths) {
        const auto attribute = inqAttribute(document, path);
        const auto element = attribute ? attribute->element : inqElement(document, path);
        if (!element)
            throw Failure(document.placeOf(0, 0), "there is no element or attribute " + path);
        if (attribute) {
            attribute->attribute->setMarked(true);
        } else {
            forEachElementBelow(*element, [](const Element& each) {
                markAll(*each.container, true);
                return true;
            });
        }
        markWayTo(document, element->path);
    }
}

bool isAtOrBelow(const std::string& path, const std::vector<std::string>& paths) {
    for (std::string wanted : paths) {
        if (!wanted.starts_with('/')) wanted.insert(0, 1, '/');
        while (wanted.ends_with('/')) wanted.pop_back();
        const bool isAsLong = path.size() == wanted.size() ||
                              (path.size() > wanted.size() && path[wanted.size()] == '/');
        if (isAsLong && QOR::compareIgnoreCase(path.substr(0, wanted.size()), wanted) == 0)
            return true;
    }
    return false;
}

}  // namespace qormodel
