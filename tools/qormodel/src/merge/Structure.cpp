#include "merge/Structure.h"

#include "compare/Diff.h"

#include <utility>

namespace qormodel {

namespace {
constexpr std::size_t none = FlatTree::none;

// One side as the other sees it: its tree, and the node that an entity has in it.
struct View {
    const FlatTree& tree;
    const std::vector<std::size_t>& entityOf;
    std::size_t Entity::*node;
    std::size_t Entity::*other;
};

class Decider {
public:
    Decider(const Versions& versions, std::optional<Side> preferred,
            std::vector<Conflict>& conflicts)
        : versions(versions),
          preferred(preferred),
          conflicts(conflicts),
          placements(versions.entities.size()) {}

    std::vector<Placement> run() {
        for (const std::size_t entity : versions.ofBase) decideKnown(entity);
        decideAdded(versions.ofOurs, ours);
        decideAdded(versions.ofTheirs, theirs);
        for (std::size_t i = 1; i < placements.size(); ++i)
            if (placements[i].isAlive) placements[i].parent = parentOf(i);
        breakCircles();
        return std::move(placements);
    }

private:
    const Entity& at(std::size_t entity) const { return versions.entities[entity]; }
    bool isTheirsPreferred() const { return preferred == Side::Theirs; }

    void report(std::size_t entity, const std::string& text) {
        if (preferred) return;
        const Entity& each = at(entity);
        const Node& node = each.isInOurs()     ? versions.ours.nodes[each.ours]
                           : each.isInTheirs() ? versions.theirs.nodes[each.theirs]
                                               : versions.base.nodes[each.base];
        const auto inShort = [](const FlatTree& tree, std::size_t index) {
            return index == none ? "" : classOf(*tree.nodes[index].element.container);
        };
        conflicts.push_back({node.element.path, text, inShort(versions.base, each.base),
                             inShort(versions.ours, each.ours),
                             inShort(versions.theirs, each.theirs)});
    }

    void decideKnown(std::size_t entity) {
        const Entity& each = at(entity);
        Placement& placement = placements[entity];
        if (each.isInOurs() && each.isInTheirs()) {
            placement.isAlive = true;
        } else if (each.isInOurs()) {
            placement.isAlive = survives(entity, ours, "removed there, changed here", false);
        } else if (each.isInTheirs()) {
            placement.isAlive = survives(entity, theirs, "removed here, changed there", true);
            placement.isFromTheirs = true;
        }
    }

    // Whether an element stays that only the side of `view` still has. What hangs where it hung
    // goes the way of its parent.
    bool survives(std::size_t entity, const View& view, const char* text, bool isTheirs) {
        const Entity& each = at(entity);
        const std::size_t above = versions.ofBase[versions.base.nodes[each.base].parent];
        const bool isAboveToo = at(above).*view.node != none && at(above).*view.other == none;
        if (isAboveToo && view.tree.nodes[each.*view.node].parent == at(above).*view.node)
            return placements[above].isAlive;
        if (!isChanged(entity, view)) return false;
        report(entity, text);
        return isTheirs == isTheirsPreferred();
    }

    // Whether the side has changed anything at or below an element, against the base.
    bool isChanged(std::size_t entity, const View& view) const {
        std::vector<std::size_t> waiting{entity};
        while (!waiting.empty()) {
            const std::size_t index = waiting.back();
            const Entity& each = at(index);
            waiting.pop_back();
            if (!each.isInBase()) return true;
            const Node& was = versions.base.nodes[each.base];
            const Node& is = view.tree.nodes[each.*view.node];
            if (versions.ofBase[was.parent] != view.entityOf[is.parent]) return true;
            if (!hasSameAttributes(*was.element.container, *is.element.container)) return true;
            for (const auto* const list : {&is.fields, &is.children}) {
                for (const std::size_t child : *list) {
                    const std::size_t below = view.entityOf[child];
                    if (at(below).*view.other == none) waiting.push_back(below);
                    else if (wasMovedTo(below, index)) return true;
                }
            }
        }
        return false;
    }

    // Whether a child of `parent` hung elsewhere in the base.
    bool wasMovedTo(std::size_t child, std::size_t parent) const {
        const Entity& each = at(child);
        return !each.isInBase() || versions.ofBase[versions.base.nodes[each.base].parent] != parent;
    }

    void decideAdded(const std::vector<std::size_t>& entities, const View& view) {
        for (const std::size_t entity : entities) {
            const Entity& each = at(entity);
            if (each.isInBase()) continue;
            Placement& placement = placements[entity];
            placement.isFromTheirs = !each.isInOurs();
            const std::size_t above = view.entityOf[view.tree.nodes[each.*view.node].parent];
            placement.isAlive = placement.isAlive || placements[above].isAlive;
        }
    }

    // The entity above on one side; none where that side does not have it, or it does not stay.
    std::size_t aboveIn(std::size_t entity, const View& view) const {
        const std::size_t node = at(entity).*view.node;
        if (node == none) return none;
        const std::size_t above = view.entityOf[view.tree.nodes[node].parent];
        return placements[above].isAlive ? above : none;
    }

    std::size_t parentOf(std::size_t entity) {
        const Entity& each = at(entity);
        const std::size_t here = aboveIn(entity, ours);
        const std::size_t there = aboveIn(entity, theirs);
        if (here == none || there == none) return here != none ? here : there != none ? there : 0;
        if (here == there) return here;
        const std::size_t before =
            each.isInBase() ? versions.ofBase[versions.base.nodes[each.base].parent] : none;
        if (before == here) return there;
        if (before == there) return here;
        report(entity, "moved to " + versions.theirs.nodes[each.theirs].element.path +
                           " there, to another place here");
        return isTheirsPreferred() ? there : here;
    }

    bool reachesRoot(std::size_t entity) const {
        std::size_t steps = 0;
        while (entity != 0 && steps++ <= placements.size()) entity = placements[entity].parent;
        return entity == 0;
    }

    // Two moves may hang each of two objects below the other; then they stay where ours has them.
    void breakCircles() {
        for (std::size_t i = 1; i < placements.size(); ++i) {
            if (!placements[i].isAlive || reachesRoot(i)) continue;
            const std::size_t here = aboveIn(i, ours);
            if (here == none || here == placements[i].parent) continue;
            placements[i].parent = here;
            preferredIsNoHelp(i);
        }
    }
    void preferredIsNoHelp(std::size_t entity) {
        const auto asked = std::exchange(preferred, std::nullopt);
        report(entity, "the moves of both sides would close a circle");
        preferred = asked;
    }

    const Versions& versions;
    std::optional<Side> preferred;
    std::vector<Conflict>& conflicts;
    std::vector<Placement> placements;
    const View ours{versions.ours, versions.ofOurs, &Entity::ours, &Entity::theirs};
    const View theirs{versions.theirs, versions.ofTheirs, &Entity::theirs, &Entity::ours};
};
}  // namespace

std::vector<Placement> decideStructure(const Versions& versions, std::optional<Side> preferred,
                                       std::vector<Conflict>& conflicts) {
    return Decider(versions, preferred, conflicts).run();
}

}  // namespace qormodel
