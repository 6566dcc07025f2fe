// W2: our bytes through streams, by the plain way over the standard's operators and by least code.
#include "points/Points.h"
#include "support/FloorNumbers.h"
#include "support/MemoryBuffer.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace text = bench::text;
using bench::points::Back;

namespace {

constexpr int endOfText = std::char_traits<char>::eof();

/// Text of a point on the stack and one call of the buffer for it; reading takes what lies in the
/// get area in one piece and gives back what stands behind the list.
class Model {
public:
    template <class P> std::string write(const std::vector<P>& points) {
        bench::MemorySink sink;
        std::ostream stream(&sink);
        if (const std::ostream::sentry isReady{stream}; isReady) {
            sink.sputc('{');
            char element[1500] = " ";
            for (const P& p : points) {
                const auto size =
                    text::putTriple<text::Exactly>(element + 1, p.x, p.y, p.z) - element;
                if (sink.sputn(element, size) != size) stream.setstate(std::ios::badbit);
            }
            sink.sputn(" } ", 3);
        }
        return sink.take();
    }
    template <class P> void read(const std::string& from, std::vector<P>& points) {
        bench::MemorySource source(from);
        std::istream stream(&source);
        buffer = stream.rdbuf();
        at = end = chunk;
        points.clear();
        if (next() != endOfText) ++at;
        for (int c = next(); c != '}'; c = next()) {
            if (c == endOfText) {
                stream.setstate(std::ios::eofbit);
                break;
            }
            P p{};
            readNumber(p.x);
            readNumber(p.y);
            readNumber(p.z);
            points.push_back(p);
        }
        if (at < end) ++at;
        for (; end > at; --end) buffer->sungetc();
    }

private:
    /// Keeps what was not taken, which is the start of a number at the most.
    bool fill() {
        const auto kept = static_cast<std::size_t>(end - at);
        if (kept > 400 || buffer->sgetc() == endOfText) return false;
        std::memmove(chunk, at, kept);
        at = chunk;
        end = chunk + kept;
        const auto count = std::min<std::streamsize>(
            std::max<std::streamsize>(buffer->in_avail(), 1), chunk + sizeof chunk - end);
        const auto numRead = buffer->sgetn(end, count);
        end += numRead;
        return numRead > 0;
    }
    /// The next character that is not blank, not taken yet.
    int next() {
        while (true) {
            while (at < end && text::isBlank(*at)) ++at;
            if (at < end) return static_cast<unsigned char>(*at);
            if (!fill()) return endOfText;
        }
    }
    template <class T> void readNumber(T& number) {
        if (next() == endOfText) return;
        double found = 0;
        const char* behind = nullptr;
        const char* last = nullptr;
        do {  // again where the end of the chunk cuts the number
            behind = std::from_chars(at, end, found).ptr;
            for (last = behind; last < end && text::isOfNumber(*last);) ++last;
        } while (last == end && fill());
        if (last != behind) throw std::invalid_argument("Invalid number format");
        if (behind == at) return;
        at += behind - at;
        number = text::storedAs<T>(found);
    }

    std::streambuf* buffer = nullptr;
    char chunk[4096];
    char* at = chunk;
    char* end = chunk;
};

/// The logarithm for the digits, the operators to write, and peek, get and strtod to read.
struct Naive {
    template <class P> std::string write(const std::vector<P>& points) {
        std::ostringstream stream;
        stream << "{";
        for (const P& p : points) {
            const double numbers[] = {p.x, p.y, p.z};
            int digits = 0;
            for (const double number : numbers)
                digits = std::max(digits, text::digitsByLogarithm(number));
            stream.precision(digits);
            stream << ' ' << p.x << ' ' << p.y << ' ' << p.z;
            stream.precision(8);
        }
        stream << " } ";
        return std::move(stream).str();
    }
    template <class P> void read(const std::string& from, std::vector<P>& points) {
        std::istringstream stream(from);
        char c = 0;
        stream >> c;
        points.clear();
        while (stream.good()) {
            stream >> std::ws;
            if (!stream.get(c) || c == '}') break;
            stream.putback(c);
            P p{};
            readNumber(stream, p.x);
            readNumber(stream, p.y);
            readNumber(stream, p.z);
            points.push_back(p);
        }
    }

private:
    template <class T> static void readNumber(std::istream& stream, T& number) {
        stream >> std::ws;
        std::string digits;
        while (stream.good() && stream.peek() != endOfText &&
               text::isOfNumber(static_cast<char>(stream.peek())))
            digits += static_cast<char>(stream.get());
        if (!digits.empty()) number = text::storedAs<T>(std::strtod(digits.c_str(), nullptr));
    }
};

BENCH_PEER("W2", "model_stream", Model,
           [](bench::Run& run) { bench::points::runAll<Model>(run, {Back::FloatClamp}); });
BENCH_PEER("W2", "naive_stream", Peer,
           [](bench::Run& run) { bench::points::runAll<Naive>(run, {Back::FloatClamp}); });

}  // namespace
