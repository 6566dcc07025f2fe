// W2: RapidJSON, one flat array [x,y,z,x,y,z], by events and as a document.
#include "points/Points.h"

#include <rapidjson/document.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

/// Takes the numbers of the array as they come.
template <class P>
class Collector : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Collector<P>> {
public:
    explicit Collector(std::vector<P>& target) : points(target) {}
    bool Double(double number) {
        numbers[count++] = number;
        if (count < 3) return true;
        using T = decltype(P::x);
        points.push_back(
            {static_cast<T>(numbers[0]), static_cast<T>(numbers[1]), static_cast<T>(numbers[2])});
        count = 0;
        return true;
    }
    bool Int(int number) { return Double(number); }
    bool Uint(unsigned number) { return Double(number); }
    bool Int64(std::int64_t number) { return Double(static_cast<double>(number)); }
    bool Uint64(std::uint64_t number) { return Double(static_cast<double>(number)); }
    bool StartArray() { return true; }
    bool EndArray(rapidjson::SizeType) { return true; }
    bool Default() { return false; }

private:
    std::vector<P>& points;
    double numbers[3] = {};
    std::size_t count = 0;
};

struct Events {
    template <class P> std::string write(const std::vector<P>& points) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        writer.StartArray();
        for (const P& p : points) {
            writer.Double(p.x);
            writer.Double(p.y);
            writer.Double(p.z);
        }
        writer.EndArray();
        return std::string(buffer.GetString(), buffer.GetSize());
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        points.clear();
        Collector<P> collector(points);
        rapidjson::Reader reader;
        rapidjson::StringStream stream(text.c_str());
        reader.Parse<rapidjson::kParseFullPrecisionFlag>(stream, collector);
    }
};

struct Document {
    template <class P> std::string write(const std::vector<P>& points) {
        rapidjson::Document document(rapidjson::kArrayType);
        auto& allocator = document.GetAllocator();
        document.Reserve(static_cast<rapidjson::SizeType>(3 * points.size()), allocator);
        for (const P& p : points)
            for (const double number : {double{p.x}, double{p.y}, double{p.z}})
                document.PushBack(number, allocator);
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        return std::string(buffer.GetString(), buffer.GetSize());
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        using T = decltype(P::x);
        rapidjson::Document document;
        document.Parse<rapidjson::kParseFullPrecisionFlag>(text.c_str(), text.size());
        const auto number = [&](rapidjson::SizeType i) {
            return static_cast<T>(document[i].GetDouble());
        };
        points.clear();
        points.reserve(document.Size() / 3);
        for (rapidjson::SizeType i = 0; i + 2 < document.Size(); i += 3)
            points.push_back({number(i), number(i + 1), number(i + 2)});
    }
};

BENCH_PEER("W2", "rapidjson_sax", Peer,
           [](bench::Run& run) { bench::points::runAll<Events>(run); });
BENCH_PEER("W2", "rapidjson_dom", Peer,
           [](bench::Run& run) { bench::points::runAll<Document>(run); });

}  // namespace
