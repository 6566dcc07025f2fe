// What the repetitions of all peers have recorded, and the registry that it is kept in.
#pragma once

#include "support/Harness.h"

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bench {

struct Samples {
    std::string unit;
    std::vector<double> values;
    std::size_t order;  // metrics stand in the order in which a peer records them
};

/// One row of a workload.
struct Entry {
    std::string workload, peer;
    Kind kind;
    PeerFunction function;
    double secondsSpent = 0;
    bool hasFailed = false;
    std::map<std::string, Samples> samples{};
    std::map<std::string, bool> verified{};
    std::vector<std::string> notes{};

    void record(const std::string& metric, double value, const std::string& unit);
    void verify(bool holds, const std::string& what);
    void note(const std::string& text);
};

/// All that are registered, in no order to rely on.
std::vector<Entry>& allEntries();
const char* nameOf(Kind kind);
double wallSeconds();

/// Runs one repetition in a child process and takes over what it recorded. All children start from
/// the same heap, and none can harm another.
/// \param isCold whether the child meets a heap without pages, which are slow and uneven to get.
void runInChild(Entry& entry, int repetition, double scale, bool isCold);

/// One line of JSON for each metric: median, best and number of samples.
void print(std::FILE* file, const Entry& entry);

}  // namespace bench
