// W2: protobuf messages as text, and their binary form.
#include "points/Points.h"

#include <google/protobuf/text_format.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include "messages.pb.h"

namespace {

template <class P>
using Message = std::conditional_t<std::is_same_v<decltype(P::x), float>, bench::messages::PointsF,
                                   bench::messages::PointsD>;

template <class P> Message<P> makeMessage(const std::vector<P>& points) {
    Message<P> message;
    auto& numbers = *message.mutable_xyz();
    numbers.Reserve(static_cast<int>(3 * points.size()));
    for (const P& p : points) {
        numbers.AddAlreadyReserved(p.x);
        numbers.AddAlreadyReserved(p.y);
        numbers.AddAlreadyReserved(p.z);
    }
    return message;
}

template <class P> void take(const Message<P>& message, std::vector<P>& points) {
    points.clear();
    points.reserve(static_cast<std::size_t>(message.xyz_size() / 3));
    for (int i = 0; i + 2 < message.xyz_size(); i += 3)
        points.push_back({message.xyz(i), message.xyz(i + 1), message.xyz(i + 2)});
}

struct Text {
    template <class P> std::string write(const std::vector<P>& points) {
        google::protobuf::TextFormat::Printer printer;
        printer.SetUseShortRepeatedPrimitives(true);
        std::string text;
        printer.PrintToString(makeMessage(points), &text);
        return text;
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        Message<P> message;
        google::protobuf::TextFormat::ParseFromString(text, &message);
        take(message, points);
    }
};

struct Binary {
    template <class P> std::string write(const std::vector<P>& points) {
        return makeMessage(points).SerializeAsString();
    }
    template <class P> void read(const std::string& bytes, std::vector<P>& points) {
        Message<P> message;
        message.ParseFromString(bytes);
        take(message, points);
    }
};

BENCH_PEER("W2", "protobuf_text", Peer, [](bench::Run& run) { bench::points::runAll<Text>(run); });
BENCH_PEER("W2", "protobuf_binary", NotText,
           [](bench::Run& run) { bench::points::runAll<Binary>(run); });

}  // namespace
