#include "page/RelationData.h"

#include "compare/OutlineDiff.h"
#include "compare/OutlinePlaces.h"
#include "model/ModelPath.h"

#include <set>
#include <string>
#include <utility>

namespace qormodel {

namespace {
// The relations of one document on the page.
class Side {
public:
    using Find = std::size_t (PageTree::*)(const std::string&) const;
    using PageNodeOf = std::size_t (PageTree::*)(std::size_t) const;

    Side(const PageTree& tree, const Document& document, const FlatTree& own, Find find,
         PageNodeOf pageNodeOf)
        : tree(tree), find(find), pageNodeOf(pageNodeOf), nodes(nodesOf(document.outline, own)) {}

    Json describe(const Relation& relation, char sign) const {
        // The root has what no element of the tree has, under the whole path.
        const std::size_t holder = nodes[relation.element];
        const bool isFound = holder != FlatTree::none;
        auto [target, attribute] = relation.target.empty()
                                       ? std::pair{FlatTree::none, std::string()}
                                       : placeOf(relation.target);
        Json described{{"n", isFound ? (tree.*pageNodeOf)(holder) : 0},
                       {"a", isFound ? attributeOf(relation) : relation.observable},
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

private:
    // The node of a path and the attribute, which is empty for the node itself.
    std::pair<std::size_t, std::string> placeOf(const std::string& path) const {
        if (const std::size_t node = (tree.*find)(path); node != FlatTree::none) return {node, ""};
        const auto [holder, name] = splitPath(path);
        return {(tree.*find)(holder), name};
    }

    const PageTree& tree;
    Find find;
    PageNodeOf pageNodeOf;
    std::vector<std::size_t> nodes;  // of the elements of the outline
};

using Open = std::multiset<std::pair<std::size_t, std::string>>;

// The changed relations of one sign by the element that holds them, each as often as it comes.
Open changedWith(char sign, const std::vector<Change>& changes) {
    Open found;
    for (const auto& change : changes)
        if (change.kind == Change::Kind::Relation && change.sign == sign)
            found.emplace(change.index,
                          change.path + ' ' + (sign == '-' ? change.before : change.after));
    return found;
}

bool take(Open& open, const Relation& relation) {
    const auto found =
        open.find({relation.element, relation.observable + ' ' + relationText(relation)});
    if (found == open.end()) return false;
    open.erase(found);
    return true;
}
}  // namespace

Json describeRelations(const PageTree& tree, const std::vector<Change>& changes,
                       const Document& first, const Document* second) {
    Json described = Json::array();
    const Side before(tree, first, tree.getFirst(), &PageTree::findFirst,
                      &PageTree::pageNodeOfFirst);
    auto removed = changedWith('-', changes);
    for (const auto& relation : listRelations(first))
        described.push_back(before.describe(relation, take(removed, relation) ? '-' : ' '));
    if (!second) return described;
    const Side after(tree, *second, tree.getSecond(), &PageTree::findSecond,
                     &PageTree::pageNodeOfSecond);
    auto added = changedWith('+', changes);
    for (const auto& relation : listRelations(*second))
        if (take(added, relation)) described.push_back(after.describe(relation, '+'));
    return described;
}

}  // namespace qormodel
