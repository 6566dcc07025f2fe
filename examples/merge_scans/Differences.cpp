#include "Differences.h"

#include <AttributeContainer/AttrContComparerKeepDiffs.h>

#include <iostream>
#include <set>
#include <utility>

namespace example {

namespace {

// The value of the attribute to which a path leads. The scans have the names of their places.
std::string valueAt(const model::AttrContainer& container, const std::string& path) {
    const auto slash = path.find('/');
    if (slash != std::string::npos) {
        const auto field = container.getField(path.substr(0, slash)).lock();
        return field ? valueAt(*field, path.substr(slash + 1)) : "-";
    }
    const auto attribute = container.getAttribute(path).lock();
    return attribute ? attribute->getValueString() : "-";
}

std::vector<std::string> mismatches(const model::AttrContainer& first,
                                    const model::AttrContainer& second) {
    const model::AttrContComparerKeepDiffs comparer;
    comparer.compare(first, second);
    std::vector<std::string> paths;
    for (std::uint64_t i = 0; i < comparer.getNumMismatches(); ++i)
        paths.push_back(comparer.getMismatch(i).value_or(""));
    return paths;
}

}  // namespace

std::vector<Difference> differencesOf(const model::AttrContainer& first,
                                      const model::AttrContainer& second) {
    // A field that only the second one has is seen where it stands behind the length of the first
    // one's list. So the other way round too: there it is a field of the first one, and always
    // seen.
    std::set<std::string> seen;
    std::vector<Difference> differences;
    for (const auto& paths : {mismatches(first, second), mismatches(second, first)})
        for (const std::string& path : paths)
            if (seen.insert(path).second)
                differences.push_back({path, valueAt(first, path), valueAt(second, path)});
    return differences;
}

void printDifferences(const std::vector<Difference>& differences) {
    for (const Difference& difference : differences)
        std::cout << "  " << column(difference.path, 32) << column(difference.first, 18)
                  << difference.second << '\n';
}

std::string column(std::string text, std::size_t width) {
    if (text.size() < width) text.resize(width, ' ');
    return text;
}

}  // namespace example
