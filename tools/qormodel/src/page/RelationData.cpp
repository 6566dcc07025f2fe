#include "page/RelationData.h"

#include "compare/OutlineDiff.h"
#include "model/ModelPath.h"

#include <set>
#include <string>
#include <utility>

namespace qormodel {

namespace {
using Find = std::size_t (PageTree::*)(const std::string&) const;

// The changed relations of one sign, each as often as it comes.
std::multiset<std::string> changedWith(char sign, const std::vector<Change>& changes) {
    std::multiset<std::string> found;
    for (const auto& change : changes)
        if (change.kind == Change::Kind::Relation && change.sign == sign)
            found.insert(change.path + ' ' + (sign == '-' ? change.before : change.after));
    return found;
}

bool take(std::multiset<std::string>& open, const Relation& relation) {
    const auto found = open.find(relation.observable + ' ' + relationText(relation));
    if (found == open.end()) return false;
    open.erase(found);
    return true;
}

// The node of a path and the attribute, which is empty for the node itself.
std::pair<std::size_t, std::string> placeOf(const PageTree& tree, Find find,
                                            const std::string& path) {
    if (const std::size_t node = (tree.*find)(path); node != FlatTree::none) return {node, ""};
    const auto [holder, name] = splitPath(path);
    return {(tree.*find)(holder), name};
}

Json describeOne(const PageTree& tree, Find find, const Relation& relation, char sign) {
    const std::size_t node = (tree.*find)(relation.holder);
    const bool isOfNode = relation.observable == relation.holder;
    const std::string own = isOfNode ? "" : splitPath(relation.observable).second;
    const bool isFound = node != FlatTree::none;  // else the root has it, under the whole path
    auto [target, attribute] = relation.target.empty() ? std::pair{FlatTree::none, std::string()}
                                                       : placeOf(tree, find, relation.target);
    Json described{{"n", isFound ? node : 0},
                   {"a", isFound ? own : relation.observable},
                   {"t", target == FlatTree::none ? Json(-1) : Json(target)},
                   {"b", attribute},
                   {"o", relation.observer},
                   {"c", relation.action},
                   {"k", relation.priority.empty() ? "0" : relation.priority},
                   {"q", relation.isAsked}};
    if (relation.target.empty() || !relation.isActionKnown) described["u"] = true;
    if (sign != ' ') described["s"] = std::string(1, sign);
    return described;
}
}  // namespace

Json describeRelations(const PageTree& tree, const std::vector<Change>& changes,
                       const Document& first, const Document* second) {
    Json described = Json::array();
    auto removed = changedWith('-', changes);
    for (const auto& relation : listRelations(first))
        described.push_back(
            describeOne(tree, &PageTree::findFirst, relation, take(removed, relation) ? '-' : ' '));
    if (!second) return described;
    auto added = changedWith('+', changes);
    for (const auto& relation : listRelations(*second))
        if (take(added, relation))
            described.push_back(describeOne(tree, &PageTree::findSecond, relation, '+'));
    return described;
}

}  // namespace qormodel
