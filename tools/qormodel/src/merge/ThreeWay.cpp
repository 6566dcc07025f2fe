#include "merge/ThreeWay.h"

#include "compare/OutlineDiff.h"
#include "merge/Assembly.h"
#include "merge/AttributeMerge.h"
#include "merge/RelationMerge.h"
#include "merge/Structure.h"
#include "merge/Versions.h"

#include <array>
#include <string>
#include <utility>

namespace qormodel {

namespace {
constexpr std::size_t none = FlatTree::none;

class Merge {
public:
    Merge(const Document& base, Document& ours, Document& theirs, std::optional<Side> preferred)
        : baseDocument(base),
          oursDocument(ours),
          theirsDocument(theirs),
          preferred(preferred),
          versions(base, ours, theirs),
          relations(listRelationChanges(base, ours, theirs)),
          placements(decideStructure(versions, preferred, result.conflicts)) {}

    ThreeWayResult run() {
        for (std::size_t i = 0; i < placements.size(); ++i) mergeValues(i);
        checkContents();
        count();
        assemble(parts(), true, [this](const Part& part, const std::string& former) {
            result.conflicts.push_back(
                {former, "the name is taken; it is " + part.container->getName() + " now"});
        });
        mergeTitle();
        mergeRelations(relations, oursDocument, result.conflicts);
        return std::move(result);
    }

private:
    const Entity& at(std::size_t entity) const { return versions.entities[entity]; }

    void mergeValues(std::size_t index) {
        const Entity& each = at(index);
        if (!each.isInOurs() || !each.isInTheirs()) return;
        const Node* const base = each.isInBase() ? &versions.base.nodes[each.base] : nullptr;
        result.numAttributes +=
            mergeAttributes(base, versions.ours.nodes[each.ours],
                            versions.theirs.nodes[each.theirs], preferred, result.conflicts);
    }

    // Content that no class understands is not merged. What theirs changed of it is told, whoever
    // is preferred: else it would be lost without a word.
    void checkContents() {
        const Contents before = listContents(baseDocument, versions.base);
        const Contents here = listContents(oursDocument, versions.ours);
        const Contents there = listContents(theirsDocument, versions.theirs);
        for (const auto& each : versions.entities) {
            if (!each.isInOurs() || !each.isInTheirs()) continue;
            const auto is = contentAt(there, each.theirs);
            if (is == contentAt(here, each.ours)) continue;
            if (each.isInBase() && is == contentAt(before, each.base)) continue;
            result.conflicts.push_back({versions.ours.nodes[each.ours].element.path,
                                        "content that is not understood was changed there"});
        }
    }

    void count() {
        for (std::size_t i = 0; i < placements.size(); ++i) {
            if (placements[i].isAlive && placements[i].isFromTheirs) ++result.numAdded;
            if (!placements[i].isAlive && at(i).isInOurs()) ++result.numRemoved;
        }
    }

    // Ours in its order, then what comes from theirs.
    std::vector<Part> parts() const {
        std::vector<Part> parts;
        std::vector<std::size_t> partOf(placements.size(), none);
        for (std::size_t i = 0; i < placements.size(); ++i) {
            if (!placements[i].isAlive) continue;
            partOf[i] = parts.size();
            const Node& node = placements[i].isFromTheirs ? versions.theirs.nodes[at(i).theirs]
                                                          : versions.ours.nodes[at(i).ours];
            parts.push_back({node.element.container, placements[i].parent, node.element.isField,
                             node.slot, homesOf(at(i))});
        }
        for (std::size_t i = 1; i < parts.size(); ++i) parts[i].parent = partOf[parts[i].parent];
        return parts;
    }

    std::array<std::string, 2> homesOf(const Entity& entity) const {
        return {entity.isInOurs() ? homeOf(versions.ours.nodes[entity.ours]) : "",
                entity.isInTheirs() ? homeOf(versions.theirs.nodes[entity.theirs]) : ""};
    }

    void mergeTitle() {
        const std::string& before = baseDocument.outline.title;
        std::string& here = oursDocument.outline.title;
        const std::string& there = theirsDocument.outline.title;
        if (here == there || before == there) return;
        if (before == here || preferred == Side::Theirs) here = there;
        else if (!preferred)
            result.conflicts.push_back({"", "title changed on both sides", before, here, there});
    }

    const Document& baseDocument;
    Document& oursDocument;
    Document& theirsDocument;
    std::optional<Side> preferred;
    ThreeWayResult result;
    const Versions versions;
    const RelationChanges relations;
    const std::vector<Placement> placements;
};
}  // namespace

ThreeWayResult mergeThreeWays(const Document& base, Document& ours, Document& theirs,
                              std::optional<Side> preferred) {
    return Merge(base, ours, theirs, preferred).run();
}

}  // namespace qormodel
