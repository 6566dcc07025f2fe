// XML DOM: <p x="" y="" z=""/> for each point.
#include <pugixml.hpp>

#include "points/Points.h"
using namespace bench;
namespace {
struct ToString : pugi::xml_writer {
    std::string s;
    void write(const void* d, size_t n) override { s.append(static_cast<const char*>(d), n); }
};
struct Pugi {
    template <class V> std::string write(const std::vector<V>& v) {
        pugi::xml_document d;
        auto root = d.append_child("v");
        for (auto& p : v) {
            auto n = root.append_child("p");
            n.append_attribute("x").set_value(p.x);
            n.append_attribute("y").set_value(p.y);
            n.append_attribute("z").set_value(p.z);
        }
        ToString w;
        d.save(w, "", pugi::format_raw | pugi::format_no_declaration);
        return std::move(w.s);
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        using T = decltype(V::x);
        pugi::xml_document d;
        d.load_buffer(s.data(), s.size());
        v.clear();
        for (auto n : d.child("v").children("p")) {
            auto a = n.first_attribute();
            const T x = T(a.as_double());
            a = a.next_attribute();
            const T y = T(a.as_double());
            a = a.next_attribute();
            v.push_back({x, y, T(a.as_double())});
        }
    }
};
BENCH_PEER("W2", "pugixml", Peer, [](Run& run) { points::runAll<Pugi>(run); });
}  // namespace
