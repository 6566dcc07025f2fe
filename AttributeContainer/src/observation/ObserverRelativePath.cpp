// The path of an observer as seen from another one.
#include <AttributeContainer/Observer.h>

#include <algorithm>
#include <string_view>

namespace QOR::AttributeContainer {

namespace {
// The "/" that ends the first name of a path; a path begins with a "/" of its own.
std::size_t endOfName(std::string_view path) {
    return path.size() < 2 ? std::string_view::npos : path.find('/', 1);
}

// As many characters behind the first one as the name has with its leading "/": where a further
// name follows, its "/" is among them, so the last name of a path differs from the same name
// halfway down a longer one. Stored paths have this form.
std::string_view comparedPart(std::string_view path, std::size_t end) {
    if (path.empty()) return {};
    return path.substr(1, std::min(end, path.size()));
}

void dropName(std::string_view& path, std::size_t end) {
    path = end == std::string_view::npos ? std::string_view{} : path.substr(end);
}
}  // namespace

std::optional<std::string> Observer::inqObjPath(const Observer* reference) const {
    const auto from = reference->inqObjPath();
    if (!from) return inqObjPath();
    const auto to = inqObjPath();
    if (!to) {
        std::string name = getName();
        if (reference->inqObserver(name).expired()) return std::nullopt;
        return name;
    }

    std::string_view restFrom = *from;
    std::string_view restTo = *to;
    std::size_t depth = 0;
    std::size_t common = 0;
    for (; !restFrom.empty(); ++depth) {
        const std::size_t endFrom = endOfName(restFrom);
        if (common == depth) {
            if (std::min(endFrom, restFrom.size()) < 2) break;  // the root, or a name of no length
            const std::size_t endTo = endOfName(restTo);
            if (comparedPart(restTo, endTo) == comparedPart(restFrom, endFrom)) {
                ++common;
                dropName(restTo, endTo);
            }
        }
        dropName(restFrom, endFrom);
    }

    std::string path;
    for (std::size_t step = common; step < depth; ++step) path += "~/";
    if (restTo.empty()) return path;
    const bool isDoubled = path.empty() ? common != 0 : restTo.front() == path.back();
    return path += restTo.substr(isDoubled ? 1 : 0);
}

}  // namespace QOR::AttributeContainer
