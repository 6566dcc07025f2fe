// How objects are named by paths, and found by them.
#include <AttributeContainer/Object.h>

#include "observation/PathText.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace QOR::AttributeContainer {

namespace {
constexpr std::string_view separators = "/\\";

bool isAbsolute(const std::string& path) {
    return !path.empty() && separators.find(path.front()) != std::string_view::npos;
}

std::vector<std::string_view> elementsOf(std::string_view path) {
    std::vector<std::string_view> elements;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find_first_of(separators, begin), path.size());
        if (end > begin) elements.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return elements;
}

// One step up for each element of `from` that is not shared, then what is left of `to`.
std::string relativePath(const std::string& to, const std::string& from) {
    const auto target = elementsOf(to);
    const auto start = elementsOf(from);
    const auto [left, unshared] = std::ranges::mismatch(target, start);
    std::string path;
    const auto append = [&](std::string_view element) {
        if (!path.empty()) path += '/';
        path += element == ".." ? "~" : element;
    };
    for (auto step = unshared; step != start.end(); ++step) append("~");
    for (auto element = left; element != target.end(); ++element) append(*element);
    return path.empty() ? "." : path;
}
}  // namespace

std::optional<std::string> Object::inqObjPath() const {
    const auto above = parent.lock();
    if (!above) return "/";
    auto path = above->inqObjPath();
    if (!path) return std::nullopt;
    if (!path->ends_with('/')) *path += '/';
    return *path += getName();
}

std::optional<std::string> Object::inqObjPath(const Object& reference) const {
    const auto to = inqObjPath();
    const auto from = reference.inqObjPath();
    if (!to || !from || isAbsolute(*to) != isAbsolute(*from)) return std::nullopt;
    return relativePath(*to, *from);
}

std::weak_ptr<const ObservingObject> Object::inqObserver(
    const std::optional<const std::string>& path) const {
    if (!path || path->empty()) return AttrContainer::inqObserver(path);
    const PathStep step;
    if (step.isTooDeep()) return {};
    if (path->front() == '/') {
        const auto root = findRoot();
        return root->inqObserver(path->substr(1));
    }
    if (path->front() == '~') {
        const std::shared_ptr<const Object> above = parent.lock();
        if (above && path->size() == 1) return above;
        if (above && (*path)[1] == '/') return above->inqObserver(path->substr(2));
    }
    if (const auto& child = children.inqChild(*path)) return child;
    return AttrContainer::inqObserver(path);
}

std::shared_ptr<Object> Object::inqObject(const std::optional<std::string>& path) {
    if (!path) return nullptr;
    return std::dynamic_pointer_cast<Object>(inqObserver(*path).lock());
}

std::shared_ptr<const Object> Object::inqObject(const std::optional<std::string>& path) const {
    if (!path) return nullptr;
    return std::dynamic_pointer_cast<const Object>(inqObserver(*path).lock());
}

}  // namespace QOR::AttributeContainer
