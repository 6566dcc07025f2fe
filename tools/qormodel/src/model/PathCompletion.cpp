#include "model/PathCompletion.h"

#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/Text.h>

#include <algorithm>
#include <optional>
#include <set>

namespace qormodel {

namespace {
namespace ac = QOR::AttributeContainer;

// Children ahead of fields, as paths find them.
std::optional<std::size_t> inqBelow(const Outline& outline, std::size_t element,
                                    const std::string& name) {
    const auto& parent = outline.elements[element];
    for (const auto* const list : {&parent.children, &parent.fields})
        for (const std::size_t index : *list)
            if (QOR::compareIgnoreCase(outline.elements[index].name, name) == 0) return index;
    return std::nullopt;
}

std::optional<std::size_t> inqHolder(const Outline& outline, const std::string& path) {
    std::size_t element = 0;
    for (std::size_t begin = path.starts_with('/') ? 1 : 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const auto found = inqBelow(outline, element, path.substr(begin, end - begin));
        if (!found) return std::nullopt;
        element = *found;
        begin = end + 1;
    }
    return element;
}
}  // namespace

std::vector<std::string> completePaths(const Outline& outline, const std::string& prefix) {
    if (outline.elements.empty()) return {};
    const auto last = prefix.rfind('/');
    const std::string holder = last == std::string::npos ? "" : prefix.substr(0, last + 1);
    const std::string begin = prefix.substr(holder.size());
    const auto element = inqHolder(outline, holder);
    if (!element) return {};
    std::vector<std::string> paths;
    std::set<std::string> told;
    const auto add = [&](const std::string& name, const char* end) {
        if (!name.starts_with(begin) || !ac::AttrContainer::isNameValid(name)) return;
        if (told.insert(name).second)
            paths.push_back((holder.empty() && begin.empty() ? "/" : holder) + name + end);
    };
    const auto& found = outline.elements[*element];
    for (const auto* const list : {&found.fields, &found.children})
        for (const std::size_t index : *list) add(outline.elements[index].name, "/");
    for (const auto& attribute : found.attributes) add(attribute.name, "");
    return paths;
}

}  // namespace qormodel
