#include "observation/PathText.h"

#include <AttributeContainer/ThreadWord.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
// Far more than any tree has levels, far less than a call stack holds.
constexpr unsigned maxSteps = 1000;
QOR_THREAD_WORD unsigned numSteps = 0;

// Takes the next name off a path, from `begin` on. \return an empty one at its end.
std::string_view takeName(std::string_view path, std::size_t& begin) {
    while (begin < path.size() && path[begin] == '/') ++begin;
    const std::size_t end = std::min(path.find('/', begin), path.size());
    const std::string_view name = path.substr(begin, end - begin);
    begin = end;
    return name;
}
}  // namespace

PathStep::PathStep() { ++numSteps; }

PathStep::~PathStep() { --numSteps; }

bool PathStep::isTooDeep() const { return numSteps > maxSteps; }

std::weak_ptr<const ObservingObject> resolveSegments(const ObservingObject& start,
                                                     const std::string& path) {
    std::size_t at = 0;
    std::string_view name = takeName(path, at);
    if (at == path.size()) return {};
    std::string_view next = takeName(path, at);
    if (next.empty()) return {};
    const ObservingObject* current = &start;
    std::shared_ptr<const ObservingObject> found;  // keeps the element of the last step
    for (; !name.empty(); name = std::exchange(next, takeName(path, at))) {
        found = current->inqObserver(std::string(name)).lock();
        if (!found) return {};
        current = found.get();
    }
    return found;
}

}  // namespace QOR::AttributeContainer
