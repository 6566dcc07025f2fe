#include "model/ModelPath.h"

#include <utility>

namespace qormodel {

namespace {
std::string absolute(const std::string& path) {
    std::string result = path.starts_with('/') ? path : '/' + path;
    while (result.size() > 1 && result.ends_with('/')) result.pop_back();
    return result;
}

std::shared_ptr<ac::ObservingObject> inqTarget(const Document& document, const std::string& path) {
    if (path == "/") return document.root;
    return std::const_pointer_cast<ac::ObservingObject>(document.root->inqObserver(path).lock());
}
}  // namespace

std::optional<Element> inqElement(const Document& document, const std::string& path) {
    const std::string wanted = absolute(path);
    auto container =
        std::dynamic_pointer_cast<ac::AttrContainer>(inqTarget(document, wanted));
    if (!container) return std::nullopt;
    Element element;
    element.object = std::dynamic_pointer_cast<ac::Object>(container);
    element.isField = !element.object || (wanted != "/" && !element.object->getParent());
    element.path = wanted;
    element.container = std::move(container);
    return element;
}

std::optional<FoundAttribute> inqAttribute(const Document& document, const std::string& path) {
    const std::string wanted = absolute(path);
    const auto [holder, name] = splitPath(wanted);
    auto element = inqElement(document, holder);
    if (!element) return std::nullopt;
    auto attribute = element->container->getAttribute(name).lock();
    if (!attribute) return std::nullopt;
    return FoundAttribute{std::move(attribute), std::move(*element), wanted};
}

std::pair<std::string, std::string> splitPath(const std::string& path) {
    const std::string wanted = absolute(path);
    const auto last = wanted.rfind('/');
    return {last == 0 ? "/" : wanted.substr(0, last), wanted.substr(last + 1)};
}

}  // namespace qormodel
