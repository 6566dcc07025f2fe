#include "RatioTable.h"

#include <cmath>
#include <cstdio>

namespace bench {

void BestTimes::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
        const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
        const auto [place, isNew] = best.try_emplace(run.run_name.function_name, Best{seconds, {}});
        if (!isNew && seconds >= place->second.seconds) continue;
        place->second.seconds = seconds;
        for (const auto& [name, counter] : run.counters) place->second.counters[name] = counter;
    }
    ConsoleReporter::ReportRuns(runs);
}

double BestTimes::seconds(const std::string& name) const {
    const auto found = best.find(name);
    return found != best.end() ? found->second.seconds : 0;
}

double BestTimes::counter(const std::string& name, const std::string& counter) const {
    const auto found = best.find(name);
    if (found == best.end()) return 0;
    const auto value = found->second.counters.find(counter);
    return value != found->second.counters.end() ? value->second : 0;
}

bool printRatios(const std::vector<Ratio>& ratios) {
    bool allHold = true;
    std::printf("\n%-58s %8s   %s\n", "ratio within this run", "measured", "wanted");
    for (const Ratio& ratio : ratios) {
        if (ratio.value == 0 || !std::isfinite(ratio.value)) continue;
        const bool atMost = ratio.bound == Ratio::AtMost;
        const bool holds = atMost ? ratio.value <= ratio.limit : ratio.value >= ratio.limit;
        std::printf("%-58s %8.2f   %s %.2f%s\n", ratio.what.c_str(), ratio.value,
                    atMost ? "at most" : "at least", ratio.limit, holds ? "" : "   MISSED");
        allHold = allHold && holds;
    }
    return allHold;
}

}  // namespace bench
