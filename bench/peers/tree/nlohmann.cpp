// W3: nlohmann's JSON; the children stand in an object, by their names.
#include "tree/Tree.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

namespace {

// Keys have a letter, as programs do that think of their size.
template <class Json> Json makeNode(const bench::TreeData& tree, std::size_t index) {
    const bench::ObjectData& data = tree.nodes[index];
    Json node = Json::object();
    node["n"] = data.name;
    node["i"] = data.count;
    node["d"] = data.gain;
    node["s"] = data.comment;
    node["b"] = data.visible;
    node["p"] = data.position;
    node["m"] = data.matrix;
    node["u"] = data.reference;
    node["t"] = data.label;
    if (index >= tree.numInner()) return node;
    Json& children = node["c"] = Json::object();
    for (std::size_t k = 1; k <= bench::fanOut; ++k) {
        const std::size_t child = index * bench::fanOut + k;
        children[tree.nodes[child].name] = makeNode<Json>(tree, child);
    }
    return node;
}

template <class Json> std::int64_t countSumOf(const Json& node) {
    auto sum = node.at("i").template get<std::int64_t>();
    const auto children = node.find("c");
    if (children == node.end()) return sum;
    for (const Json& child : *children) sum += countSumOf(child);
    return sum;
}

template <class Json> class JsonTree {
public:
    void build(const bench::TreeData& data) { root = makeNode<Json>(data, 0); }
    std::string write() const { return root.dump(); }
    void read(const std::string& text) { root = Json::parse(text); }
    std::unique_ptr<JsonTree> copy() const { return std::make_unique<JsonTree>(*this); }
    bool equal(const JsonTree& other) const { return root == other.root; }
    void poke() {
        Json* node = &root;
        while (node->contains("c")) node = &std::prev((*node)["c"].end()).value();
        (*node)["d"] = 1e9;
    }
    int lookup(std::string_view path) const {
        const Json* node = &root;
        for (std::string_view name; bench::tree::nextSegment(path, name);) {
            const Json& children = node->at("c");
            const auto child = children.find(name);
            if (child == children.end()) return 0;
            node = &*child;
        }
        return node->at("i").template get<int>();
    }
    std::int64_t countSum() const { return countSumOf(root); }

    class Wide {
    public:
        bool add(const std::string& name) {
            if (parent.contains(name)) return false;
            parent[name] = Json::object();
            return true;
        }

    private:
        Json parent = Json::object();
    };

private:
    Json root;
};

BENCH_PEER("W3", "nlohmann_map", Peer,
           [](bench::Run& run) { bench::tree::runAll<JsonTree<nlohmann::json>>(run); });
// Keeps the order of children, as a model tree must.
BENCH_PEER("W3", "nlohmann_ordered", Peer,
           [](bench::Run& run) { bench::tree::runAll<JsonTree<nlohmann::ordered_json>>(run); });

}  // namespace
