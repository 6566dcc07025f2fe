#include "merge/Versions.h"

#include "compare/Pairing.h"

namespace qormodel {

namespace {
// The entity of a node; made where there is none.
std::size_t entityOf(std::vector<Entity>& entities, std::vector<std::size_t>& of,
                     std::size_t node) {
    if (of[node] == FlatTree::none) {
        of[node] = entities.size();
        entities.emplace_back();
    }
    return of[node];
}
}  // namespace

Versions::Versions(const Document& baseDocument, const Document& oursDocument,
                   const Document& theirsDocument)
    : base(flatten(baseDocument.root)),
      ours(flatten(oursDocument.root)),
      theirs(flatten(theirsDocument.root)),
      ofBase(base.nodes.size(), FlatTree::none),
      ofOurs(ours.nodes.size(), FlatTree::none),
      ofTheirs(theirs.nodes.size(), FlatTree::none) {
    const Pairing baseOurs = pairUp(base, ours, NameRule::PairsUnmarked);
    const Pairing baseTheirs = pairUp(base, theirs, NameRule::PairsUnmarked);
    const Pairing added = pairUp(ours, theirs, NameRule::PairsUnmarked);
    for (std::size_t node = 0; node < ours.nodes.size(); ++node) {
        Entity& entity = (entityOf(entities, ofOurs, node), entities.back());
        entity.ours = node;
        entity.base = baseOurs.toFirst[node];
        if (entity.isInBase()) {
            ofBase[entity.base] = ofOurs[node];
            entity.theirs = baseTheirs.toSecond[entity.base];
        } else if (const std::size_t other = added.toSecond[node];
                   other != FlatTree::none && baseTheirs.toFirst[other] == FlatTree::none) {
            entity.theirs = other;
        }
        if (entity.isInTheirs()) ofTheirs[entity.theirs] = ofOurs[node];
    }
    for (std::size_t node = 0; node < theirs.nodes.size(); ++node) {
        if (ofTheirs[node] != FlatTree::none) continue;
        Entity& entity = (entityOf(entities, ofTheirs, node), entities.back());
        entity.theirs = node;
        entity.base = baseTheirs.toFirst[node];
        if (entity.isInBase()) ofBase[entity.base] = ofTheirs[node];
    }
    for (std::size_t node = 0; node < base.nodes.size(); ++node) {
        if (ofBase[node] != FlatTree::none) continue;
        Entity& entity = (entityOf(entities, ofBase, node), entities.back());
        entity.base = node;
    }
}

}  // namespace qormodel
