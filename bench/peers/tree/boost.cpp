// W3: plain structs with Boost's text archive, and boost::property_tree in its INFO form (nested
// braces, text lines).
#include <algorithm>
#include <boost/archive/text_iarchive.hpp>
#include <boost/archive/text_oarchive.hpp>
#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <boost/serialization/array.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/tracking.hpp>
#include <boost/serialization/unique_ptr.hpp>
#include <boost/serialization/vector.hpp>
#include <charconv>
#include <sstream>

#include "tree/Tree.h"
using namespace bench;
namespace {
struct BNode {
    ObjectData v;
    std::vector<std::unique_ptr<BNode>> children;
    template <class A> void serialize(A& a, unsigned) {
        a& v.name& v.count& v.gain& v.comment& v.visible;
        for (auto& x : v.position) a& x;
        for (auto& x : v.matrix) a& x;
        a& v.reference& v.label& children;
    }
};
}  // namespace
BOOST_CLASS_TRACKING(BNode, boost::serialization::track_never)
namespace {
std::unique_ptr<BNode> buildNode(const TreeData& d, std::size_t i) {
    auto n = std::make_unique<BNode>();
    n->v = d.nodes[i];
    if (i < d.numInner())
        for (std::size_t k = 1; k <= fanOut; ++k)
            n->children.push_back(buildNode(d, i * fanOut + k));
    return n;
}
struct BoostPlain {
    std::unique_ptr<BNode> root = std::make_unique<BNode>();
    void build(const TreeData& d) { root = buildNode(d, 0); }
    std::string write() const {
        std::ostringstream o;
        {
            boost::archive::text_oarchive a(o);
            a << *root;
        }
        return std::move(o).str();
    }
    void read(const std::string& s) {
        std::istringstream i(s);
        boost::archive::text_iarchive a(i);
        a >> *root;
    }
    static std::unique_ptr<BNode> clone(const BNode& n) {
        auto c = std::make_unique<BNode>();
        c->v = n.v;
        for (auto& k : n.children) c->children.push_back(clone(*k));
        return c;
    }
    std::unique_ptr<BoostPlain> copy() const {
        auto p = std::make_unique<BoostPlain>();
        p->root = clone(*root);
        return p;
    }
    static bool eq(const BNode& a, const BNode& b) {
        const ObjectData &x = a.v, &y = b.v;
        if (x.name != y.name || x.count != y.count || x.gain != y.gain || x.comment != y.comment ||
            x.visible != y.visible || x.position != y.position || x.matrix != y.matrix ||
            x.reference != y.reference || x.label != y.label ||
            a.children.size() != b.children.size())
            return false;
        for (std::size_t i = 0; i < a.children.size(); ++i)
            if (!eq(*a.children[i], *b.children[i])) return false;
        return true;
    }
    bool equal(const BoostPlain& o) const { return eq(*root, *o.root); }
    void poke() {
        BNode* n = root.get();
        while (!n->children.empty()) n = n->children.back().get();
        n->v.gain += 1;
    }
    int lookup(std::string_view path) const {
        const BNode* n = root.get();
        for (std::string_view seg; tree::nextSegment(path, seg);) {
            const auto it = std::find_if(n->children.begin(), n->children.end(),
                                         [&](auto& c) { return c->v.name == seg; });
            if (it == n->children.end()) return 0;
            n = it->get();
        }
        return n->v.count;
    }
    static std::int64_t sum(const BNode& n) {
        std::int64_t s = n.v.count;
        for (auto& c : n.children) s += sum(*c);
        return s;
    }
    std::int64_t countSum() const { return sum(*root); }
    struct Wide {
        bool add(const std::string&) { return false; }
    };
};

using PT = boost::property_tree::ptree;
std::string num(double x) {
    char b[40];
    return std::string(b, std::to_chars(b, b + 40, x).ptr);
}
std::string nums(const double* p, int n) {
    std::string s;
    for (int i = 0; i < n; ++i) {
        if (i) s += ' ';
        s += num(p[i]);
    }
    return s;
}
// values under their keys, children under "kids", keyed by their name
void ptNode(PT& t, const TreeData& d, std::size_t i) {
    const ObjectData& v = d.nodes[i];
    auto add = [&](const char* k, std::string s) {
        t.push_back({k, PT()})->second.data() = std::move(s);
    };
    add("i", std::to_string(v.count));
    add("d", num(v.gain));
    add("s", v.comment);
    add("b", v.visible ? "true" : "false");
    add("p", nums(v.position.data(), 3));
    add("m", nums(v.matrix.data(), 16));
    add("u", v.reference);
    add("t", v.label);
    PT& kids = t.push_back({"kids", PT()})->second;
    if (i < d.numInner())
        for (std::size_t k = 1; k <= fanOut; ++k)
            ptNode(kids.push_back({d.nodes[i * fanOut + k].name, PT()})->second, d, i * fanOut + k);
}
struct Ptree {
    PT root;
    void build(const TreeData& d) { ptNode(root.push_back({d.nodes[0].name, PT()})->second, d, 0); }
    std::string write() const {
        std::ostringstream o;
        boost::property_tree::write_info(o, root);
        return std::move(o).str();
    }
    void read(const std::string& s) {
        std::istringstream i(s);
        boost::property_tree::read_info(i, root);
    }
    std::unique_ptr<Ptree> copy() const {
        auto p = std::make_unique<Ptree>();
        p->root = root;
        return p;
    }
    bool equal(const Ptree& o) const { return root == o.root; }
    void poke() {
        PT* n = &root.front().second;
        while (!n->get_child("kids").empty()) n = &n->get_child("kids").back().second;
        n->put("d", "1e9");
    }
    int lookup(std::string_view path) const {
        const PT* n = &root.front().second;
        for (std::string_view seg; tree::nextSegment(path, seg);) {
            const PT& kids = n->find("kids")->second;
            const auto it = kids.find(std::string(seg));
            if (it == kids.not_found()) return 0;
            n = &it->second;
        }
        return n->get<int>("i");
    }
    static std::int64_t sum(const PT& n) {
        std::int64_t s = n.get<int>("i");
        for (auto& c : n.find("kids")->second) s += sum(c.second);
        return s;
    }
    std::int64_t countSum() const { return sum(root.front().second); }
    struct Wide {
        PT parent;
        bool add(const std::string& n) {
            if (parent.find(n) != parent.not_found()) return false;
            parent.push_back({n, PT()});
            return true;
        }
    };
};
BENCH_PEER("W3", "plain_struct_boost_text", Peer, [](Run& run) {
    tree::Options o;
    o.hasWide = false;  // the same structs as the floor
    tree::runAll<BoostPlain>(run, o);
});
BENCH_PEER("W3", "boost_ptree_info", Peer, [](Run& run) { tree::runAll<Ptree>(run); });
}  // namespace
