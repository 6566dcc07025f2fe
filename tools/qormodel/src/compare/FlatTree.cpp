#include "compare/FlatTree.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

namespace qormodel {

namespace {
Node nodeOf(std::shared_ptr<ac::AttrContainer> container, std::string slot, const Node& parent,
            std::size_t parentIndex, bool isField) {
    Node node;
    node.element.object = std::dynamic_pointer_cast<ac::Object>(container);
    node.element.path = pathBelow(parent.element.path, slot);
    node.element.depth = parent.element.depth + 1;
    node.element.isField = isField;
    if (node.element.object && !isField)
        node.id = std::as_const(*node.element.object).getUuid();  // asking for it makes none
    node.element.container = std::move(container);
    node.slot = std::move(slot);
    node.parent = parentIndex;
    return node;
}

// What hangs below a node, the last one first, as a stack wants it.
std::vector<Node> below(const Node& node, std::size_t index) {
    std::vector<Node> found;
    ac::AttrContainer& container = *node.element.container;
    for (std::uint64_t token = 0; token < container.getNumFields(); ++token) {
        auto field = container.getField(token).lock();
        if (!field) continue;
        std::string slot = container.getFieldName(token).value_or(field->getName());
        found.push_back(nodeOf(std::move(field), std::move(slot), node, index, true));
    }
    if (node.element.object)
        for (const auto& child : node.element.object->getChildren())
            found.push_back(nodeOf(child, child->getName(), node, index, false));
    return {std::make_move_iterator(found.rbegin()), std::make_move_iterator(found.rend())};
}
}  // namespace

std::string foldedName(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

FlatTree flatten(const std::shared_ptr<ac::Object>& root) {
    FlatTree tree;
    Node first;
    first.element = {root, root, "/", 0, false};
    first.id = std::as_const(*root).getUuid();
    std::vector<Node> waiting{std::move(first)};
    while (!waiting.empty()) {
        const std::size_t index = tree.nodes.size();
        tree.nodes.push_back(std::move(waiting.back()));
        waiting.pop_back();
        const Node& node = tree.nodes.back();
        if (index > 0) {
            Node& parent = tree.nodes[node.parent];
            (node.element.isField ? parent.fields : parent.children).push_back(index);
        }
        auto next = below(node, index);
        waiting.insert(waiting.end(), std::make_move_iterator(next.begin()),
                       std::make_move_iterator(next.end()));
    }
    return tree;
}

}  // namespace qormodel
