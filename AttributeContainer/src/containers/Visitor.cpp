#include <AttributeContainer/Visitor.h>

namespace QOR::AttributeContainer {

VisitorCore::~VisitorCore() = default;

AttributeVisitor::~AttributeVisitor() = default;

VisitorCore::VisitResult AttributeVisitor::visitDone(AttrContainer&) {
    return Continue;
}

VisitorCore::VisitResult AttributeVisitor::visit(AttrContainer&) {
    return Continue;
}

ObserverVisitor::~ObserverVisitor() = default;

}  // namespace QOR::AttributeContainer
