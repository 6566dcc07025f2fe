#include <AttributeContainer/SetAttrMarksVisitor.h>

#include <AttributeContainer/Attribute.h>

namespace QOR::AttributeContainer {

SetAttrMarksVisitor::SetAttrMarksVisitor(bool mark, unsigned maxLevel)
    : AttributeVisitor(0, maxLevel), mark(mark) {}

SetAttrMarksVisitor::~SetAttrMarksVisitor() = default;

VisitorCore::VisitResult SetAttrMarksVisitor::visit(Attribute& attribute) {
    if (attribute.isMarked() != mark) attribute.setMarked(mark);
    return Continue;
}

}  // namespace QOR::AttributeContainer
