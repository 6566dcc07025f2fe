// Who watches whom in a document, as its text says it.
#pragma once

#include "model/Document.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qormodel {

/// One relation from something watched to its observer.
struct Relation {
    std::string observable;  ///< path of the attribute or container that is watched
    std::string holder;      ///< path of the container that it belongs to
    std::string observer;    ///< the path as stored
    std::string target;      ///< where it leads now; empty where it leads nowhere
    std::string action;
    std::string priority;
    bool isAsked = false;  ///< before a change, else told after it
    bool isActionKnown = true;
    std::uint64_t line = 0;
    std::size_t element = 0;  ///< the holder's place in the outline
};

/// All relations in the order of the file.
std::vector<Relation> listRelations(const Document& document);

/// The circles of containers that watch each other, each as the paths along it. A container watches
/// itself where one of its attributes is watched by it; that is no circle.
std::vector<std::vector<std::string>> findCycles(const std::vector<Relation>& relations);

}  // namespace qormodel
