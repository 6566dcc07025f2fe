// W1 floor: a plain value and vectors of std::function.
#include <functional>
#include <memory>
#include <vector>

#include "notify/Notify.h"
using namespace bench;
namespace {
struct StdFunction {
    double value = 0;
    std::vector<std::function<bool(double)>> pre;
    std::vector<std::function<void(double)>> post;
    std::vector<double> sums;
    StdFunction(int k, bool veto) : sums(static_cast<std::size_t>(k)) {
        for (auto& s : sums) post.push_back([&s](double v) { s += v; });
        if (veto) pre.push_back([](double v) { return v >= 0; });
    }
    __attribute__((noinline)) void set(double v) {
        for (auto& f : pre)
            if (!f(v)) return;
        value = v;
        for (auto& f : post) f(v);
    }
    double get() const { return value; }
    double sum() const {
        double t = 0;
        for (double s : sums) t += s;
        return t;
    }
};
BENCH_PEER("W1", "std_function_vector", Floor, [](Run& run) { notify::runAll<StdFunction>(run); });
}  // namespace
