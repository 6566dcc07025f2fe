// Copies the values of one container tree into another of the same shape.
#pragma once

#include <AttributeContainer/Visitor.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>

namespace QOR::AttributeContainer {

/// Copies through text, so that values of unlike types convert, each as a change with no initiator.
/// Pre-observers are asked, but a refusal counts where the target is a text, as names are, and
/// nowhere else. Elements are paired by token; what has no counterpart is left out. The target must
/// outlive the walk; after one, the visitor keeps hold of the containers that it met last.
class QOR_API AttrCopyVisitor : public AttributeVisitor {
public:
    /// Copies from the container on which the walk begins into `target`, and their fields into each
    /// other, down to `maxLevel`; 0 is `target` alone.
    AttrCopyVisitor(AttrContainer& target, unsigned maxLevel);
    ~AttrCopyVisitor() override;

    /// Whether only the attributes that are marked in the source are copied; false at first.
    bool getConsiderAuxiliaryOnly() const { return considerAuxiliaryOnly; }
    void setConsiderAuxiliaryOnly(bool value) { considerAuxiliaryOnly = value; }

    using AttributeVisitor::visit;
    /// Finds the counterpart of a container. \return Skip where there is none.
    VisitResult visit(AttrContainer& source) override;
    /// \throws std::invalid_argument for the text of a malformed number, where the types differ.
    VisitResult visit(Attribute& source) override;

private:
    struct Level {
        std::uint64_t tokenOf(const AttrContainer& field);

        std::shared_ptr<AttrContainer> destination;
        std::shared_ptr<AttrContainer> source;
        std::unordered_map<const AttrContainer*, std::uint64_t> fieldTokens;
    };

    void enter(std::shared_ptr<AttrContainer> destination, AttrContainer& source);

    bool considerAuxiliaryOnly = false;
    AttrContainer& target;
    std::deque<Level> levels;  // one per level of the walk
};

}  // namespace QOR::AttributeContainer
