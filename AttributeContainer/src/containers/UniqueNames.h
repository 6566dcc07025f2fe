// Keeps the search for a free name short where many elements want the same one.
#pragma once

#include <string>

namespace QOR::AttributeContainer {

class AttrContainer;

/// Remembers, per thread, the names that were made last, so that the next search with the same
/// beginning goes on from there instead of trying all names again.
class UniqueNames {
public:
    /// The name to try first: behind the last one made, or `candidate` itself.
    static std::string resume(const AttrContainer& container, const std::string& candidate);
    static void remember(const AttrContainer& container, const std::string& candidate,
                         const std::string& found);
    /// Names of this container may have become free, or it goes away and another one can come to
    /// lie in its place.
    static void forget(const AttrContainer& container);
    /// This name may have become free. Nothing is forgotten where no search would come to it, so that
    /// a stream which renames its elements all the time cannot make each search begin anew.
    static void forget(const AttrContainer& container, const std::string& name);
};

}  // namespace QOR::AttributeContainer
