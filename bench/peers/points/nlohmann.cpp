// W2: nlohmann's JSON, one flat array [x,y,z,x,y,z].
#include "points/Points.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace {

struct Json {
    using Array = nlohmann::json::array_t;

    template <class P> std::string write(const std::vector<P>& points) {
        nlohmann::json json = nlohmann::json::array();
        auto& array = json.get_ref<Array&>();
        array.reserve(3 * points.size());
        for (const P& p : points) {
            array.emplace_back(p.x);
            array.emplace_back(p.y);
            array.emplace_back(p.z);
        }
        return json.dump();
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        using T = decltype(P::x);
        const auto json = nlohmann::json::parse(text);
        const auto& array = json.get_ref<const Array&>();
        points.clear();
        points.reserve(array.size() / 3);
        for (std::size_t i = 0; i + 2 < array.size(); i += 3)
            points.push_back({array[i].get<T>(), array[i + 1].get<T>(), array[i + 2].get<T>()});
    }
};

BENCH_PEER("W2", "nlohmann", Peer, [](bench::Run& run) { bench::points::runAll<Json>(run); });

}  // namespace
