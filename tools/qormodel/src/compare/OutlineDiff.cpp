#include "compare/OutlineDiff.h"

#include "compare/Diff.h"
#include "model/Relations.h"

#include <algorithm>

namespace qormodel {

namespace {
std::string textOf(const Relation& relation) {
    return (relation.isAsked ? "asks " : "tells ") + relation.observer + " (" + relation.action +
           ", " + relation.priority + ')';
}
}  // namespace

OutlineDiff::OutlineDiff(const Document& firstDocument, const Document& secondDocument,
                         const FlatTree& first, const FlatTree& second, const Pairing& pairs)
    : firstDocument(firstDocument),
      secondDocument(secondDocument),
      first(first),
      second(second),
      pairs(pairs),
      firstContents(contentsOf(firstDocument)),
      secondContents(contentsOf(secondDocument)) {}

OutlineDiff::Contents OutlineDiff::contentsOf(const Document& document) {
    Contents contents;
    for (std::size_t i = 0; i < document.outline.elements.size(); ++i)
        for (const auto& stray : document.outline.elements[i].strays)
            contents[document.outline.pathOf(i)].push_back(
                document.source->slice(stray.begin, stray.end));
    return contents;
}

void OutlineDiff::addContent(std::size_t firstIndex, std::size_t secondIndex,
                             std::vector<Change>& changes) const {
    const std::string& path = first.nodes[firstIndex].element.path;
    const auto before = firstContents.find(path);
    const auto after = secondContents.find(second.nodes[secondIndex].element.path);
    const std::size_t numBefore = before == firstContents.end() ? 0 : before->second.size();
    const std::size_t numAfter = after == secondContents.end() ? 0 : after->second.size();
    if (numBefore == 0 && numAfter == 0) return;
    if (numBefore == numAfter && before->second == after->second) return;
    changes.push_back({'?', Change::Kind::Content, path, "",
                       std::to_string(numBefore) + " parts that are not understood",
                       std::to_string(numAfter) + " of them, others"});
}

void OutlineDiff::addRelations(std::vector<Change>& changes) const {
    std::map<std::string, std::string> pathInSecond;
    for (std::size_t i = 0; i < pairs.toSecond.size(); ++i)
        if (const std::size_t other = pairs.toSecond[i]; other != FlatTree::none)
            pathInSecond.emplace(first.nodes[i].element.path, second.nodes[other].element.path);

    std::multimap<std::string, Relation> open;  // those of the second document
    for (const auto& relation : listRelations(secondDocument))
        open.emplace(relation.observable + ' ' + textOf(relation), relation);
    for (const auto& relation : listRelations(firstDocument)) {
        const auto place = pathInSecond.find(relation.holder);
        std::string observable = relation.observable;
        if (place != pathInSecond.end() && observable.starts_with(relation.holder))
            observable.replace(0, relation.holder.size(), place->second);
        if (const auto found = open.find(observable + ' ' + textOf(relation)); found != open.end()) {
            open.erase(found);
            continue;
        }
        changes.push_back(
            {'-', Change::Kind::Relation, relation.observable, "", textOf(relation)});
    }
    for (const auto& [key, relation] : open)
        changes.push_back(
            {'+', Change::Kind::Relation, relation.observable, "", "", textOf(relation)});
}

}  // namespace qormodel
