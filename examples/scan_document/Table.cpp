#include "Table.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace example {

namespace {

constexpr std::size_t numShown = 10;  // of the differences: where all is different, more say little

void printRow(const std::string& label, const std::string& value, const std::string& more = {}) {
    std::cout << label << std::string(12 - label.size(), ' ')
              << std::string(14 - std::min<std::size_t>(value.size(), 14), ' ') << value << more
              << '\n';
}

// With a comma ahead of every three digits.
std::string grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, 1, ',');
    return text;
}

std::string fixed(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.1f", number);
    return text;
}

std::string milliseconds(Seconds time) { return fixed(time.count() * 1e3) + " ms"; }

std::string rate(std::uint64_t bytes, Seconds time) {
    if (time.count() <= 0) return {};
    return "   " + fixed(static_cast<double>(bytes) / time.count() / 1e6) + " MB/s";
}

void printDifferences(const Summary& summary) {
    const auto& differences = summary.comparison.differences;
    std::cout << "not equal:\n";
    for (std::size_t i = 0; i < std::min(differences.size(), numShown); ++i)
        std::cout << "  " << differences[i] << '\n';
    if (differences.size() > numShown)
        std::cout << "  and " << differences.size() - numShown << " more\n";
    if (!summary.isSameText) std::cout << "  the second tree, written again, gives other bytes\n";
}

}  // namespace

void printTable(const Summary& summary) {
    const Comparison& comparison = summary.comparison;
    std::cout << '\n';
    printRow("objects", grouped(comparison.numObjects));
    printRow("fields", grouped(comparison.numFields));
    printRow("attributes", grouped(comparison.numAttributes));
    printRow("points", grouped(summary.numPoints));
    if (summary.numPoses > 0) printRow("poses", grouped(summary.numPoses));
    printRow("bytes", grouped(summary.numBytes));
    printRow("build", milliseconds(summary.build));
    printRow("write", milliseconds(summary.write), rate(summary.numBytes, summary.write));
    printRow("read", milliseconds(summary.read), rate(summary.numBytes, summary.read));
    printRow("compare", milliseconds(summary.compare));
    if (summary.isEqual()) {
        printRow("result", "equal");
    } else {
        printDifferences(summary);
    }
}

}  // namespace example
