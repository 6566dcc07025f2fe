// W0: what a line of our text costs with its flush and without, to memory and to files.
#include "support/Harness.h"
#include "support/MemoryBuffer.h"

#include <QOR/BufferedSink.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

using bench::Run;

namespace {

constexpr int numLines = 1'000'000;
constexpr char line[] = "\nValue 123456789";
constexpr std::size_t lineSize = sizeof line - 1;
constexpr const char* value = "123456789";

/// Times a million lines.
template <class WriteLine> void runLines(Run& run, WriteLine&& writeLine) {
    const double seconds = run.time([&] {
        for (int i = 0; i < numLines; ++i) writeLine();
    });
    run.record("line", seconds / numLines * 1e9, "ns/line");
}

void plainMemory(Run& run) {
    std::string text(numLines * lineSize, '\0');
    char* to = text.data();
    runLines(run, [&] {
        std::memcpy(to, line, lineSize);
        to += lineSize;
        bench::clobberMemory();
    });
    bench::keep(to);
}

void intoBuffer(Run& run) {
    std::stringbuf buffer;
    runLines(run, [&] {
        buffer.sputn(line, 7);
        buffer.sputn(value, 9);
    });
}

template <class Buffer> void intoBufferWithFlush(Run& run) {
    Buffer buffer;
    runLines(run, [&] {
        buffer.sputc('\n');
        buffer.pubsync();
        buffer.sputn(line + 1, 6);
        buffer.sputn(value, 9);
    });
}

void inOnePieceWithFlush(Run& run) {
    std::stringbuf buffer;
    runLines(run, [&] {
        buffer.sputc('\n');
        buffer.pubsync();
        buffer.sputn(line + 1, lineSize - 1);
    });
}

void writeLine(std::ostream& stream, bool hasFlush) {
    if (hasFlush) stream << std::endl;
    else stream << '\n';
    stream << "Value " << value;
}

template <bool HasFlush> void intoStringStream(Run& run) {
    std::ostringstream stream;
    runLines(run, [&] { writeLine(stream, HasFlush); });
}

void intoFile(Run& run, const std::string& directory, bool hasFlush) {
    run.useWallClock();
    const std::string path = directory + "/lines.txt";
    {
        std::ofstream stream(path);
        runLines(run, [&] { writeLine(stream, hasFlush); });
    }
    unlink(path.c_str());
}

void systemCalls(Run& run) {
    run.useWallClock();
    const std::string path = bench::scratchDir() + "/raw.txt";
    const int file = open(path.c_str(), O_CREAT | O_WRONLY | O_TRUNC, 0600);
    runLines(run, [&] {
        if (write(file, line, lineSize) < 0) throw std::runtime_error("cannot write");
    });
    close(file);
    unlink(path.c_str());
}

void intoSink(Run& run) {
    run.useWallClock();
    const std::string path = bench::scratchDir() + "/sink.txt";
    {
        std::ofstream file(path);
        QOR::BufferedSink sink(*file.rdbuf());
        std::ostream stream(&sink);
        runLines(run, [&] { writeLine(stream, true); });
        if (!sink.finish()) throw std::runtime_error("cannot write");
    }
    unlink(path.c_str());
}

BENCH_PEER("W0", "memcpy", NotText, plainMemory);
BENCH_PEER("W0", "stringbuf_sputn", Floor, intoBuffer);
BENCH_PEER("W0", "stringbuf_sputn_sync", Model, intoBufferWithFlush<std::stringbuf>);
BENCH_PEER("W0", "stringbuf_one_sputn_sync", Model, inOnePieceWithFlush);
BENCH_PEER("W0", "own_streambuf_sync", Model, intoBufferWithFlush<bench::MemorySink>);
BENCH_PEER("W0", "ostringstream_nl", Peer, intoStringStream<false>);
BENCH_PEER("W0", "ostringstream_endl", Peer, intoStringStream<true>);
BENCH_PEER("W0", "ofstream_nl_disk", Peer,
           [](Run& run) { intoFile(run, bench::scratchDir(), false); });
BENCH_PEER("W0", "ofstream_endl_disk", Peer,
           [](Run& run) { intoFile(run, bench::scratchDir(), true); });
BENCH_PEER("W0", "ofstream_endl_tmpfs", Peer, [](Run& run) { intoFile(run, "/dev/shm", true); });
BENCH_PEER("W0", "ours_buffered_sink_disk", Ours, intoSink);
BENCH_PEER("W0", "write2_per_line_disk", Floor, systemCalls);

}  // namespace
