// W3: protobuf messages; text by TextFormat, compare by MessageDifferencer; the binary form as a
// lower bound.
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>

#include "bench.pb.h"
#include "tree/Tree.h"
using namespace bench;
namespace {
using Obj = benchpb::Obj;
void node(Obj& o, const TreeData& d, std::size_t i) {
    const ObjectData& v = d.nodes[i];
    o.set_name(v.name);
    o.set_i(v.count);
    o.set_d(v.gain);
    o.set_s(v.comment);
    o.set_b(v.visible);
    for (double x : v.position) o.add_p(x);
    for (double x : v.matrix) o.add_m(x);
    o.set_u(v.reference);
    o.set_t(v.label);
    if (i < d.numInner())
        for (std::size_t k = 1; k <= fanOut; ++k) node(*o.add_children(), d, i * fanOut + k);
}
std::int64_t sum(const Obj& o) {
    std::int64_t s = o.i();
    for (auto& c : o.children()) s += sum(c);
    return s;
}
template <bool Text> struct Pb {
    Obj root;
    void build(const TreeData& d) { node(root, d, 0); }
    std::string write() const {
        if (!Text) return root.SerializeAsString();
        google::protobuf::TextFormat::Printer p;
        p.SetUseShortRepeatedPrimitives(true);
        std::string s;
        p.PrintToString(root, &s);
        return s;
    }
    void read(const std::string& s) {
        if (!Text) {
            root.ParseFromString(s);
            return;
        }
        google::protobuf::TextFormat::Parser p;
        p.ParseFromString(s, &root);
    }
    std::unique_ptr<Pb> copy() const {
        auto p = std::make_unique<Pb>();
        p->root.CopyFrom(root);
        return p;
    }
    bool equal(const Pb& o) const {
        return google::protobuf::util::MessageDifferencer::Equals(root, o.root);
    }
    void poke() {
        Obj* n = &root;
        while (n->children_size()) n = n->mutable_children(n->children_size() - 1);
        n->set_d(1e9);
    }
    int lookup(std::string_view path) const {
        const Obj* n = &root;
        for (std::string_view seg; tree::nextSegment(path, seg);) {
            const Obj* f = nullptr;
            for (auto& c : n->children())
                if (c.name() == seg) {
                    f = &c;
                    break;
                }
            if (!f) return 0;
            n = f;
        }
        return n->i();
    }
    std::int64_t countSum() const { return sum(root); }
    struct Wide {
        Obj parent;
        bool add(const std::string& s) {
            for (auto& c : parent.children())
                if (c.name() == s) return false;
            parent.add_children()->set_name(s);
            return true;
        }
    };
};
BENCH_PEER("W3", "protobuf_text", Peer, [](Run& run) { tree::runAll<Pb<true>>(run); });
BENCH_PEER("W3", "protobuf_binary", NotText, [](Run& run) {
    tree::runAll<Pb<false>>(run, {true, false, 0});
});
}  // namespace
