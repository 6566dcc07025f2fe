#include "observation/PathText.h"

#include <AttributeContainer/ThreadWord.h>

#include <algorithm>
#include <vector>

namespace QOR::AttributeContainer {

namespace {
// Far more than any tree has levels, far less than a call stack holds.
constexpr unsigned maxSteps = 1000;
QOR_THREAD_WORD unsigned numSteps = 0;

std::vector<std::string> split(const std::string& path) {
    std::vector<std::string> segments;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (end > begin) segments.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return segments;
}
}  // namespace

PathStep::PathStep() { ++numSteps; }

PathStep::~PathStep() { --numSteps; }

bool PathStep::isTooDeep() const { return numSteps > maxSteps; }

std::weak_ptr<const ObservingObject> resolveSegments(const ObservingObject& start,
                                                     const std::string& path) {
    if (path.find('/') == std::string::npos) return {};
    const auto segments = split(path);
    if (segments.size() < 2) return {};
    const ObservingObject* current = &start;
    std::shared_ptr<const ObservingObject> found;  // keeps the element of the last step
    for (const std::string& segment : segments) {
        found = current->inqObserver(segment).lock();
        if (!found) return {};
        current = found.get();
    }
    return found;
}

}  // namespace QOR::AttributeContainer
