#include <fmt/compile.h>
#include <fmt/format.h>

#include "points/Points.h"
using namespace bench;
namespace {
template <bool Shortest> struct Fmt {
    template <class V> std::string write(const std::vector<V>& v) {
        fmt::memory_buffer b;
        for (auto& p : v) {
            if constexpr (Shortest)
                fmt::format_to(std::back_inserter(b), FMT_COMPILE("{} {} {}\n"), p.x, p.y, p.z);
            else
                fmt::format_to(std::back_inserter(b), FMT_COMPILE("{:.10g} {:.10g} {:.10g}\n"),
                               double(p.x), double(p.y), double(p.z));
        }
        return fmt::to_string(b);
    }
    template <class V> void read(const std::string&, std::vector<V>&) {}
};
BENCH_PEER("W2", "fmt_shortest", Peer, [](Run& run) {
    points::runAll<Fmt<true>>(run, {points::Back::Exact, true, false});
});
BENCH_PEER("W2", "fmt_10g", Peer, [](Run& run) {
    points::runAll<Fmt<false>>(run, {points::Back::Exact, true, false});
});
}  // namespace
