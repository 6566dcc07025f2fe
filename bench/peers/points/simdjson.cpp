// W2: simdjson, which only reads: one flat array [x,y,z,x,y,z] on demand.
#include "points/Points.h"

#include <simdjson.h>

#include <charconv>
#include <cstddef>
#include <string>
#include <vector>

namespace {

struct OnDemand {
    // Only to have a text.
    template <class P> std::string write(const std::vector<P>& points) {
        std::string text = "[";
        char digits[100];
        for (const P& p : points)
            for (const double number : {double{p.x}, double{p.y}, double{p.z}}) {
                text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
                text += ',';
            }
        text.back() = ']';
        return text;
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        using T = decltype(P::x);
        simdjson::ondemand::parser parser;
        const simdjson::padded_string padded(text);
        auto document = parser.iterate(padded);
        points.clear();
        T numbers[3] = {};
        std::size_t count = 0;
        for (auto element : document.get_array()) {
            numbers[count++] = static_cast<T>(static_cast<double>(element.get_double()));
            if (count < 3) continue;
            points.push_back({numbers[0], numbers[1], numbers[2]});
            count = 0;
        }
    }
};

BENCH_PEER("W2", "simdjson", Peer,
           [](bench::Run& run) { bench::points::runAll<OnDemand>(run, {.canWrite = false}); });

}  // namespace
