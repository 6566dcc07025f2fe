// The workload W3: a tree of 111,111 objects, and one parent with many children.
#pragma once

#include "support/Data.h"
#include "support/Harness.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace bench::tree {

struct Options {
    bool hasText = true;
    bool hasWide = true;
    double secondsForWide = 5;  // where growth is quadratic, larger parents are left out
};

/// Adds children of new names to one parent, which must refuse a name that is taken. `Wide` has
///     bool add(const std::string& name);
template <class Wide> void runWide(Run& run, double secondsForWide) {
    constexpr std::size_t sizes[] = {10'000, 20'000, 40'000, 80'000};
    double firstSeconds = 0, lastSeconds = 0;
    std::size_t lastSize = 0;
    for (const std::size_t size : sizes) {
        if (lastSeconds * 4 > secondsForWide) {
            run.note("wide: " + std::to_string(size) + " left out, quadratic growth");
            break;
        }
        const auto names = wideNames(size);
        const auto parent = std::make_unique<Wide>();
        bool isRight = true;
        lastSeconds = run.time([&] {
            for (const std::string& name : names) isRight = parent->add(name) && isRight;
        });
        isRight = isRight && !parent->add(names[size / 2]);
        run.verify(isRight, "wide: every new name taken, a used one refused");
        run.record("wide_" + std::to_string(size), lastSeconds / static_cast<double>(size) * 1e9,
                   "ns/child");
        if (lastSize == 0) firstSeconds = lastSeconds;
        lastSize = size;
    }
    if (lastSize == sizes[0]) return;
    const double times = static_cast<double>(lastSize) / static_cast<double>(sizes[0]);
    run.record("wide_growth", std::log2(lastSeconds / firstSeconds) / std::log2(times), "exponent");
}

template <class Tree> void runText(Run& run, const Tree& tree, const TreeData& data) {
    const double size = static_cast<double>(data.nodes.size());
    std::string text;
    const double writing = run.time([&] { text = tree.write(); });
    const double megabytes = static_cast<double>(text.size()) / 1e6;
    run.record("write", writing / size * 1e9, "ns/object");
    run.record("write_MB", megabytes / writing, "MB/s");
    run.record("text", static_cast<double>(text.size()) / size, "B/object");
    if (run.isFirst()) run.record("text_hash_low32", textHash(text), "hash");
    const auto received = std::make_unique<Tree>();
    const double reading = run.time([&] { received->read(text); });
    run.record("read", reading / size * 1e9, "ns/object");
    run.record("read_MB", megabytes / reading, "MB/s");
    run.verify(received->countSum() == data.countSum && tree.equal(*received),
               "text comes back equal");
}

template <class Tree> void runCopy(Run& run, const Tree& tree, double size) {
    std::unique_ptr<Tree> copy;
    const double copying = run.time([&] { copy = tree.copy(); });
    run.record("copy", copying / size * 1e9, "ns/object");
    bool isEqual = false;
    const double comparing = run.time([&] { isEqual = tree.equal(*copy); });
    run.record("compare", comparing / size * 1e9, "ns/object");
    run.verify(isEqual, "copy is equal");
    copy->poke();
    run.verify(!tree.equal(*copy), "a change of one value of one leaf is seen");
    const double destroying = run.time([&] { copy.reset(); });
    run.record("destroy", destroying / size * 1e9, "ns/object");
}

/// Runs everything. `Tree` has a `Wide` and
///     void build(const TreeData&);
///     std::string write() const;
///     void read(const std::string&);
///     std::unique_ptr<Tree> copy() const;
///     bool equal(const Tree&) const;
///     void poke();                             // changes one value of the last leaf
///     int lookup(std::string_view path) const; // the object's count, 0 where there is none
///     std::int64_t countSum() const;
template <class Tree> void runAll(Run& run, const Options& options = {}) {
    const TreeData& data = treeData(run.scale() < 1 ? 4 : 5);
    const double size = static_cast<double>(data.nodes.size());
    const auto heapBefore = heapBytes();
    const auto allocationsBefore = allocationCount();
    auto tree = std::make_unique<Tree>();
    const double building = run.time([&] { tree->build(data); });
    const double numAllocations = static_cast<double>(allocationCount() - allocationsBefore);
    const double heap = static_cast<double>(heapBytes() - heapBefore);
    run.record("build", building / size * 1e9, "ns/object");
    run.record("allocs", numAllocations / size, "new/object");
    run.record("heap", heap / size, "B/object");
    run.verify(tree->countSum() == data.countSum, "built tree holds all objects");

    if (options.hasText) runText(run, *tree, data);
    runCopy(run, *tree, size);

    std::int64_t sum = 0;
    const double finding = run.time([&] {
        for (const std::string& path : data.paths) sum += tree->lookup(path);
    });
    run.record("lookup", finding / static_cast<double>(data.paths.size()) * 1e9, "ns/path");
    run.verify(sum == data.pathCountSum, "paths lead to the right objects");
    tree.reset();
    if (options.hasWide) runWide<typename Tree::Wide>(run, options.secondsForWide);
}

/// Takes the next name off a path such as "/a/b/c". \return false at its end.
inline bool nextSegment(std::string_view& path, std::string_view& segment) {
    while (!path.empty() && path[0] == '/') path.remove_prefix(1);
    if (path.empty()) return false;
    const auto end = path.find('/');
    segment = path.substr(0, end);
    path.remove_prefix(end == std::string_view::npos ? path.size() : end);
    return true;
}

}  // namespace bench::tree
