#include "merge/AttributeMerge.h"

#include "compare/ValueEquality.h"
#include "model/Values.h"

#include <memory>
#include <set>

namespace qormodel {

namespace {
using AttributePtr = std::shared_ptr<ac::Attribute>;

constexpr std::size_t valueLength = 60;

AttributePtr inqAttribute(const Node* node, const std::string& name) {
    return node ? node->element.container->getAttribute(name).lock() : nullptr;
}

bool isSame(const AttributePtr& a, const AttributePtr& b) {
    return a && b ? isSameValue(*a, *b) : !a && !b;
}

std::string inShort(const AttributePtr& attribute) {
    return attribute ? shortValueText(*attribute, valueLength) : "";
}

// The names of all attributes, those of ours first.
std::vector<std::string> namesOf(const Node& ours, const Node& theirs) {
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const Node* const node : {&ours, &theirs})
        forEachAttribute(*node->element.container, [&](const auto& attribute) {
            if (seen.insert(attribute->getName()).second) names.push_back(attribute->getName());
        });
    return names;
}

// False where it cannot be done: the class declares the attribute.
bool takeOver(ac::AttrContainer& target, const AttributePtr& source, const std::string& name) {
    return source ? takeAttribute(target, *source) : target.rmAttribute(name);
}
}  // namespace

bool takeAttribute(ac::AttrContainer& target, const ac::Attribute& source) {
    const std::string name = source.getName();
    const auto attribute = target.getAttribute(name).lock();
    if (attribute && attribute->getClassName() == source.getClassName()) {
        const ac::BlockObserver block;
        *attribute = source;
        return true;
    }
    if (attribute && !target.rmAttribute(name)) return false;
    return !target.addAttribute(source.duplicate(ac::CreateDeep, std::nullopt), name).expired();
}

std::uint64_t mergeAttributes(const Node* base, const Node& ours, const Node& theirs,
                              std::optional<Side> preferred, std::vector<Conflict>& conflicts) {
    std::uint64_t numChanged = 0;
    for (const auto& name : namesOf(ours, theirs)) {
        const auto before = inqAttribute(base, name);
        const auto here = inqAttribute(&ours, name);
        const auto there = inqAttribute(&theirs, name);
        if (isSame(here, there) || isSame(before, there)) continue;
        const bool isConflict = !isSame(before, here);
        bool isTaken = false;
        if (!isConflict || preferred == Side::Theirs)
            isTaken = takeOver(*ours.element.container, there, name);
        numChanged += isTaken ? 1 : 0;
        if (isTaken || (isConflict && preferred)) continue;
        conflicts.push_back({pathBelow(ours.element.path, name),
                             isConflict ? "changed on both sides" : "cannot be taken over",
                             inShort(before), inShort(here), inShort(there)});
    }
    return numChanged;
}

}  // namespace qormodel
