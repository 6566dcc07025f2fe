#include "compare/OutlinePlaces.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace qormodel {

namespace {
using Indices = std::vector<std::size_t>;

// Pairs what hangs below an element with what hangs below its node.
void pairSiblings(const Outline& outline, const Indices& elements, const FlatTree& tree,
                  const Indices& children, Indices& nodes) {
    std::unordered_map<std::string, Indices> open;  // the last one first
    for (auto child = children.rbegin(); child != children.rend(); ++child)
        open[tree.nodes[*child].slot].push_back(*child);
    Indices unnamed;
    std::size_t numPaired = 0;
    for (const std::size_t element : elements) {
        auto& named = open[outline.elements[element].name];
        if (named.empty()) {
            unnamed.push_back(element);
            continue;
        }
        nodes[element] = named.back();
        named.pop_back();
        ++numPaired;
    }
    if (unnamed.empty() || numPaired + unnamed.size() != children.size()) return;
    Indices others;
    for (const auto& [name, left] : open) others.insert(others.end(), left.begin(), left.end());
    std::ranges::sort(others);
    for (std::size_t i = 0; i < unnamed.size(); ++i) nodes[unnamed[i]] = others[i];
}
}  // namespace

std::vector<std::size_t> nodesOf(const Outline& outline, const FlatTree& tree) {
    Indices nodes(outline.elements.size(), FlatTree::none);
    if (nodes.empty() || tree.nodes.empty()) return nodes;
    nodes[0] = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i] == FlatTree::none) continue;
        const Node& node = tree.nodes[nodes[i]];
        pairSiblings(outline, outline.elements[i].fields, tree, node.fields, nodes);
        pairSiblings(outline, outline.elements[i].children, tree, node.children, nodes);
    }
    return nodes;
}

std::size_t nodeAtOrAbove(const Outline& outline, const std::vector<std::size_t>& nodes,
                          std::size_t element) {
    while (nodes[element] == FlatTree::none && element != 0)
        element = outline.elements[element].parent;
    return nodes[element];
}

}  // namespace qormodel
