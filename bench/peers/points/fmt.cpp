// W2: fmt with compiled formats, which only writes.
#include "points/Points.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <iterator>
#include <string>
#include <vector>

namespace {

template <bool IsShortest> struct Formatted {
    template <class P> std::string write(const std::vector<P>& points) {
        fmt::memory_buffer buffer;
        const auto end = std::back_inserter(buffer);
        for (const P& p : points) {
            if constexpr (IsShortest) fmt::format_to(end, FMT_COMPILE("{} {} {}\n"), p.x, p.y, p.z);
            else
                fmt::format_to(end, FMT_COMPILE("{:.10g} {:.10g} {:.10g}\n"), double{p.x},
                               double{p.y}, double{p.z});
        }
        return fmt::to_string(buffer);
    }
    template <class P> void read(const std::string&, std::vector<P>&) {}
};

constexpr bench::points::Abilities onlyWrites{.canRead = false};

BENCH_PEER("W2", "fmt_shortest", Peer,
           [](bench::Run& run) { bench::points::runAll<Formatted<true>>(run, onlyWrites); });
BENCH_PEER("W2", "fmt_10g", Peer,
           [](bench::Run& run) { bench::points::runAll<Formatted<false>>(run, onlyWrites); });

}  // namespace
