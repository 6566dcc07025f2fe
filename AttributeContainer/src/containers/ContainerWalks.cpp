// The walks of visitors over a container and what it contains.
#include <AttributeContainer/kVAttrContainer.h>

#include "containers/FieldWalk.h"

namespace QOR::AttributeContainer {

namespace {
// Walks the fields of a container with `walkField`, and tells whether the walk goes on.
template <class WalkField>
auto throughFields(AttrContainer& container, const WalkField& walkField) {
    return [&container, walkField](VisitorCore::VisitResult& result) {
        forEachField(container, [&](AttrContainer& field) {
            return goesOnAfter(result, walkField(field));
        });
        return (result & VisitorCore::Stop) == 0;
    };
}
}  // namespace

VisitorCore::VisitResult AttrContainer::fieldVisitor(GeneralVisitor<AttrContainer&>& visitor,
                                                     int mode) {
    return walk(*this, visitor, mode, throughFields(*this, [&](AttrContainer& field) {
        return field.fieldVisitor(visitor, mode);
    }));
}

VisitorCore::VisitResult AttrContainer::fieldAndStructureVisitor(
    GeneralVisitor<AttrContainer&>& visitor, int mode) {
    return walk(*this, visitor, mode, throughFields(*this, [&](AttrContainer& field) {
        return field.fieldAndStructureVisitor(visitor, mode);
    }));
}

VisitorCore::VisitResult AttrContainer::observerVisitor(ObserverVisitor& visitor, bool recurse) {
    const auto descend = throughFields(*this, [&](AttrContainer& field) {
        return field.observerVisitor(visitor, recurse);
    });
    // Behind what it contains: the order of a walk with its visits behind the fields.
    return walk(static_cast<Observer&>(*this), visitor, 0,
                [&](VisitorCore::VisitResult& result) { return !recurse || descend(result); });
}

VisitorCore::VisitResult AttrContainer::attributeVisitor(AttributeVisitor& visitor, bool recurse) {
    const unsigned level = visitor.getHierLevel();
    if (level > visitor.getMaxLevel()) return VisitorCore::Prune;
    VisitorCore::VisitResult result = visitor.visit(*this);
    if (result != VisitorCore::Continue) return result;
    if (level >= visitor.getFirstLevel()) {
        const auto visitEach = [&](std::uint64_t first, auto end) {
            for (std::uint64_t token = first; token < end(); ++token) {
                if (const AttrTable* const table = untouchedTable(token);
                    table && visitor.passesUntouched()) {
                    token = table->getLastToken();
                    continue;
                }
                const auto attribute = attributeAt(token);
                if (!attribute) continue;
                result = result | visitor.visit(*attribute);
                if (result != VisitorCore::Continue) return;
            }
        };
        // A result from the first list lets the second one still visit its first attribute.
        const std::uint64_t numHardCoded = getNumHardCodedAttributes();
        visitEach(0, [=] { return numHardCoded; });
        visitEach(numHardCoded, [this] { return getNumAttributes(); });
    }
    if (recurse) {
        visitor.setHierLevel(level + 1);
        forEachField(*this, [&](AttrContainer& field) {
            return goesOnAfter(result, field.attributeVisitor(visitor, recurse));
        });
        visitor.setHierLevel(level);
    }
    return result | visitor.visitDone(*this);
}

}  // namespace QOR::AttributeContainer
