// A tree of plain structs, with no duties but to hold the values.
#pragma once

#include "tree/Tree.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace bench::tree {

struct Node {
    ObjectData data;
    std::vector<std::unique_ptr<Node>> children;
};

inline std::unique_ptr<Node> makeNode(const TreeData& data, std::size_t index) {
    auto node = std::make_unique<Node>();
    node->data = data.nodes[index];
    if (index >= data.numInner()) return node;
    node->children.reserve(fanOut);
    for (std::size_t k = 1; k <= fanOut; ++k)
        node->children.push_back(makeNode(data, index * fanOut + k));
    return node;
}

inline bool isSame(const ObjectData& a, const ObjectData& b) {
    return a.name == b.name && a.count == b.count && a.gain == b.gain && a.comment == b.comment &&
           a.visible == b.visible && a.position == b.position && a.matrix == b.matrix &&
           a.reference == b.reference && a.label == b.label;
}

inline bool isSame(const Node& a, const Node& b) {
    return isSame(a.data, b.data) &&
           std::ranges::equal(a.children, b.children,
                              [](const auto& x, const auto& y) { return isSame(*x, *y); });
}

inline std::unique_ptr<Node> cloneOf(const Node& node) {
    auto clone = std::make_unique<Node>();
    clone->data = node.data;
    clone->children.reserve(node.children.size());
    for (const auto& child : node.children) clone->children.push_back(cloneOf(*child));
    return clone;
}

inline std::int64_t countSumOf(const Node& node) {
    std::int64_t sum = node.data.count;
    for (const auto& child : node.children) sum += countSumOf(*child);
    return sum;
}

/// The tree in the form that `Text` gives it, which has
///     static std::string write(const Node&);
///     static void read(const std::string&, Node&);
template <class Text> class PlainTree {
public:
    void build(const TreeData& data) { root = makeNode(data, 0); }
    std::string write() const { return Text::write(*root); }
    void read(const std::string& from) { Text::read(from, *root); }
    std::unique_ptr<PlainTree> copy() const {
        auto result = std::make_unique<PlainTree>();
        result->root = cloneOf(*root);
        return result;
    }
    bool equal(const PlainTree& other) const { return isSame(*root, *other.root); }
    void poke() {
        Node* leaf = root.get();
        while (!leaf->children.empty()) leaf = leaf->children.back().get();
        leaf->data.gain += 1;
    }
    int lookup(std::string_view path) const {
        const Node* node = root.get();
        for (std::string_view name; nextSegment(path, name);) {
            const auto child = std::ranges::find_if(node->children, [&](const auto& candidate) {
                return candidate->data.name == name;
            });
            if (child == node->children.end()) return 0;
            node = child->get();
        }
        return node->data.count;
    }
    std::int64_t countSum() const { return countSumOf(*root); }

    /// A vector and a set of the names.
    class Wide {
    public:
        bool add(const std::string& name) {
            if (names.contains(name)) return false;
            children.push_back(std::make_unique<Node>());
            children.back()->data.name = name;
            names.insert(children.back()->data.name);
            return true;
        }

    private:
        std::vector<std::unique_ptr<Node>> children;
        std::unordered_set<std::string_view> names;
    };

private:
    std::unique_ptr<Node> root = std::make_unique<Node>();
};

}  // namespace bench::tree
