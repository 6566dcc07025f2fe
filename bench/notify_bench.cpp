// What a change of a watched value costs, held against a value with plain vectors of callbacks.
#include <AttributeContainer/AttributeContainer.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/AllocationCount.h"
#include "support/RatioTable.h"

namespace ac = QOR::AttributeContainer;

namespace {

constexpr int setsPerIteration = 1024;

// The least code that does the work: callbacks before and after a store.
class PlainValue {
public:
    PlainValue(int numPost, bool hasVeto) : sums(static_cast<std::size_t>(numPost)) {
        for (double& sum : sums) post.push_back([&sum](double added) { sum += added; });
        if (hasVeto) pre.push_back([](double wanted) { return wanted >= 0; });
    }
    [[gnu::noinline]] void set(double wanted) {
        for (auto& ask : pre)
            if (!ask(wanted)) return;
        value = wanted;
        for (auto& tell : post) tell(value);
    }
    double sum() const {
        double total = 0;
        for (const double part : sums) total += part;
        return total;
    }

private:
    double value = 0;
    std::vector<std::function<bool(double)>> pre;
    std::vector<std::function<void(double)>> post;
    std::vector<double> sums;
};

class Summer : public ac::Observer {
public:
    Summer() : Observer(std::nullopt) {}
    std::string getName() const override { return "Summer"; }
    ac::Action::ExecReturn changedNotify(ac::Observable& observable, Initiator&) override {
        sum += static_cast<ac::Attr<double>&>(observable).get();
        return ac::Action::ExecDone;
    }
    double sum = 0;
};

class RefusesNegative : public ac::Observer {
public:
    RefusesNegative() : Observer(std::nullopt) {}
    std::string getName() const override { return "RefusesNegative"; }
    ac::Action::ExecReturn toChangeNotify(ac::Observable& observable, Initiator&) override {
        const auto info = observable.lookupNotifyInfo(typeid(ac::NewValueInfo<double>));
        if (!info || static_cast<ac::NewValueInfo<double>&>(*info).getValue() >= 0)
            return ac::Action::ExecDone;
        observable.addNotifyInfo(std::make_shared<ac::InfoFailed>(nullptr));
        return ac::Action::ExecRefused;
    }
};

class WatchedAttribute {
public:
    WatchedAttribute(int numPost, bool hasVeto)
        : attribute(std::make_shared<ac::CustAttr<double>>(std::nullopt)) {
        for (int i = 0; i < numPost; ++i) {
            summers.push_back(std::make_shared<Summer>());
            attribute->addObserver(*summers.back(), 1, 0, false);
        }
        if (!hasVeto) return;
        veto = std::make_shared<RefusesNegative>();
        attribute->addPreObserver(*veto, 1, 1, false);
    }
    void set(double wanted) { attribute->set(wanted); }
    double sum() const {
        double total = 0;
        for (const auto& summer : summers) total += summer->sum;
        return total;
    }

private:
    std::shared_ptr<ac::CustAttr<double>> attribute;
    std::vector<std::shared_ptr<Summer>> summers;
    std::shared_ptr<RefusesNegative> veto;
};

struct Setting {
    int numPost;
    bool hasVeto;
    double limit;  // the greatest ratio to the plain value
};
constexpr Setting settings[] = {{0, false, 6},  {1, false, 6}, {4, false, 6}, {16, false, 6},
                                {0, true, 30},  {1, true, 30}, {4, true, 30}};

std::string nameOf(const char* who, const Setting& setting) {
    return std::string(who) + "/post:" + std::to_string(setting.numPost) +
           (setting.hasVeto ? "/veto" : "");
}

template <class Value>
void change(benchmark::State& state, const Setting& setting) {
    Value value(setting.numPost, setting.hasVeto);
    value.set(3);
    if (setting.hasVeto) value.set(-5);
    value.set(3);
    if (value.sum() != 6.0 * setting.numPost) state.SkipWithError("an observer heard otherwise");
    const auto before = bench::allocationCount();
    for (auto _ : state)
        for (int i = 0; i < setsPerIteration; ++i) value.set(static_cast<double>(i));
    const auto allocations = static_cast<double>(bench::allocationCount() - before);
    const double sets = static_cast<double>(state.iterations()) * setsPerIteration;
    state.counters["allocs/set"] = allocations / sets;
    state.SetItemsProcessed(static_cast<std::int64_t>(sets));
}

void addBenchmark(const std::string& name, void (*run)(benchmark::State&, const Setting&),
                  const Setting& setting) {
    benchmark::RegisterBenchmark(name.c_str(), [=](auto& state) { run(state, setting); })
        ->Repetitions(5)
        ->MinTime(0.05);
}

}  // namespace

int main(int argc, char** argv) {
    for (const Setting& setting : settings) {
        addBenchmark(nameOf("plain", setting), change<PlainValue>, setting);
        addBenchmark(nameOf("attribute", setting), change<WatchedAttribute>, setting);
    }
    benchmark::Initialize(&argc, argv);
    bench::BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);

    std::vector<bench::Ratio> ratios;
    for (const Setting& setting : settings) {
        const double plain = times.seconds(nameOf("plain", setting));
        const std::string ours = nameOf("attribute", setting);
        ratios.push_back({"time of a set, " + ours + " : plain", times.seconds(ours) / plain,
                          bench::Ratio::AtMost, setting.limit});
    }
    const bool hold = bench::printRatios(ratios);
    bool allocatesNothing = true;
    for (const Setting& setting : settings) {
        const double allocations = times.counter(nameOf("attribute", setting), "allocs/set");
        const double allowed = setting.hasVeto ? 1 : 0;
        std::printf("allocations of a set, %s: %.3f, wanted at most %.0f%s\n",
                    nameOf("attribute", setting).c_str(), allocations, allowed,
                    allocations <= allowed ? "" : "   MISSED");
        allocatesNothing = allocatesNothing && allocations <= allowed;
    }
    return hold && allocatesNothing ? 0 : 1;
}
