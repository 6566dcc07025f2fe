// W3: the floor, plain structs with our text by hand, and what a scan for a taken name costs.
#include "tree/Tree.h"
#include "tree/TreeText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace text = bench::text;

namespace {

struct Node {
    bench::ObjectData data;
    std::vector<std::unique_ptr<Node>> children;
};

std::unique_ptr<Node> makeNode(const bench::TreeData& data, std::size_t index) {
    auto node = std::make_unique<Node>();
    node->data = data.nodes[index];
    if (index >= data.numInner()) return node;
    node->children.reserve(bench::fanOut);
    for (std::size_t k = 1; k <= bench::fanOut; ++k)
        node->children.push_back(makeNode(data, index * bench::fanOut + k));
    return node;
}

void writeNode(text::StringSink& sink, const Node& node) {
    const bench::ObjectData& data = node.data;
    const auto putText = [&](std::size_t token, const std::string& string) {
        text::putAttribute(sink, token, !string.empty(), [&] { text::putString(sink, string); });
    };
    text::openBlock(sink, "AttrContainer");
    putText(0, data.name);
    for (std::size_t token = 1; token <= 5; ++token) text::putAttribute(sink, token, false, [] {});
    text::putAttribute(sink, 6, data.count != 0, [&] { text::putInteger(sink, data.count); });
    text::putAttribute(sink, 7, data.gain != 0, [&] { text::putDouble(sink, data.gain); });
    putText(8, data.comment);
    text::putAttribute(sink, 9, data.visible, [&] { sink.put("true"); });
    text::putAttribute(sink, 10, true, [&] { text::putPosition(sink, data.position); });
    text::putAttribute(sink, 11, true, [&] { text::putMatrix(sink, data.matrix); });
    putText(12, data.reference);
    putText(13, data.label);
    text::closeBlock(sink);
    for (const auto& child : node.children) {
        text::openChild(sink, child->data.name);
        writeNode(sink, *child);
        text::closeBlock(sink);
    }
}

class Reader {
public:
    explicit Reader(std::string_view from) : source(from) {}

    void read(Node& node) {
        node.data.visible = false;
        for (auto word = source.word(); isInBlock(word); word = source.word()) {
            if (word == "AttrContainer") readAttributes(node.data);
            if (word == "Child") readChild(node);
        }
    }

private:
    static bool isInBlock(std::string_view word) { return !word.empty() && word != "}"; }

    void readAttributes(bench::ObjectData& data) {
        source.word();  // {
        std::size_t guess = 0;
        for (auto type = source.word(); isInBlock(type); type = source.word()) {
            source.word();  // {
            source.word();  // Name
            source.read(quoted);
            const std::size_t token = text::tokenOf(quoted, guess);
            guess = token + 1;
            for (auto word = source.word(); isInBlock(word); word = source.word())
                if (word == "Value") readValue(data, token);
        }
    }
    void readValue(bench::ObjectData& data, std::size_t token) {
        switch (token) {
            case 0: return source.read(data.name);
            case 6: return source.read(data.count);
            case 7: return source.read(data.gain);
            case 8: return source.read(data.comment);
            case 9: return source.read(data.visible);
            case 10: return source.read(data.position);
            case 11: return source.read(data.matrix);
            case 12: return source.read(data.reference);
            case 13: return source.read(data.label);
            default: return;
        }
    }
    void readChild(Node& node) {
        source.word();        // {
        source.read(quoted);  // the class
        source.read(quoted);  // the name, which is an attribute as well
        auto child = std::make_unique<Node>();
        read(*child);
        node.children.push_back(std::move(child));
    }

    text::Source source;
    std::string quoted;
};

bool isSame(const bench::ObjectData& a, const bench::ObjectData& b) {
    return a.name == b.name && a.count == b.count && a.gain == b.gain && a.comment == b.comment &&
           a.visible == b.visible && a.position == b.position && a.matrix == b.matrix &&
           a.reference == b.reference && a.label == b.label;
}

bool isSame(const Node& a, const Node& b) {
    return isSame(a.data, b.data) &&
           std::ranges::equal(a.children, b.children,
                              [](const auto& x, const auto& y) { return isSame(*x, *y); });
}

std::unique_ptr<Node> cloneOf(const Node& node) {
    auto clone = std::make_unique<Node>();
    clone->data = node.data;
    clone->children.reserve(node.children.size());
    for (const auto& child : node.children) clone->children.push_back(cloneOf(*child));
    return clone;
}

std::int64_t countSumOf(const Node& node) {
    std::int64_t sum = node.data.count;
    for (const auto& child : node.children) sum += countSumOf(*child);
    return sum;
}

class PlainTree {
public:
    void build(const bench::TreeData& data) { root = makeNode(data, 0); }
    std::string write() const {
        std::string result;
        text::StringSink sink{result};
        writeNode(sink, *root);
        return result;
    }
    void read(const std::string& from) { Reader(from).read(*root); }
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
        for (std::string_view name; bench::tree::nextSegment(path, name);) {
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

/// No index: every name is held against all that are there.
class WideByScan {
public:
    bool add(const std::string& name) {
        for (const auto& child : children)
            if (child->data.name == name) return false;
        children.push_back(std::make_unique<Node>());
        children.back()->data.name = name;
        return true;
    }

private:
    std::vector<std::unique_ptr<Node>> children;
};

BENCH_PEER("W3", "plain_struct_text", Floor,
           [](bench::Run& run) { bench::tree::runAll<PlainTree>(run); });
BENCH_PEER("W3", "plain_struct_scan", Peer,
           [](bench::Run& run) { bench::tree::runWide<WideByScan>(run, 5); });

}  // namespace
