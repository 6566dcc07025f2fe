// Walking a path name by name, for observables and observers alike.
#pragma once

#include <AttributeContainer/ObservingObject.h>

#include <memory>
#include <string>

namespace QOR::AttributeContainer {

/// Resolves a path of at least two names from `start`, asking each element for the next name.
/// \return an empty pointer for a path of one name, or where a name leads nowhere.
std::weak_ptr<const ObservingObject> resolveSegments(const ObservingObject& start,
                                                     const std::string& path);

/// One step of a path that hands a rest on to another element. Paths come from streams: however
/// long one is, the steps do not pile up on the call stack beyond a limit.
class PathStep {
public:
    PathStep();
    PathStep(const PathStep&) = delete;
    PathStep& operator=(const PathStep&) = delete;
    ~PathStep();

    bool isTooDeep() const;
};

}  // namespace QOR::AttributeContainer
