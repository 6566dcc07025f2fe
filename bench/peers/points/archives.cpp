#include <boost/archive/text_iarchive.hpp>
#include <boost/archive/text_oarchive.hpp>
#include <boost/serialization/level.hpp>
#include <boost/serialization/tracking.hpp>
#include <boost/serialization/vector.hpp>
#include <cereal/archives/json.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/vector.hpp>
#include <sstream>

#include "points/Points.h"
using namespace bench;
namespace boost::serialization {
template <class A, class T> void serialize(A& a, bench::Point<T>& v, unsigned) { a& v.x& v.y& v.z; }
}  // namespace boost::serialization
BOOST_CLASS_IMPLEMENTATION(bench::Point<double>, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(bench::Point<float>, boost::serialization::object_serializable)
BOOST_CLASS_TRACKING(bench::Point<double>, boost::serialization::track_never)
BOOST_CLASS_TRACKING(bench::Point<float>, boost::serialization::track_never)
namespace {
struct BoostText {
    template <class V> std::string write(const std::vector<V>& v) {
        std::ostringstream o;
        {
            boost::archive::text_oarchive a(o, boost::archive::no_header);
            a << v;
        }
        return std::move(o).str();
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        std::istringstream i(s);
        boost::archive::text_iarchive a(i, boost::archive::no_header);
        a >> v;
    }
};
struct CerealJson {
    template <class V> std::string write(const std::vector<V>& v) {
        using A = std::array<decltype(V::x), 3>;
        const auto& w = reinterpret_cast<const std::vector<A>&>(v);
        std::ostringstream o;
        {
            cereal::JSONOutputArchive a(o, cereal::JSONOutputArchive::Options::NoIndent());
            a(w);
        }
        return std::move(o).str();
    }
    template <class V> void read(const std::string& s, std::vector<V>& v) {
        using A = std::array<decltype(V::x), 3>;
        std::istringstream i(s);
        cereal::JSONInputArchive a(i);
        a(reinterpret_cast<std::vector<A>&>(v));
    }
};
BENCH_PEER("W2", "boost_text", Peer, [](Run& run) { points::runAll<BoostText>(run); });
BENCH_PEER("W2", "cereal_json", Peer, [](Run& run) { points::runAll<CerealJson>(run); });
}  // namespace
