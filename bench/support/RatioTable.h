// The table of ratios that every benchmark program ends with.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

/// Keeps the best time of each benchmark while the console shows them all. The best of several
/// interleaved runs, since these machines are shared and everything else only adds time.
class BestTimes : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Seconds of one iteration; 0 for a benchmark that did not run.
    double seconds(const std::string& name) const;
    /// A counter of the benchmark's best run; 0 where there is none.
    double counter(const std::string& name, const std::string& counter) const;

private:
    struct Best {
        double seconds;
        std::map<std::string, double> counters;
    };
    std::map<std::string, Best> best;
};

/// One line of the table: a ratio of two times of the same run of the program, and its bound.
struct Ratio {
    enum Bound { AtMost, AtLeast };
    std::string what;
    double value;
    Bound bound;
    double limit;
};

/// Prints the table. \return whether all bounds hold; a ratio of 0, for what did not run, is left
/// out.
bool printRatios(const std::vector<Ratio>& ratios);

}  // namespace bench
