// JSON peers: one flat array [x,y,z,x,y,z,...].
#include <rapidjson/document.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <nlohmann/json.hpp>

#include "points/Points.h"
using namespace bench;
namespace {
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;
struct Collect : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Collect> {
    double c[3];
    int n = 0;
    void* out;
    void (*push)(void*, const double*);
    bool add(double d) {
        c[n++] = d;
        if (n == 3) {
            push(out, c);
            n = 0;
        }
        return true;
    }
    bool Double(double d) { return add(d); }
    bool Int(int i) { return add(i); }
    bool Uint(unsigned i) { return add(i); }
    bool Int64(int64_t i) { return add(double(i)); }
    bool Uint64(uint64_t i) { return add(double(i)); }
    bool StartArray() { return true; }
    bool EndArray(rapidjson::SizeType) { return true; }
    bool Default() { return false; }
};
template <class V> void pushV(void* o, const double* c) {
    using T = decltype(V::x);
    static_cast<std::vector<V>*>(o)->push_back({T(c[0]), T(c[1]), T(c[2])});
}
struct RapidSax {
    template <class V> std::string write(const std::vector<V>& v) {
        rapidjson::StringBuffer b;
        Writer w(b);
        w.StartArray();
        for (auto& p : v) {
            w.Double(p.x);
            w.Double(p.y);
            w.Double(p.z);
        }
        w.EndArray();
        return std::string(b.GetString(), b.GetSize());
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        v.clear();
        Collect h;
        h.out = &v;
        h.push = pushV<V>;
        rapidjson::Reader r;
        rapidjson::StringStream in(s.c_str());
        r.Parse<rapidjson::kParseFullPrecisionFlag>(in, h);
    }
};
struct RapidDom {
    template <class V> std::string write(const std::vector<V>& v) {
        rapidjson::Document d(rapidjson::kArrayType);
        auto& a = d.GetAllocator();
        d.Reserve(rapidjson::SizeType(v.size() * 3), a);
        for (auto& p : v) {
            d.PushBack(double(p.x), a);
            d.PushBack(double(p.y), a);
            d.PushBack(double(p.z), a);
        }
        rapidjson::StringBuffer b;
        Writer w(b);
        d.Accept(w);
        return std::string(b.GetString(), b.GetSize());
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        using T = decltype(V::x);
        rapidjson::Document d;
        d.Parse<rapidjson::kParseFullPrecisionFlag>(s.c_str(), s.size());
        v.clear();
        v.reserve(d.Size() / 3);
        for (rapidjson::SizeType i = 0; i + 2 < d.Size(); i += 3)
            v.push_back({T(d[i].GetDouble()), T(d[i + 1].GetDouble()), T(d[i + 2].GetDouble())});
    }
};
struct Nlohmann {
    template <class V> std::string write(const std::vector<V>& v) {
        nlohmann::json j = nlohmann::json::array();
        auto& a = j.get_ref<nlohmann::json::array_t&>();
        a.reserve(v.size() * 3);
        for (auto& p : v) {
            a.emplace_back(p.x);
            a.emplace_back(p.y);
            a.emplace_back(p.z);
        }
        return j.dump();
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        using T = decltype(V::x);
        const auto j = nlohmann::json::parse(s);
        const auto& a = j.get_ref<const nlohmann::json::array_t&>();
        v.clear();
        v.reserve(a.size() / 3);
        for (std::size_t i = 0; i + 2 < a.size(); i += 3)
            v.push_back({a[i].get<T>(), a[i + 1].get<T>(), a[i + 2].get<T>()});
    }
};
BENCH_PEER("W2", "rapidjson_sax", Peer, [](Run& run) { points::runAll<RapidSax>(run); });
BENCH_PEER("W2", "rapidjson_dom", Peer, [](Run& run) { points::runAll<RapidDom>(run); });
BENCH_PEER("W2", "nlohmann", Peer, [](Run& run) { points::runAll<Nlohmann>(run); });
}  // namespace
