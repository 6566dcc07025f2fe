#include "page/PageTree.h"

#include <utility>

namespace qormodel {

PageTree::PageTree(const Document& firstDocument, const Document* secondDocument)
    : compared(secondDocument != nullptr), first(flatten(firstDocument.root)) {
    if (secondDocument) {
        second = flatten(secondDocument->root);
        pairs = pairUp(first, second);
    } else {
        pairs.toSecond.assign(first.nodes.size(), FlatTree::none);
    }
    collect();
}

const Node* PageTree::inqFirst(const PageNode& node) const {
    return node.first == FlatTree::none ? nullptr : &first.nodes[node.first];
}

const Node* PageTree::inqSecond(const PageNode& node) const {
    return node.second == FlatTree::none ? nullptr : &second.nodes[node.second];
}

const Node& PageTree::shown(const PageNode& node) const {
    const Node* const after = inqSecond(node);
    return after ? *after : first.nodes[node.first];
}

char PageTree::signOf(const PageNode& node) const {
    if (!compared) return ' ';
    return node.second == FlatTree::none ? '-' : node.first == FlatTree::none ? '+' : ' ';
}

std::size_t PageTree::find(const Paths& paths, const std::string& path) {
    const auto found = paths.find(path);
    return found == paths.end() ? FlatTree::none : found->second;
}

void PageTree::collect() {
    ofFirst.assign(first.nodes.size(), FlatTree::none);
    ofSecond.assign(second.nodes.size(), FlatTree::none);
    std::vector<PageNode> waiting{{0, compared ? 0 : FlatTree::none, 0}};
    while (!waiting.empty()) {
        const std::size_t index = nodes.size();
        nodes.push_back(waiting.back());
        waiting.pop_back();
        const PageNode& added = nodes.back();
        if (const Node* const node = inqFirst(added)) {
            firstPaths.emplace(node->element.path, index);
            ofFirst[added.first] = index;
        }
        if (const Node* const node = inqSecond(added)) {
            secondPaths.emplace(node->element.path, index);
            ofSecond[added.second] = index;
        }
        const auto next = below(index);
        waiting.insert(waiting.end(), next.rbegin(), next.rend());
    }
}

std::vector<PageNode> PageTree::below(std::size_t index) const {
    std::vector<PageNode> found;
    appendBelow(nodes[index], &Node::fields, found);
    appendBelow(nodes[index], &Node::children, found);
    for (PageNode& node : found) node.parent = index;
    return found;
}

void PageTree::appendBelow(const PageNode& node, std::vector<std::size_t> Node::*list,
                           std::vector<PageNode>& found) const {
    // What is added, by the element of the first tree that it follows.
    std::unordered_map<std::size_t, std::vector<std::size_t>> added;
    std::size_t anchor = FlatTree::none;
    if (const Node* const after = inqSecond(node)) {
        for (const std::size_t each : after->*list) {
            const std::size_t partner = pairs.toFirst[each];
            if (partner == FlatTree::none) added[anchor].push_back(each);
            else if (first.nodes[partner].parent == node.first) anchor = partner;
        }
    }
    const auto append = [&](std::size_t behind) {
        const auto next = added.find(behind);
        if (next == added.end()) return;
        for (const std::size_t each : next->second) found.push_back({FlatTree::none, each, 0});
    };
    const Node* const before = inqFirst(node);
    if (!before) return append(FlatTree::none);
    // What is removed there stands ahead of what is added.
    anchor = FlatTree::none;
    for (const std::size_t each : before->*list) {
        if (pairs.toSecond[each] != FlatTree::none) append(std::exchange(anchor, each));
        found.push_back({each, pairs.toSecond[each], 0});
    }
    append(anchor);
}

}  // namespace qormodel
