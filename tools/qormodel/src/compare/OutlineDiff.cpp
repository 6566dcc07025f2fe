#include "compare/OutlineDiff.h"

#include "compare/Diff.h"

#include <algorithm>

namespace qormodel {

std::string relationText(const Relation& relation) {
    return (relation.isAsked ? "asks " : "tells ") + relation.observer + " (" + relation.action +
           ", " + relation.priority + ')';
}

Contents listContents(const Document& document) {
    Contents contents;
    for (std::size_t i = 0; i < document.outline.elements.size(); ++i)
        for (const auto& stray : document.outline.elements[i].strays)
            contents[document.outline.pathOf(i)].push_back(
                document.source->slice(stray.begin, stray.end));
    return contents;
}

std::vector<std::string> contentAt(const Contents& contents, const std::string& path) {
    const auto found = contents.find(path);
    return found == contents.end() ? std::vector<std::string>{} : found->second;
}

OutlineDiff::OutlineDiff(const Document& firstDocument, const Document& secondDocument,
                         const FlatTree& first, const FlatTree& second, const Pairing& pairs)
    : firstDocument(firstDocument),
      secondDocument(secondDocument),
      first(first),
      second(second),
      pairs(pairs),
      firstContents(listContents(firstDocument)),
      secondContents(listContents(secondDocument)) {}

void OutlineDiff::addContent(std::size_t firstIndex, std::size_t secondIndex,
                             std::vector<Change>& changes) const {
    const std::string& path = first.nodes[firstIndex].element.path;
    const auto before = contentAt(firstContents, path);
    const auto after = contentAt(secondContents, second.nodes[secondIndex].element.path);
    if (before == after) return;
    changes.push_back({'?', Change::Kind::Content, path, "",
                       std::to_string(before.size()) + " parts that are not understood",
                       std::to_string(after.size()) + " of them, others"});
}

void OutlineDiff::addRelations(std::vector<Change>& changes) const {
    std::map<std::string, std::string> pathInSecond;
    for (std::size_t i = 0; i < pairs.toSecond.size(); ++i)
        if (const std::size_t other = pairs.toSecond[i]; other != FlatTree::none)
            pathInSecond.emplace(first.nodes[i].element.path, second.nodes[other].element.path);

    std::multimap<std::string, Relation> open;  // those of the second document
    for (const auto& relation : listRelations(secondDocument))
        open.emplace(relation.observable + ' ' + relationText(relation), relation);
    for (const auto& relation : listRelations(firstDocument)) {
        const auto place = pathInSecond.find(relation.holder);
        std::string observable = relation.observable;
        if (place != pathInSecond.end() && observable.starts_with(relation.holder))
            observable.replace(0, relation.holder.size(), place->second);
        if (const auto found = open.find(observable + ' ' + relationText(relation));
            found != open.end()) {
            open.erase(found);
            continue;
        }
        changes.push_back(
            {'-', Change::Kind::Relation, relation.observable, "", relationText(relation)});
    }
    for (const auto& [key, relation] : open)
        changes.push_back(
            {'+', Change::Kind::Relation, relation.observable, "", "", relationText(relation)});
}

}  // namespace qormodel
