#include <AttributeContainer/AttrCountMarkedVisitor.h>

#include <AttributeContainer/Attribute.h>

namespace QOR::AttributeContainer {

AttrCountMarkedVisitor::AttrCountMarkedVisitor(unsigned maxLevel) : AttributeVisitor(0, maxLevel) {}

AttrCountMarkedVisitor::~AttrCountMarkedVisitor() = default;

VisitorCore::VisitResult AttrCountMarkedVisitor::visit(Attribute& attribute) {
    if (attribute.isMarked()) ++numMarkedAttributes;
    return Continue;
}

}  // namespace QOR::AttributeContainer
