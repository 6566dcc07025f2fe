// What a peer is run by: it registers one function a workload, which times itself and records.
#pragma once

#include "support/AllocationCount.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace bench {

enum class Kind {
    Floor,    ///< plain code with none of our duties, for our bytes where there is a text
    Model,    ///< least code with our duties: what is possible, no implementation
    Peer,     ///< another library
    NotText,  ///< writes no text: what leaving it out would save
    Ours
};

/// One repetition of one peer in one workload.
class Run {
public:
    Run(std::string workloadName, std::string peerName, int repetitionIndex, double dataScale);

    /// Below 1 for a smaller set of data.
    double scale() const { return dataScale; }
    bool isFirst() const { return repetition == 0; }

    /// Seconds that `work` takes: of this thread's processor time, or on the wall's clock.
    template <class Work> double time(Work&& work) const {
        const double start = now();
        work();
        return now() - start;
    }
    /// From here on time is taken from the wall's clock, for what waits for files.
    void useWallClock() { isOnWall = true; }

    /// Notes one sample of a metric. A unit that ends in "/s" is better when it is higher.
    void record(std::string_view metric, double value, std::string_view unit);
    /// Whether the peer did what it should; one failed repetition is enough.
    void verify(bool holds, std::string_view what);
    /// A limit of the peer that stands below the table.
    void note(std::string_view text);

private:
    double now() const;

    std::string workload, peer;
    int repetition;
    double dataScale;
    bool isOnWall = false;
};

using PeerFunction = std::function<void(Run&)>;

struct Registrar {
    Registrar(const char* workload, const char* peer, Kind kind, PeerFunction function);
};

#define BENCH_JOINED(a, b) a##b
#define BENCH_NAMED(a, b) BENCH_JOINED(a, b)
/// Registers a peer under its name in the tables.
#define BENCH_PEER(workload, peer, kind, function)                       \
    static const ::bench::Registrar BENCH_NAMED(registrar, __COUNTER__)( \
        workload, peer, ::bench::Kind::kind, function)

/// Bytes of the heap that are in use.
std::size_t heapBytes();
/// A directory of this process; it goes when the program ends.
std::string scratchDir();

/// The compiler does not know what becomes of the value.
template <class T> void keep(T& value) { asm volatile("" : "+m"(value) : : "memory"); }
inline void clobberMemory() { asm volatile("" : : : "memory"); }

/// FNV-1a, only to compare texts: its low 32 bits.
inline std::uint32_t textHash(std::string_view text) {
    std::uint64_t hash = 1469598103934665603u;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return static_cast<std::uint32_t>(hash);
}

}  // namespace bench
