// W3: plain structs in Boost's text archives, and Boost's property tree in its INFO form.
#include "tree/PlainTree.h"

#include <boost/archive/text_iarchive.hpp>
#include <boost/archive/text_oarchive.hpp>
#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/tracking.hpp>
#include <boost/serialization/unique_ptr.hpp>
#include <boost/serialization/vector.hpp>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

using bench::tree::Node;

namespace boost::serialization {
template <class Archive> void serialize(Archive& archive, Node& node, unsigned) {
    bench::ObjectData& data = node.data;
    archive& data.name& data.count& data.gain& data.comment& data.visible;
    for (double& number : data.position) archive& number;
    for (double& number : data.matrix) archive& number;
    archive& data.reference& data.label& node.children;
}
}  // namespace boost::serialization
BOOST_CLASS_TRACKING(Node, boost::serialization::track_never)

namespace {

struct TextArchive {
    static std::string write(const Node& root) {
        std::ostringstream stream;
        {
            boost::archive::text_oarchive archive(stream);
            archive << root;
        }
        return std::move(stream).str();
    }
    static void read(const std::string& text, Node& root) {
        std::istringstream stream(text);
        boost::archive::text_iarchive archive(stream);
        archive >> root;
    }
};

using PropertyTree = boost::property_tree::ptree;

template <class Numbers> std::string textOf(const Numbers& numbers) {
    std::string text;
    char digits[40];
    for (const double number : numbers) {
        if (!text.empty()) text += ' ';
        text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
    }
    return text;
}

// Values stand under their keys and children under "children", by their names.
void fill(PropertyTree& node, const bench::TreeData& tree, std::size_t index) {
    const bench::ObjectData& data = tree.nodes[index];
    const auto add = [&](const char* key, std::string value) {
        node.push_back({key, PropertyTree()})->second.data() = std::move(value);
    };
    add("count", std::to_string(data.count));
    add("gain", textOf(std::initializer_list<double>{data.gain}));
    add("comment", data.comment);
    add("visible", data.visible ? "true" : "false");
    add("position", textOf(data.position));
    add("matrix", textOf(data.matrix));
    add("reference", data.reference);
    add("label", data.label);
    PropertyTree& children = node.push_back({"children", PropertyTree()})->second;
    if (index >= tree.numInner()) return;
    for (std::size_t k = 1; k <= bench::fanOut; ++k) {
        const std::size_t child = index * bench::fanOut + k;
        fill(children.push_back({tree.nodes[child].name, PropertyTree()})->second, tree, child);
    }
}

const PropertyTree& childrenOf(const PropertyTree& node) { return node.find("children")->second; }

std::int64_t countSumOf(const PropertyTree& node) {
    std::int64_t sum = node.get<int>("count");
    for (const auto& [name, child] : childrenOf(node)) sum += countSumOf(child);
    return sum;
}

class InfoTree {
public:
    void build(const bench::TreeData& data) {
        fill(root.push_back({data.nodes[0].name, PropertyTree()})->second, data, 0);
    }
    std::string write() const {
        std::ostringstream stream;
        boost::property_tree::write_info(stream, root);
        return std::move(stream).str();
    }
    void read(const std::string& text) {
        std::istringstream stream(text);
        boost::property_tree::read_info(stream, root);
    }
    std::unique_ptr<InfoTree> copy() const { return std::make_unique<InfoTree>(*this); }
    bool equal(const InfoTree& other) const { return root == other.root; }
    void poke() {
        PropertyTree* node = &root.front().second;
        while (!childrenOf(*node).empty()) node = &node->get_child("children").back().second;
        node->put("gain", "1e9");
    }
    int lookup(std::string_view path) const {
        const PropertyTree* node = &root.front().second;
        for (std::string_view name; bench::tree::nextSegment(path, name);) {
            const PropertyTree& children = childrenOf(*node);
            const auto child = children.find(std::string(name));
            if (child == children.not_found()) return 0;
            node = &child->second;
        }
        return node->get<int>("count");
    }
    std::int64_t countSum() const { return countSumOf(root.front().second); }

    class Wide {
    public:
        bool add(const std::string& name) {
            if (parent.find(name) != parent.not_found()) return false;
            parent.push_back({name, PropertyTree()});
            return true;
        }

    private:
        PropertyTree parent;
    };

private:
    PropertyTree root;
};

BENCH_PEER("W3", "plain_struct_boost_text", Peer, [](bench::Run& run) {
    // A wide parent is the floor's.
    bench::tree::runAll<bench::tree::PlainTree<TextArchive>>(run, {.hasWide = false});
});
BENCH_PEER("W3", "boost_ptree_info", Peer,
           [](bench::Run& run) { bench::tree::runAll<InfoTree>(run); });

}  // namespace
