// Counts marked attributes.
#pragma once

#include <AttributeContainer/Visitor.h>

#include <cstdint>

namespace QOR::AttributeContainer {

/// Counts the marked attributes down to a level.
class QOR_API AttrCountMarkedVisitor : public AttributeVisitor {
public:
    explicit AttrCountMarkedVisitor(unsigned maxLevel);
    ~AttrCountMarkedVisitor() override;

    std::uint64_t getNumMarkedAttributes() const { return numMarkedAttributes; }
    using AttributeVisitor::visit;
    VisitResult visit(Attribute& attribute) override;

private:
    std::uint64_t numMarkedAttributes = 0;
};

}  // namespace QOR::AttributeContainer
