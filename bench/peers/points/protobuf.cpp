#include <google/protobuf/io/zero_copy_stream_impl_lite.h>
#include <google/protobuf/text_format.h>

#include "bench.pb.h"
#include "points/Points.h"
using namespace bench;
namespace {
template <class V>
using Msg =
    std::conditional_t<std::is_same_v<decltype(V::x), float>, benchpb::PointsF, benchpb::PointsD>;
template <class V> void fill(Msg<V>& m, const std::vector<V>& v) {
    auto& x = *m.mutable_xyz();
    x.Reserve(int(v.size() * 3));
    for (auto& p : v) {
        x.AddAlreadyReserved(p.x);
        x.AddAlreadyReserved(p.y);
        x.AddAlreadyReserved(p.z);
    }
}
template <class V> void drain(const Msg<V>& m, std::vector<V>& v) {
    v.clear();
    v.reserve(std::size_t(m.xyz_size() / 3));
    for (int i = 0; i + 2 < m.xyz_size(); i += 3)
        v.push_back({m.xyz(i), m.xyz(i + 1), m.xyz(i + 2)});
}
struct PbText {
    template <class V> std::string write(const std::vector<V>& v) {
        Msg<V> m;
        fill<V>(m, v);
        google::protobuf::TextFormat::Printer p;
        p.SetUseShortRepeatedPrimitives(true);
        std::string s;
        p.PrintToString(m, &s);
        return s;
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        Msg<V> m;
        google::protobuf::TextFormat::ParseFromString(s, &m);
        drain<V>(m, v);
    }
};
struct PbBinary {
    template <class V> std::string write(const std::vector<V>& v) {
        Msg<V> m;
        fill<V>(m, v);
        return m.SerializeAsString();
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        Msg<V> m;
        m.ParseFromString(s);
        drain<V>(m, v);
    }
};
BENCH_PEER("W2", "protobuf_text", Peer, [](Run& run) { points::runAll<PbText>(run); });
BENCH_PEER("W2", "protobuf_binary", NotText, [](Run& run) { points::runAll<PbBinary>(run); });
}  // namespace
