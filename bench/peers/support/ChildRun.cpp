// Repetitions in child processes; a pipe brings back what they record, a line for each.
#include "support/Records.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <utility>

namespace bench {

namespace {

// Page faults are uneven on shared machines, and what they cost follows from the bytes that a peer
// needs, which are measured. So the child touches the pages first and keeps them.
void warmHeap(const std::string& workload) {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, 0x7fff'ffff);
    const std::size_t megabytes = workload == "W3" ? 1400 : workload == "W2" ? 700 : 64;
    void* const memory = std::malloc(megabytes << 20);
    if (!memory) return;
    std::memset(memory, 1, megabytes << 20);
    asm volatile("" : : "r"(memory) : "memory");
    std::free(memory);
}

void send(std::FILE* pipe, const Entry& entry) {
    for (const auto& [metric, samples] : entry.samples)
        for (const double value : samples.values)
            std::fprintf(pipe, "S\t%zu\t%s\t%s\t%.17g\n", samples.order, metric.c_str(),
                         samples.unit.c_str(), value);
    for (const auto& [what, holds] : entry.verified)
        std::fprintf(pipe, "V\t%d\t%s\n", holds ? 1 : 0, what.c_str());
    for (const std::string& text : entry.notes) std::fprintf(pipe, "N\t%s\n", text.c_str());
}

[[noreturn]] void beChild(Entry& entry, int repetition, double scale, bool isCold, int output) {
    entry.samples.clear();
    entry.verified.clear();
    entry.notes.clear();
    if (!isCold) warmHeap(entry.workload);
    Run run(entry.workload, entry.peer, repetition, scale);
    try {
        entry.function(run);
    } catch (const std::exception& failure) {
        run.note(std::string("failed: ") + failure.what());
    }
    std::FILE* const pipe = fdopen(output, "w");
    send(pipe, entry);
    std::fclose(pipe);
    _exit(0);
}

std::vector<std::string> splitAtTabs(std::string line) {
    if (line.ends_with('\n')) line.pop_back();
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (auto end = line.find('\t'); end != std::string::npos; end = line.find('\t', start)) {
        parts.push_back(line.substr(start, end - start));
        start = end + 1;
    }
    parts.push_back(line.substr(start));
    return parts;
}

void receive(std::FILE* pipe, Entry& entry) {
    std::map<std::size_t, std::vector<std::string>> samples;  // by order
    char* line = nullptr;
    std::size_t capacity = 0;
    while (getline(&line, &capacity, pipe) > 0) {
        const auto parts = splitAtTabs(line);
        if (parts[0] == "S" && parts.size() == 5) samples[std::stoul(parts[1])] = parts;
        if (parts[0] == "V" && parts.size() == 3) entry.verify(parts[1] == "1", parts[2]);
        if (parts[0] != "N" || parts.size() != 2) continue;
        entry.note(parts[1]);
        if (parts[1].starts_with("failed: ")) entry.hasFailed = true;
    }
    std::free(line);
    for (const auto& [order, parts] : samples)
        entry.record(parts[2], std::stod(parts[4]), parts[3]);
}

}  // namespace

void runInChild(Entry& entry, int repetition, double scale, bool isCold) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    scratchDir();  // the parent's, which removes it
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        beChild(entry, repetition, scale, isCold, ends[1]);
    }
    close(ends[1]);
    std::FILE* const input = fdopen(ends[0], "r");
    receive(input, entry);
    std::fclose(input);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return;
    entry.hasFailed = true;
    entry.note(WIFSIGNALED(status) ? "failed: signal " + std::to_string(WTERMSIG(status))
                                   : "failed: exit " + std::to_string(WEXITSTATUS(status)));
}

}  // namespace bench
