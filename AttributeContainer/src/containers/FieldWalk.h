// The frames of a walk over one element of a tree, for fields and children alike.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <cstdint>

namespace QOR::AttributeContainer {

/// Calls `visit(field)` for each field in token order until it gives false. Fields may come and go
/// meanwhile.
template <class Visit>
void forEachField(AttrContainer& container, const Visit& visit) {
    for (std::uint64_t token = 0; token < container.getNumFields(); ++token) {
        const auto field = container.getField(token).lock();
        if (field && !visit(*field)) return;
    }
}

/// Visits one element and, between the visits that `mode` asks for, runs `descend(result)` one
/// level down, which walks what is below and ors its results in. Where that gives false the walk
/// returns at once.
template <class Element, class Visitor, class Descend>
VisitorCore::VisitResult walk(Element& element, Visitor& visitor, int mode,
                              const Descend& descend) {
    const unsigned level = visitor.getHierLevel();
    if (level > visitor.getMaxLevel()) return VisitorCore::Prune;
    const bool withDone = (mode & 2) != 0;
    const bool isVisited = level >= visitor.getFirstLevel();
    VisitorCore::VisitResult result = VisitorCore::Continue;
    if ((mode & 3) != 0 && isVisited) {
        result = visitor.visit(element);
        if (result != VisitorCore::Continue)
            return withDone ? result | visitor.visitDone(element) : result;
    }
    visitor.setHierLevel(level + 1);
    const bool goesOn = descend(result);
    visitor.setHierLevel(level);
    if (!goesOn || (mode & 3) == 1 || !isVisited) return result;
    return result | (withDone ? visitor.visitDone(element) : visitor.visit(element));
}

/// Ors `added` in. \return whether a walk over siblings goes on.
inline bool goesOnAfter(VisitorCore::VisitResult& result, VisitorCore::VisitResult added) {
    result = result | added;
    return (result & VisitorCore::Stop) == 0;
}

}  // namespace QOR::AttributeContainer
