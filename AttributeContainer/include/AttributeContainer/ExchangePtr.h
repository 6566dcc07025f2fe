// The visitors that point copied relations at the copies of their observers.
#pragma once

#include <AttributeContainer/ObserverRelation.h>
#include <AttributeContainer/Visitor.h>

#include <cstdint>

namespace QOR::AttributeContainer {

/// Swaps the targets of the relations that are not yet in force, as a table tells.
class QOR_API ExchangePtr : public AttributeVisitor {
public:
    explicit ExchangePtr(ObserverRelationTableObserver& table);
    ~ExchangePtr() override;

    std::uint64_t getNumExchanged() const { return numExchanged; }
    using AttributeVisitor::visit;
    VisitResult visit(Attribute& attribute) override;

protected:
    /// Whether the table knows the container as the copy of another.
    bool isCopy(const AttrContainer& container) const;

private:
    std::uint64_t exchangePtr(Attribute& attribute, ObserverRelationTableObserver& table) const;

    std::uint64_t numExchanged = 0;
    ObserverRelationTableObserver& table;
};

/// The same, and puts the relations in force.
class QOR_API UpdateObserver : public ExchangePtr {
public:
    using ExchangePtr::ExchangePtr;
    using ExchangePtr::visit;
    VisitResult visit(Attribute& attribute) override;
    VisitResult visit(AttrContainer& container) override;
};

}  // namespace QOR::AttributeContainer
