// W2: the JSON archives of cereal.
#include "points/Points.h"

#include <cereal/archives/json.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/vector.hpp>

#include <array>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

struct JsonArchive {
    // Arrays have the layout of a point and are what the archives know.
    template <class P> using Arrays = std::vector<std::array<decltype(P::x), 3>>;

    template <class P> std::string write(const std::vector<P>& points) {
        std::ostringstream stream;
        {
            cereal::JSONOutputArchive archive(stream,
                                              cereal::JSONOutputArchive::Options::NoIndent());
            archive(reinterpret_cast<const Arrays<P>&>(points));
        }
        return std::move(stream).str();
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        std::istringstream stream(text);
        cereal::JSONInputArchive archive(stream);
        archive(reinterpret_cast<Arrays<P>&>(points));
    }
};

BENCH_PEER("W2", "cereal_json", Peer,
           [](bench::Run& run) { bench::points::runAll<JsonArchive>(run); });

}  // namespace
