// W2: the text archives of Boost.Serialization.
#include "points/Points.h"

#include <boost/archive/text_iarchive.hpp>
#include <boost/archive/text_oarchive.hpp>
#include <boost/serialization/level.hpp>
#include <boost/serialization/tracking.hpp>
#include <boost/serialization/vector.hpp>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace boost::serialization {
template <class Archive, class T> void serialize(Archive& archive, bench::Point<T>& p, unsigned) {
    archive& p.x& p.y& p.z;
}
}  // namespace boost::serialization
BOOST_CLASS_IMPLEMENTATION(bench::Point<double>, boost::serialization::object_serializable)
BOOST_CLASS_IMPLEMENTATION(bench::Point<float>, boost::serialization::object_serializable)
BOOST_CLASS_TRACKING(bench::Point<double>, boost::serialization::track_never)
BOOST_CLASS_TRACKING(bench::Point<float>, boost::serialization::track_never)

namespace {

struct TextArchive {
    template <class P> std::string write(const std::vector<P>& points) {
        std::ostringstream stream;
        {
            boost::archive::text_oarchive archive(stream, boost::archive::no_header);
            archive << points;
        }
        return std::move(stream).str();
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        std::istringstream stream(text);
        boost::archive::text_iarchive archive(stream, boost::archive::no_header);
        archive >> points;
    }
};

BENCH_PEER("W2", "boost_text", Peer,
           [](bench::Run& run) { bench::points::runAll<TextArchive>(run); });

}  // namespace
