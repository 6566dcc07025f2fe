#include <simdjson.h>

#include <charconv>

#include "points/Points.h"
using namespace bench;
namespace {
struct Simd {
    template <class V>
    std::string write(const std::vector<V>& v) {  // only to have a text, not reported
        std::string s = "[";
        char b[100];
        for (auto& p : v)
            for (double x : {double(p.x), double(p.y), double(p.z)}) {
                s.append(b, std::to_chars(b, b + 100, x).ptr);
                s += ',';
            }
        s.back() = ']';
        return s;
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        using T = decltype(V::x);
        simdjson::ondemand::parser p;
        const simdjson::padded_string t(s);
        auto d = p.iterate(t);
        v.clear();
        double c[3];
        int n = 0;
        for (auto x : d.get_array()) {
            c[n++] = double(x.get_double());
            if (n == 3) {
                v.push_back({T(c[0]), T(c[1]), T(c[2])});
                n = 0;
            }
        }
    }
};
BENCH_PEER("W2", "simdjson", Peer, [](Run& run) {
    points::runAll<Simd>(run, {points::Back::Exact, false, true});
});
}  // namespace
