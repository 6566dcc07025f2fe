// W2: the floors, which write and read our bytes in plain memory, and others that need no library.
#include "points/Points.h"
#include "support/FloorNumbers.h"

#include <cstring>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace text = bench::text;
using bench::points::Back;

namespace {

template <class Put> struct PlainCodec {
    template <class P> std::string write(const std::vector<P>& points) {
        std::string result;
        text::writeList<Put>(result, points);
        return result;
    }
    template <class P> void read(const std::string& from, std::vector<P>& points) {
        text::readList(from, points);
    }
};

using ByStandard = PlainCodec<text::ByToChars>;
using ByIntegers = PlainCodec<text::Exactly>;

/// The operators of the standard streams with ten digits; not our bytes.
struct Operators {
    template <class P> std::string write(const std::vector<P>& points) {
        std::ostringstream stream;
        stream.precision(sizeof(P::x) == sizeof(float) ? 9 : 10);
        for (const P& p : points) stream << p.x << ' ' << p.y << ' ' << p.z << '\n';
        return std::move(stream).str();
    }
    template <class P> void read(const std::string& from, std::vector<P>& points) {
        std::istringstream stream(from);
        points.clear();
        for (P p; stream >> p.x >> p.y >> p.z;) points.push_back(p);
    }
};

struct Memcpy {
    template <class P> std::string write(const std::vector<P>& points) {
        return std::string(reinterpret_cast<const char*>(points.data()), points.size() * sizeof(P));
    }
    template <class P> void read(const std::string& from, std::vector<P>& points) {
        points.resize(from.size() / sizeof(P));
        std::memcpy(static_cast<void*>(points.data()), from.data(), from.size());
    }
};

BENCH_PEER("W2", "floor_to_chars", Floor,
           [](bench::Run& run) { bench::points::runAll<ByStandard>(run, {Back::FloatClamp}); });
BENCH_PEER("W2", "floor_exact128", Floor,
           [](bench::Run& run) { bench::points::runAll<ByIntegers>(run, {Back::FloatClamp}); });
BENCH_PEER("W2", "iostream_prec10", Peer,
           [](bench::Run& run) { bench::points::runAll<Operators>(run); });
BENCH_PEER("W2", "memcpy", NotText, [](bench::Run& run) { bench::points::runAll<Memcpy>(run); });

}  // namespace
