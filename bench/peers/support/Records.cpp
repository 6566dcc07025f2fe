// What was recorded, as lines of JSON.
#include "support/Records.h"

#include <algorithm>
#include <utility>

namespace bench {

namespace {

bool isBetterWhenHigher(const std::string& unit) { return unit.ends_with("/s"); }

double medianOf(const std::vector<double>& sorted) {
    const auto middle = sorted.size() / 2;
    return sorted.size() % 2 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

std::string inQuotes(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    return result + '"';
}

std::string headOf(const Entry& entry, const std::string& metric) {
    return "{\"workload\":" + inQuotes(entry.workload) + ",\"peer\":" + inQuotes(entry.peer) +
           ",\"kind\":\"" + nameOf(entry.kind) + "\",\"metric\":" + inQuotes(metric) +
           ",\"value\":";
}

void printMetric(std::FILE* file, const Entry& entry, const std::string& metric,
                 const Samples& samples) {
    auto sorted = samples.values;
    std::ranges::sort(sorted);
    const double best = isBetterWhenHigher(samples.unit) ? sorted.back() : sorted.front();
    const int digits = samples.unit == "hash" ? 12 : 6;
    std::fprintf(file, "%s%.*g,\"unit\":%s,\"best\":%.*g,\"n\":%zu}\n",
                 headOf(entry, metric).c_str(), digits, medianOf(sorted),
                 inQuotes(samples.unit).c_str(), digits, best, sorted.size());
}

}  // namespace

const char* nameOf(Kind kind) {
    switch (kind) {
        case Kind::Floor: return "floor";
        case Kind::Model: return "model";
        case Kind::Peer: return "peer";
        case Kind::NotText: return "not-text";
        case Kind::Ours: return "ours";
    }
    return "";
}

void Entry::record(const std::string& metric, double value, const std::string& unit) {
    auto [place, isNew] = samples.try_emplace(metric);
    if (isNew) place->second = {unit, {}, samples.size()};
    place->second.values.push_back(value);
}
void Entry::verify(bool holds, const std::string& what) {
    auto [place, isNew] = verified.try_emplace(what, holds);
    if (!isNew) place->second = place->second && holds;
}
void Entry::note(const std::string& text) {
    if (std::ranges::find(notes, text) == notes.end()) notes.push_back(text);
}

void print(std::FILE* file, const Entry& entry) {
    std::vector<std::pair<std::string, Samples>> metrics(entry.samples.begin(),
                                                         entry.samples.end());
    std::ranges::sort(metrics, {}, [](const auto& metric) { return metric.second.order; });
    for (const auto& [metric, samples] : metrics) printMetric(file, entry, metric, samples);
    for (const auto& [what, holds] : entry.verified)
        std::fprintf(file, "%s%d,\"unit\":\"bool\"}\n", headOf(entry, "verified: " + what).c_str(),
                     holds ? 1 : 0);
    for (const std::string& text : entry.notes)
        std::fprintf(file, "%s%s,\"unit\":\"text\"}\n", headOf(entry, "note").c_str(),
                     inQuotes(text).c_str());
    std::fflush(file);
}

}  // namespace bench
