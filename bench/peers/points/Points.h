// The workload W2: a million points become text in memory and come back.
#pragma once

#include "support/Data.h"
#include "support/Harness.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace bench::points {

enum class Back {
    Exact,
    FloatClamp  ///< a float is stored as its smallest normal at least, as the library does
};

/// What a peer can do and how its points come back.
struct Abilities {
    Back back = Back::Exact;
    bool canWrite = true, canRead = true;
};

template <class T> bool isSame(T sent, T received, Back back, double tolerance) {
    if constexpr (std::is_same_v<T, float>)
        if (back == Back::FloatClamp) sent = std::max(sent, std::numeric_limits<float>::min());
    if (tolerance == 0) return sent == received;
    return std::fabs(double{sent} - double{received}) <= tolerance;
}

template <class P>
bool areSame(const std::vector<P>& sent, const std::vector<P>& received, Back back,
             double tolerance) {
    if (sent.size() != received.size()) return false;
    for (std::size_t i = 0; i < sent.size(); ++i)
        if (!isSame(sent[i].x, received[i].x, back, tolerance) ||
            !isSame(sent[i].y, received[i].y, back, tolerance) ||
            !isSame(sent[i].z, received[i].z, back, tolerance))
            return false;
    return true;
}

template <class Codec, class P>
void runSet(Run& run, const std::string& set, const std::vector<P>& points,
            const Abilities& abilities, double tolerance) {
    Codec codec;
    std::string text;
    const double millions = static_cast<double>(points.size()) / 1e6;
    const double writing = run.time([&] { text = codec.template write<P>(points); });
    const double megabytes = static_cast<double>(text.size()) / 1e6;
    if (abilities.canWrite) {
        run.record(set + ".write", millions / writing, "Mpoints/s");
        run.record(set + ".write_MB", megabytes / writing, "MB/s");
        run.record(set + ".bytes", megabytes / millions, "B/point");
    }
    if (!abilities.canRead) return;
    std::vector<P> received;
    const double reading = run.time([&] { codec.template read<P>(text, received); });
    run.record(set + ".read", millions / reading, "Mpoints/s");
    run.record(set + ".read_MB", megabytes / reading, "MB/s");
    run.verify(areSame(points, received, abilities.back, tolerance),
               set + (tolerance > 0 ? " comes back within 1e-8" : " comes back exactly"));
    if (run.isFirst() && abilities.canWrite)
        run.record(set + ".text_hash_low32", textHash(text), "hash");
}

/// Runs the three sets: `d`, doubles of six digits as a scanner exports them, `f`, the same as
/// floats, and `full`, doubles with full mantissas. `Codec` has
///     template <class P> std::string write(const std::vector<P>&);
///     template <class P> void read(const std::string&, std::vector<P>&);
template <class Codec> void runAll(Run& run, const Abilities& abilities = {}) {
    setPointCount(static_cast<std::size_t>(1'000'000 * run.scale()));
    runSet<Codec>(run, "d", scanPoints(), abilities, 0);
    runSet<Codec>(run, "f", scanPointsAsFloat(), abilities, 0);
    runSet<Codec>(run, "full", turnedPoints(), abilities, 1e-8);
}

}  // namespace bench::points
