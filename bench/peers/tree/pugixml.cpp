// W3: XML DOM; the element's name is the object's name, values are attributes, children are child
// elements.
#include <charconv>
#include <cstring>
#include <pugixml.hpp>

#include "tree/Tree.h"
using namespace bench;
namespace {
struct ToString : pugi::xml_writer {
    std::string s;
    void write(const void* d, size_t n) override { s.append(static_cast<const char*>(d), n); }
};
char* num(char* p, double x) { return std::to_chars(p, p + 40, x).ptr; }
void nums(pugi::xml_attribute a, const double* v, int n) {
    char b[800], *p = b;
    for (int i = 0; i < n; ++i) {
        p = num(p, v[i]);
        *p++ = ' ';
    }
    p[-1] = 0;
    a.set_value(b);
}
void node(pugi::xml_node n, const TreeData& d, std::size_t i) {
    const ObjectData& v = d.nodes[i];
    n.append_attribute("i").set_value(v.count);
    nums(n.append_attribute("d"), &v.gain, 1);
    n.append_attribute("s").set_value(v.comment.c_str());
    n.append_attribute("b").set_value(v.visible);
    nums(n.append_attribute("p"), v.position.data(), 3);
    nums(n.append_attribute("m"), v.matrix.data(), 16);
    n.append_attribute("u").set_value(v.reference.c_str());
    n.append_attribute("t").set_value(v.label.c_str());
    if (i < d.numInner())
        for (std::size_t k = 1; k <= fanOut; ++k)
            node(n.append_child(d.nodes[i * fanOut + k].name.c_str()), d, i * fanOut + k);
}
bool eq(pugi::xml_node a, pugi::xml_node b) {
    if (std::strcmp(a.name(), b.name())) return false;
    auto x = a.first_attribute(), y = b.first_attribute();
    for (; x && y; x = x.next_attribute(), y = y.next_attribute())
        if (std::strcmp(x.name(), y.name()) || std::strcmp(x.value(), y.value())) return false;
    if (x || y) return false;
    auto c = a.first_child(), e = b.first_child();
    for (; c && e; c = c.next_sibling(), e = e.next_sibling())
        if (!eq(c, e)) return false;
    return !c && !e;
}
std::int64_t sum(pugi::xml_node n) {
    std::int64_t s = n.attribute("i").as_int();
    for (auto c : n.children()) s += sum(c);
    return s;
}
struct Pugi {
    pugi::xml_document d;
    void build(const TreeData& t) { node(d.append_child(t.nodes[0].name.c_str()), t, 0); }
    std::string write() const {
        ToString w;
        d.save(w, "", pugi::format_indent | pugi::format_no_declaration);
        return std::move(w.s);
    }
    void read(const std::string& s) { d.load_buffer(s.data(), s.size()); }
    std::unique_ptr<Pugi> copy() const {
        auto p = std::make_unique<Pugi>();
        p->d.reset(d);
        return p;
    }
    bool equal(const Pugi& o) const { return eq(d.document_element(), o.d.document_element()); }
    void poke() {
        auto n = d.document_element();
        while (n.first_child()) n = n.last_child();
        n.attribute("d").set_value("1e9");
    }
    int lookup(std::string_view path) const {
        const std::string p(path.substr(1));
        return d.document_element().first_element_by_path(p.c_str()).attribute("i").as_int();
    }
    std::int64_t countSum() const { return sum(d.document_element()); }
    struct Wide {
        pugi::xml_document d;
        pugi::xml_node parent = d.append_child("parent");
        bool add(const std::string& n) {
            if (parent.child(n.c_str())) return false;
            parent.append_child(n.c_str());
            return true;
        }
    };
};
BENCH_PEER("W3", "pugixml_dom", Peer, [](Run& run) { tree::runAll<Pugi>(run); });
}  // namespace
