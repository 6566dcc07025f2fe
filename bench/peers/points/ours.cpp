// W2: our codecs of lists of points, on standard string streams and on a host's own buffers.
#include "points/Points.h"
#include "support/MemoryBuffer.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include <istream>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace ac = QOR::AttributeContainer;

namespace {

template <class P> using Vector = QOR::Vec3d<decltype(P::x)>;

// The data stands in plain structs. Our vectors have the same layout, and a copy of a million
// points would be measured with the writing.
template <class P> const std::vector<Vector<P>>& asOurs(const std::vector<P>& points) {
    static_assert(sizeof(P) == sizeof(Vector<P>));
    return reinterpret_cast<const std::vector<Vector<P>>&>(points);
}

template <class P> void writeTo(std::ostream& stream, const std::vector<P>& points) {
    ac::DataOutFormat<std::vector<Vector<P>>>(stream, 0).put(asOurs(points));
}

template <class P> void readFrom(std::istream& stream, std::vector<P>& points) {
    ac::DataInFormat<std::vector<Vector<P>>> reader(stream, 0);
    const auto& received = reader.get();
    points.clear();
    points.reserve(received.size());
    for (const auto& p : received) points.push_back({p[0], p[1], p[2]});
}

struct StringStreams {
    template <class P> std::string write(const std::vector<P>& points) {
        std::ostringstream stream;
        writeTo(stream, points);
        return std::move(stream).str();
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        std::istringstream stream(text);
        readFrom(stream, points);
    }
};

struct OwnBuffers {
    template <class P> std::string write(const std::vector<P>& points) {
        bench::MemorySink sink;
        std::ostream stream(&sink);
        writeTo(stream, points);
        return sink.take();
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        bench::MemorySource source(text);
        std::istream stream(&source);
        readFrom(stream, points);
    }
};

BENCH_PEER("W2", "ours", Ours, [](bench::Run& run) {
    bench::points::runAll<StringStreams>(run, {bench::points::Back::FloatClamp});
});
BENCH_PEER("W2", "ours_own_buffer", Ours, [](bench::Run& run) {
    bench::points::runAll<OwnBuffers>(run, {bench::points::Back::FloatClamp});
});

}  // namespace
