// W1: the floor, a value and vectors of callbacks.
#include "notify/CallbackSums.h"
#include "notify/Notify.h"

#include <functional>
#include <vector>

namespace {

class PlainValue {
public:
    PlainValue(int numPost, bool hasVeto) : sums(numPost) {
        sums.connectEach([&](auto callback) { post.push_back(callback); });
        if (hasVeto) pre.push_back(bench::notify::isAllowed);
    }
    [[gnu::noinline]] void set(double wanted) {
        for (auto& ask : pre)
            if (!ask(wanted)) return;
        value = wanted;
        for (auto& tell : post) tell(value);
    }
    double get() const { return value; }
    double sum() const { return sums.total(); }

private:
    double value = 0;
    std::vector<std::function<bool(double)>> pre;
    std::vector<std::function<void(double)>> post;
    bench::notify::CallbackSums sums;
};

BENCH_PEER("W1", "std_function_vector", Floor,
           [](bench::Run& run) { bench::notify::runAll<PlainValue>(run); });

}  // namespace
