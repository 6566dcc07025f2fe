#include <AttributeContainer/AttrCopyVisitor.h>

#include <utility>

namespace QOR::AttributeContainer {

namespace {
std::shared_ptr<AttrContainer> sharedFrom(AttrContainer& container) {
    return std::static_pointer_cast<AttrContainer>(container.shared_from_this());
}
}  // namespace

AttrCopyVisitor::AttrCopyVisitor(AttrContainer& target, unsigned maxLevel)
    : AttributeVisitor(0, maxLevel), target(target) {}

AttrCopyVisitor::~AttrCopyVisitor() = default;

VisitorCore::VisitResult AttrCopyVisitor::visit(AttrContainer& source) {
    while (levels.size() > getHierLevel()) levels.pop_back();
    if (levels.empty()) {
        enter(sharedFrom(target), source);
        return Continue;
    }
    Level& parent = levels.back();
    auto destination = parent.destination->getField(parent.tokenOf(source)).lock();
    if (!destination) return Skip;
    enter(std::move(destination), source);
    return Continue;
}

VisitorCore::VisitResult AttrCopyVisitor::visit(Attribute& source) {
    if (levels.empty() || (considerAuxiliaryOnly && !source.isMarked())) return Continue;
    const Level& level = levels.back();
    const std::uint64_t token = level.source->getAttrToken(source);
    if (const auto destination = level.destination->getAttribute(token).lock())
        destination->assignFrom(source.getValueString());
    return Continue;
}

void AttrCopyVisitor::enter(std::shared_ptr<AttrContainer> destination, AttrContainer& source) {
    levels.push_back({std::move(destination), sharedFrom(source), {}});
}

// A container finds a field by a search through all of them, so they are numbered once per level.
std::uint64_t AttrCopyVisitor::Level::tokenOf(const AttrContainer& field) {
    if (fieldTokens.empty())
        for (std::uint64_t token = 0; token < source->getNumFields(); ++token)
            fieldTokens.try_emplace(source->getField(token).lock().get(), token);
    const auto found = fieldTokens.find(&field);
    const bool isStillThere =
        found != fieldTokens.end() && source->getField(found->second).lock().get() == &field;
    return isStillThere ? found->second : source->getFieldToken(field);
}

}  // namespace QOR::AttributeContainer
