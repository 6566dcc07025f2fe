// W3: JSON document object models. Children stand under "c" in an object keyed by their name.
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <nlohmann/json.hpp>

#include "tree/Tree.h"
using namespace bench;
namespace {
using J = nlohmann::ordered_json;  // keeps the order of children, as a model tree must
template <class Json> Json jsonNode(const TreeData& d, std::size_t i) {
    const ObjectData& v = d.nodes[i];
    Json j = Json::object();
    j["n"] = v.name;
    j["i"] = v.count;
    j["d"] = v.gain;
    j["s"] = v.comment;
    j["b"] = v.visible;
    j["p"] = v.position;
    j["m"] = v.matrix;
    j["u"] = v.reference;
    j["t"] = v.label;
    if (i < d.numInner()) {
        Json& c = j["c"] = Json::object();
        for (std::size_t k = 1; k <= fanOut; ++k)
            c[d.nodes[i * fanOut + k].name] = jsonNode<Json>(d, i * fanOut + k);
    }
    return j;
}
template <class Json> struct Nlohmann {
    Json root;
    void build(const TreeData& d) { root = jsonNode<Json>(d, 0); }
    std::string write() const { return root.dump(); }
    void read(const std::string& s) { root = Json::parse(s); }
    std::unique_ptr<Nlohmann> copy() const {
        auto p = std::make_unique<Nlohmann>();
        p->root = root;
        return p;
    }
    bool equal(const Nlohmann& o) const { return root == o.root; }
    void poke() {
        Json* n = &root;
        while (n->contains("c")) n = &std::prev((*n)["c"].end()).value();
        (*n)["d"] = 1e9;
    }
    int lookup(std::string_view path) const {
        const Json* n = &root;
        for (std::string_view seg; tree::nextSegment(path, seg);) {
            const Json& c = n->at("c");
            const auto it = c.find(seg);
            if (it == c.end()) return 0;
            n = &*it;
        }
        return n->at("i").template get<int>();
    }
    static std::int64_t sum(const Json& n) {
        std::int64_t s = n.at("i").template get<std::int64_t>();
        if (const auto c = n.find("c"); c != n.end())
            for (auto& k : *c) s += sum(k);
        return s;
    }
    std::int64_t countSum() const { return sum(root); }
    struct Wide {
        Json parent = Json::object();
        bool add(const std::string& n) {
            if (parent.contains(n)) return false;
            parent[n] = Json::object();
            return true;
        }
    };
};

namespace rj = rapidjson;
struct Rapid {
    rj::Document root;
    static rj::Value str(const std::string& s, rj::Document::AllocatorType& a) {
        return rj::Value(s.data(), rj::SizeType(s.size()), a);
    }
    static rj::Value node(const TreeData& d, std::size_t i, rj::Document::AllocatorType& a) {
        const ObjectData& v = d.nodes[i];
        rj::Value o(rj::kObjectType);
        o.AddMember("n", str(v.name, a), a);
        o.AddMember("i", v.count, a);
        o.AddMember("d", v.gain, a);
        o.AddMember("s", str(v.comment, a), a);
        o.AddMember("b", v.visible, a);
        rj::Value p(rj::kArrayType), m(rj::kArrayType);
        p.Reserve(3, a);
        for (double x : v.position) p.PushBack(x, a);
        m.Reserve(16, a);
        for (double x : v.matrix) m.PushBack(x, a);
        o.AddMember("p", p, a);
        o.AddMember("m", m, a);
        o.AddMember("u", str(v.reference, a), a);
        o.AddMember("t", str(v.label, a), a);
        if (i < d.numInner()) {
            rj::Value c(rj::kObjectType);
            for (std::size_t k = 1; k <= fanOut; ++k)
                c.AddMember(str(d.nodes[i * fanOut + k].name, a), node(d, i * fanOut + k, a), a);
            o.AddMember("c", c, a);
        }
        return o;
    }
    void build(const TreeData& d) {
        rj::Value v = node(d, 0, root.GetAllocator());
        static_cast<rj::Value&>(root) = std::move(v);
    }
    std::string write() const {
        rj::StringBuffer b;
        rj::Writer<rj::StringBuffer> w(b);
        root.Accept(w);
        return std::string(b.GetString(), b.GetSize());
    }
    void read(const std::string& s) {
        root.Parse<rj::kParseFullPrecisionFlag>(s.c_str(), s.size());
    }
    std::unique_ptr<Rapid> copy() const {
        auto p = std::make_unique<Rapid>();
        p->root.CopyFrom(root, p->root.GetAllocator());
        return p;
    }
    bool equal(const Rapid& o) const { return root == o.root; }
    void poke() {
        rj::Value* n = &root;
        while (n->HasMember("c")) n = &((*n)["c"].MemberEnd() - 1)->value;
        (*n)["d"] = 1e9;
    }
    int lookup(std::string_view path) const {
        const rj::Value* n = &root;
        for (std::string_view seg; tree::nextSegment(path, seg);) {
            const rj::Value& c = (*n)["c"];
            const auto it = c.FindMember(rj::Value(rj::StringRef(seg.data(), seg.size())));
            if (it == c.MemberEnd()) return 0;
            n = &it->value;
        }
        return (*n)["i"].GetInt();
    }
    static std::int64_t sum(const rj::Value& n) {
        std::int64_t s = n["i"].GetInt();
        const auto c = n.FindMember("c");
        if (c != n.MemberEnd())
            for (auto& k : c->value.GetObject()) s += sum(k.value);
        return s;
    }
    std::int64_t countSum() const { return sum(root); }
    struct Wide {
        rj::Document parent{rj::kObjectType};
        bool add(const std::string& n) {
            if (parent.FindMember(rj::Value(rj::StringRef(n.data(), n.size()))) !=
                parent.MemberEnd())
                return false;
            parent.AddMember(str(n, parent.GetAllocator()), rj::Value(rj::kObjectType),
                             parent.GetAllocator());
            return true;
        }
    };
};
BENCH_PEER("W3", "nlohmann_map", Peer,
           [](Run& run) { tree::runAll<Nlohmann<nlohmann::json>>(run); });
BENCH_PEER("W3", "nlohmann_ordered", Peer, [](Run& run) { tree::runAll<Nlohmann<J>>(run); });
BENCH_PEER("W3", "rapidjson_dom", Peer, [](Run& run) { tree::runAll<Rapid>(run); });
}  // namespace
