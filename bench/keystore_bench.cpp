// Settings in the key store: 2,000 containers of five texts are laid into a store by the visitors
// and taken out again, in memory and in a file, beside SQLite with the same texts by hand.
#include <AttributeContainer/AttributeContainer.h>

#include <QOR/KeyStoreSqlite.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/RatioTable.h"
#include "support/SettingsPeer.h"

namespace ac = QOR::AttributeContainer;
namespace keystore = QOR::keystore;

namespace {

constexpr int numSections = 200;
constexpr int groupsPerSection = 10;
constexpr int numGroups = numSections * groupsPerSection;
constexpr int textsPerGroup = 5;
constexpr int numValues = numGroups * textsPerGroup;
constexpr unsigned allLevels = std::numeric_limits<unsigned>::max();

/// Five texts: the name is the first of them.
class Group : public ac::ContainerClass<Group, ac::AttrContainer, "Group"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, std::string, Transformation);
    QOR_ATTRIBUTE(2, std::string, Gain);
    QOR_ATTRIBUTE(3, std::string, Comment);
    QOR_ATTRIBUTE(4, std::string, Uuid);
};

std::string sectionName(int section) { return "Section_" + std::to_string(1000 + section); }

std::shared_ptr<ac::AttrContainer> makeTree() {
    auto top = ac::AttrContainer::create();
    for (int section = 0; section < numSections; ++section) {
        const auto groups = ac::AttrContainer::create();
        for (int i = 0; i < groupsPerSection; ++i) {
            const auto group = Group::create();
            const auto number = std::to_string(section * groupsPerSection + i);
            group->name("station_" + number);
            group->Transformation(number + ".25 -17.5 3.125 0.5 -41.75 " + number);
            group->Gain("3." + number);
            group->Comment("a hall with pillars and a roof of glass");
            group->Uuid("0f8fad5b-d9cb-469f-a165-70867728" + std::to_string(1000 + i));
            groups->addField(group, "Sub_" + std::to_string(i), ac::AddFlags::SkipNameTest);
        }
        top->addField(groups, sectionName(section), ac::AddFlags::SkipNameTest);
    }
    return top;
}

/// A folder for the files of one run.
class Folder {
public:
    Folder()
        : path(std::filesystem::temp_directory_path() /
               ("qor_bench_" +
                std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()))) {
        std::filesystem::create_directory(path);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { std::filesystem::remove_all(path); }
    std::string file() const { return (path / "settings.db").string(); }

private:
    std::filesystem::path path;
};

/// Files are waited for, and only the time on the wall tells of that.
double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Rates {
    double write = 0, read = 0;  // values a second
    bool isWhole = false;
};

std::shared_ptr<ac::RegKeys> keysOf(keystore::Store& store) {
    return std::make_shared<ac::RegKeys>("Settings", store.root(), false);
}

void store(keystore::Store& store, ac::AttrContainer& tree, bool isGrouped) {
    std::optional<keystore::Transaction> transaction;
    if (isGrouped) transaction.emplace(store);
    ac::AttrWriteRegistry visitor(keysOf(store), 0, allLevels);
    tree.attributeVisitor(visitor, true);
    if (transaction) transaction->commit();
}

int load(keystore::Store& store, ac::AttrContainer& tree, bool isGrouped) {
    std::optional<keystore::Transaction> transaction;
    if (isGrouped) transaction.emplace(store);
    ac::AttrReadRegistry visitor(keysOf(store), false, 0, allLevels);
    tree.attributeVisitor(visitor, true);
    return visitor.getNumRead();
}

constexpr int numRead = numValues + numSections + 1;  // the names of the levels above too

Rates runMemory() {
    const auto tree = makeTree();
    const auto memory = keystore::makeMemoryStore();
    Rates rates;
    rates.write = numValues / secondsOf([&] { store(*memory, *tree, false); });
    int found = 0;
    rates.read = numValues / secondsOf([&] { found = load(*memory, *tree, false); });
    rates.isWhole = found == numRead;
    return rates;
}

Rates runFile(bool isGrouped) {
    const auto tree = makeTree();
    const Folder folder;
    auto opened = keystore::openSqliteStore(folder.file());
    Rates rates;
    rates.write = numValues / secondsOf([&] { store(*opened, *tree, isGrouped); });
    int found = 0;
    rates.read = numValues / secondsOf([&] {
                     opened.reset();
                     opened = keystore::openSqliteStore(folder.file());
                     found = load(*opened, *tree, isGrouped);
                 });
    rates.isWhole = found == numRead;
    return rates;
}

struct Text {
    std::string group, name, value;
};

std::vector<Text> textsOf(ac::AttrContainer& tree) {
    std::vector<Text> texts;
    for (int section = 0; section < numSections; ++section)
        for (int i = 0; i < groupsPerSection; ++i) {
            const auto sub = "Sub_" + std::to_string(i);
            const auto group = tree.getField(sectionName(section)).lock()->getField(sub).lock();
            for (std::uint64_t token = 0; token < textsPerGroup; ++token) {
                const auto attribute = group->getAttribute(token).lock();
                texts.push_back({sectionName(section) + "/" + sub, attribute->getName(),
                                 attribute->getValueString()});
            }
        }
    return texts;
}

Rates runPeer(bool isGrouped) {
    const auto mode = isGrouped ? bench::SettingsPeer::Grouped : bench::SettingsPeer::ValueByValue;
    const auto texts = textsOf(*makeTree());
    const Folder folder;
    auto peer = std::make_unique<bench::SettingsPeer>(folder.file(), mode);
    Rates rates;
    rates.write = numValues / secondsOf([&] {
                      if (isGrouped) peer->run("BEGIN");
                      for (const Text& text : texts) peer->set(text.group, text.name, text.value);
                      if (isGrouped) peer->run("COMMIT");
                  });
    rates.isWhole = true;
    rates.read = numValues / secondsOf([&] {
                     peer.reset();
                     peer = std::make_unique<bench::SettingsPeer>(folder.file(), mode);
                     for (const Text& text : texts)
                         if (peer->get(text.group, text.name) != text.value) rates.isWhole = false;
                 });
    return rates;
}

// The best of all runs, for writing and reading apart: everything else only takes time.
using BestRates = std::map<std::string, Rates>;

void run(benchmark::State& state, const std::function<Rates()>& work, Rates& best) {
    for (auto _ : state) {
        const Rates rates = work();
        if (!rates.isWhole) state.SkipWithError("the settings did not come back");
        state.counters["write/s"] = rates.write;
        state.counters["read/s"] = rates.read;
        best.write = std::max(best.write, rates.write);
        best.read = std::max(best.read, rates.read);
    }
}

void addRatio(std::vector<bench::Ratio>& ratios, BestRates& best, const std::string& kind) {
    const Rates& ours = best["file/" + kind];
    const Rates& peer = best["peer/" + kind];
    ratios.push_back({"rate of writing, " + kind + " : SQLite by hand", ours.write / peer.write,
                      bench::Ratio::AtLeast, 0.5});
    ratios.push_back({"rate of reading, " + kind + " : SQLite by hand", ours.read / peer.read,
                      bench::Ratio::AtLeast, 0.5});
}

}  // namespace

int main(int argc, char** argv) {
    const std::pair<const char*, std::function<Rates()>> works[] = {
        {"memory", runMemory},
        {"file/grouped", [] { return runFile(true); }},
        {"peer/grouped", [] { return runPeer(true); }},
        {"file/by_value", [] { return runFile(false); }},
        {"peer/by_value", [] { return runPeer(false); }},
    };
    BestRates best;
    for (const auto& [name, work] : works)
        benchmark::RegisterBenchmark(
            name, [&, name = name](auto& state) { run(state, work, best[name]); })
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(7);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();

    std::vector<bench::Ratio> ratios;
    addRatio(ratios, best, "grouped");
    addRatio(ratios, best, "by_value");
    ratios.push_back({"millions of writes a second, memory", best["memory"].write / 1e6,
                      bench::Ratio::AtLeast, 1});
    return bench::printRatios(ratios) ? 0 : 1;
}
