#include "compare/OutlineDiff.h"

#include "compare/Diff.h"
#include "compare/OutlinePlaces.h"

#include <tuple>
#include <utility>

namespace qormodel {

std::string relationText(const Relation& relation) {
    return (relation.isAsked ? "asks " : "tells ") + relation.observer + " (" + relation.action +
           ", " + relation.priority + ')';
}

std::string attributeOf(const Relation& relation) {
    const std::string above = pathBelow(relation.holder, "");
    return relation.observable.starts_with(above) ? relation.observable.substr(above.size()) : "";
}

Contents listContents(const Document& document, const FlatTree& tree) {
    const Outline& outline = document.outline;
    const auto nodes = nodesOf(outline, tree);
    Contents contents;
    for (std::size_t i = 0; i < outline.elements.size(); ++i)
        for (const auto& stray : outline.elements[i].strays)
            contents[nodeAtOrAbove(outline, nodes, i)].push_back(
                document.source->slice(stray.begin, stray.end));
    return contents;
}

std::vector<std::string> contentAt(const Contents& contents, std::size_t node) {
    const auto found = contents.find(node);
    return found == contents.end() ? std::vector<std::string>{} : found->second;
}

OutlineDiff::OutlineDiff(const Document& firstDocument, const Document& secondDocument,
                         const FlatTree& first, const FlatTree& second, const Pairing& pairs)
    : firstDocument(firstDocument),
      secondDocument(secondDocument),
      first(first),
      second(second),
      pairs(pairs),
      firstContents(listContents(firstDocument, first)),
      secondContents(listContents(secondDocument, second)) {}

void OutlineDiff::addContent(std::size_t firstIndex, std::size_t secondIndex,
                             std::vector<Change>& changes) const {
    const std::string& path = first.nodes[firstIndex].element.path;
    const auto before = contentAt(firstContents, firstIndex);
    const auto after = contentAt(secondContents, secondIndex);
    if (before == after) return;
    Change change{'?',
                  Change::Kind::Content,
                  path,
                  "",
                  std::to_string(before.size()) + " parts that are not understood",
                  std::to_string(after.size()) + " of them, others"};
    change.index = firstIndex;
    changes.push_back(std::move(change));
}

void OutlineDiff::addRelations(std::vector<Change>& changes) const {
    // By the node of the second tree and the attribute, or by the path where no pair has it.
    using Key = std::tuple<std::size_t, std::string, std::string>;
    const auto keyOf = [](std::size_t node, const Relation& relation) {
        return Key(node,
                   node == FlatTree::none ? relation.observable : foldedName(attributeOf(relation)),
                   relationText(relation));
    };
    const auto add = [&](char sign, const Relation& relation) {
        Change change{sign, Change::Kind::Relation, relation.observable, ""};
        (sign == '-' ? change.before : change.after) = relationText(relation);
        change.index = relation.element;
        changes.push_back(std::move(change));
    };

    const auto secondNodes = nodesOf(secondDocument.outline, second);
    std::multimap<Key, Relation> open;  // those of the second document
    for (auto& relation : listRelations(secondDocument)) {
        const Key key = keyOf(secondNodes[relation.element], relation);
        open.emplace(key, std::move(relation));
    }
    const auto firstNodes = nodesOf(firstDocument.outline, first);
    for (const auto& relation : listRelations(firstDocument)) {
        const std::size_t node = firstNodes[relation.element];
        const std::size_t other = node == FlatTree::none ? node : pairs.toSecond[node];
        const auto found = open.find(keyOf(other, relation));
        if (found != open.end()) open.erase(found);
        else add('-', relation);
    }
    for (const auto& [key, relation] : open) add('+', relation);
}

}  // namespace qormodel
