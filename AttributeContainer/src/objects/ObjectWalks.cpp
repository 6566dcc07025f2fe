// The walks of visitors over an object, its fields and its children.
#include <AttributeContainer/Object.h>

#include "containers/FieldWalk.h"
#include "objects/ChildWalk.h"

namespace QOR::AttributeContainer {

namespace {
using VisitResult = VisitorCore::VisitResult;

// Walks the children of an object with `walkChild`, and tells whether the walk goes on.
template <class WalkChild>
bool throughChildren(const Object& object, VisitResult& result, const WalkChild& walkChild) {
    std::shared_ptr<Object> child;
    for (ChildWalk walk(object.getChildren()); walk.next(child);)
        if (child && !goesOnAfter(result, walkChild(*child))) return false;
    return true;
}

// The same for the fields first, and then for the children.
template <class WalkElement>
bool throughElements(Object& object, VisitResult& result, const WalkElement& walkElement) {
    bool goesOn = true;
    forEachField(object, [&](AttrContainer& field) {
        return goesOn = goesOnAfter(result, walkElement(field));
    });
    return goesOn && throughChildren(object, result, walkElement);
}

// Lets a visitor of constant objects ride on the walk of the others.
class ConstRider : public GeneralVisitor<Object&> {
public:
    explicit ConstRider(GeneralVisitor<const Object&>& visitor)
        : GeneralVisitor<Object&>(visitor.getFirstLevel(), visitor.getMaxLevel()),
          visitor(visitor) {
        setHierLevel(visitor.getHierLevel());
    }

    VisitResult visit(Object& object) override {
        visitor.setHierLevel(getHierLevel());
        return visitor.visit(object);
    }
    VisitResult visitDone(Object& object) override {
        visitor.setHierLevel(getHierLevel());
        return visitor.visitDone(object);
    }

private:
    GeneralVisitor<const Object&>& visitor;
};
}  // namespace

VisitResult Object::structureVisitor(GeneralVisitor<Object&>& visitor, int mode) {
    const auto descend = [&](VisitResult& result) {
        throughChildren(*this, result,
                        [&](Object& child) { return child.structureVisitor(visitor, mode); });
        return true;  // a walk that was stopped below still visits what lies above
    };
    return walk(*this, visitor, mode, descend);
}

VisitResult Object::structureVisitor(GeneralVisitor<const Object&>& visitor, int mode) const {
    const unsigned level = visitor.getHierLevel();
    ConstRider rider(visitor);
    const VisitResult result = const_cast<Object*>(this)->structureVisitor(rider, mode);
    visitor.setHierLevel(level);
    return result;
}

VisitResult Object::fieldAndStructureVisitor(GeneralVisitor<AttrContainer&>& visitor, int mode) {
    return walk(static_cast<AttrContainer&>(*this), visitor, mode, [&](VisitResult& result) {
        return throughElements(*this, result, [&](AttrContainer& element) {
            return element.fieldAndStructureVisitor(visitor, mode);
        });
    });
}

VisitResult Object::observerVisitor(ObserverVisitor& visitor, bool recurse) {
    // Behind what it contains: the order of a walk with its visits behind the fields.
    return walk(static_cast<Observer&>(*this), visitor, 0, [&](VisitResult& result) {
        return !recurse || throughElements(*this, result, [&](AttrContainer& element) {
            return element.observerVisitor(visitor, recurse);
        });
    });
}

}  // namespace QOR::AttributeContainer
