// A visitor that stores settings so that they come back whole.
#pragma once

#include <AttributeContainer/AttrRegistryVisitor.h>

#include <memory>
#include <string>
#include <vector>

namespace settings {

/// Stores each attribute as a text with a terminator.
///
/// `AttrWriteRegistry` stores texts without one, but `RegKeys::queryKey` takes the last character
/// of a stored text for a terminator: what went in as "125" comes back as "12". And a text that is
/// too long to be read is stored all the same. This one writes the terminator, and tells of texts
/// that are too long instead of storing them.
class WholeTextWriter : public QOR::AttributeContainer::AttrRegistryVisitor {
public:
    explicit WholeTextWriter(std::shared_ptr<const QOR::AttributeContainer::RegKeys> keys);

    using AttrRegistryVisitor::visit;
    VisitResult visit(QOR::AttributeContainer::Attribute& attribute) override;

    /// What could not be stored, and why.
    const std::vector<std::string>& getProblems() const { return problems; }

private:
    std::vector<std::string> problems;
};

}  // namespace settings
