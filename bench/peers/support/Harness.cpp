// A run of one peer: its clock, and where what it records goes.
#include "support/Harness.h"

#include "support/Records.h"

#include <malloc.h>
#include <stdlib.h>
#include <time.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace bench {

namespace {

double secondsOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

Entry& entryOf(const std::string& workload, const std::string& peer) {
    for (Entry& entry : allEntries())
        if (entry.workload == workload && entry.peer == peer) return entry;
    throw std::logic_error("no such peer: " + peer);
}

}  // namespace

std::vector<Entry>& allEntries() {
    static std::vector<Entry> entries;
    return entries;
}

double wallSeconds() { return secondsOf(CLOCK_MONOTONIC); }

Run::Run(std::string workloadName, std::string peerName, int repetitionIndex, double scaleOfData)
    : workload(std::move(workloadName)),
      peer(std::move(peerName)),
      repetition(repetitionIndex),
      dataScale(scaleOfData) {}

double Run::now() const { return secondsOf(isOnWall ? CLOCK_MONOTONIC : CLOCK_THREAD_CPUTIME_ID); }

void Run::record(std::string_view metric, double value, std::string_view unit) {
    entryOf(workload, peer).record(std::string(metric), value, std::string(unit));
}
void Run::verify(bool holds, std::string_view what) {
    entryOf(workload, peer).verify(holds, std::string(what));
}
void Run::note(std::string_view text) { entryOf(workload, peer).note(std::string(text)); }

Registrar::Registrar(const char* workload, const char* peer, Kind kind, PeerFunction function) {
    allEntries().push_back({workload, peer, kind, std::move(function)});
}

std::size_t heapBytes() {
    const auto use = mallinfo2();
    return use.uordblks + use.hblkhd;
}

std::string scratchDir() {
    static const std::string made = [] {
        const char* const base = std::getenv("BENCH_TMP");
        std::string path =
            (base ? std::filesystem::path(base) : std::filesystem::temp_directory_path()) /
            "peersbench.XXXXXX";
        if (!mkdtemp(path.data())) throw std::runtime_error("no scratch directory");
        return path;
    }();
    return made;
}

}  // namespace bench
