// Runs the peers of the chosen workloads in turn and prints what they recorded as lines of JSON.
#include "support/Data.h"
#include "support/Records.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <string>
#include <system_error>
#include <vector>

namespace {

using bench::Entry;

constexpr const char* usage =
    "usage: peers_bench [--workload REGEX] [--peer REGEX] [--reps N] [--budget SECONDS a peer]\n"
    "                   [--scale FACTOR] [--out FILE] [--list] [--cold]\n";

struct Options {
    std::string workloads = ".*", peers = ".*", output;
    int repetitions = 5;
    double budget = 12, scale = 1;
    bool isList = false, isCold = false;
};

bool parse(const std::vector<std::string>& arguments, Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& option = arguments[i];
        if (option == "--list" || option == "--cold") {
            (option == "--list" ? options.isList : options.isCold) = true;
            continue;
        }
        if (++i == arguments.size()) return false;
        const std::string& value = arguments[i];
        if (option == "--workload") options.workloads = value;
        else if (option == "--peer") options.peers = value;
        else if (option == "--out") options.output = value;
        else if (option == "--reps") options.repetitions = std::stoi(value);
        else if (option == "--budget") options.budget = std::stod(value);
        else if (option == "--scale") options.scale = std::stod(value);
        else return false;
    }
    return true;
}

std::vector<Entry*> select(const Options& options) {
    const std::regex workloads(options.workloads), peers(options.peers);
    std::vector<Entry*> selected;
    for (Entry& entry : bench::allEntries())
        if (std::regex_match(entry.workload, workloads) && std::regex_match(entry.peer, peers))
            selected.push_back(&entry);
    std::ranges::stable_sort(selected, [](const Entry* a, const Entry* b) {
        return a->workload != b->workload ? a->workload < b->workload : a->kind < b->kind;
    });
    return selected;
}

// Ahead of the children, so that none of them pays for it.
void prepareData(const std::string& workload, double scale) {
    if (workload == "W2") {
        bench::setPointCount(static_cast<std::size_t>(1'000'000 * scale));
        bench::scanPointsAsFloat();
        bench::turnedPoints();
    }
    if (workload == "W3") bench::treeData(scale < 1 ? 4 : 5);
    if (workload == "W4") bench::settingGroups();
}

// Repetition by repetition over all peers, so that a slow moment hits neighbours alike.
void runWorkload(const std::vector<Entry*>& entries, const Options& options) {
    prepareData(entries.front()->workload, options.scale);
    for (int i = 0; i < options.repetitions; ++i) {
        for (Entry* const entry : entries) {
            const bool isOverBudget = i > 0 && entry->secondsSpent * (i + 1) / i > options.budget;
            if (entry->hasFailed || isOverBudget) continue;
            const double start = bench::wallSeconds();
            bench::runInChild(*entry, i, options.scale, options.isCold);
            entry->secondsSpent += bench::wallSeconds() - start;
            std::fprintf(stderr, "%s %s repetition %d: %.2f s\n", entry->workload.c_str(),
                         entry->peer.c_str(), i, entry->secondsSpent);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parse({argv + 1, argv + argc}, options)) {
        std::fputs(usage, stderr);
        return 2;
    }
    auto entries = select(options);
    if (options.isList) {
        for (const Entry* const entry : entries)
            std::printf("%s %s (%s)\n", entry->workload.c_str(), entry->peer.c_str(),
                        bench::nameOf(entry->kind));
        return 0;
    }
    std::FILE* const output =
        options.output.empty() ? stdout : std::fopen(options.output.c_str(), "a");
    if (!output) {
        std::perror(options.output.c_str());
        return 1;
    }

    while (!entries.empty()) {
        const auto end = std::ranges::find_if(
            entries, [&](auto* entry) { return entry->workload != entries.front()->workload; });
        const std::vector<Entry*> workload(entries.begin(), end);
        entries.erase(entries.begin(), end);
        runWorkload(workload, options);
        for (const Entry* const entry : workload) bench::print(output, *entry);
    }
    if (output != stdout) std::fclose(output);
    std::error_code ignored;
    std::filesystem::remove_all(bench::scratchDir(), ignored);
}
