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
    /// Names may have become free.
    static void forget();
    /// This container goes away; another one can come to lie in its place.
    static void forget(const AttrContainer& container);
};

}  // namespace QOR::AttributeContainer
