// Sets or clears the marks of attributes.
#pragma once

#include <AttributeContainer/Visitor.h>

namespace QOR::AttributeContainer {

/// Gives all attributes down to a level the same mark. A mark is no value, so nobody is told.
class QOR_API SetAttrMarksVisitor : public AttributeVisitor {
public:
    SetAttrMarksVisitor(bool mark, unsigned maxLevel);
    ~SetAttrMarksVisitor() override;

    using AttributeVisitor::visit;
    VisitResult visit(Attribute& attribute) override;

private:
    bool mark;
};

}  // namespace QOR::AttributeContainer
