#include <boost/signals2.hpp>

#include "notify/Notify.h"
using namespace bench;
namespace {
struct AllOf {
    using result_type = bool;
    template <class It> bool operator()(It a, It b) const {
        for (; a != b; ++a)
            if (!*a) return false;
        return true;
    }
};
template <class Mutex> struct Signals {
    template <class S, class Comb>
    using Sig =
        typename boost::signals2::signal_type<S, boost::signals2::keywords::combiner_type<Comb>,
                                              boost::signals2::keywords::mutex_type<Mutex>>::type;
    double value = 0;
    Sig<bool(double), AllOf> pre;
    Sig<void(double), boost::signals2::optional_last_value<void>> post;
    std::vector<double> sums;
    Signals(int k, bool veto) : sums(std::size_t(k)) {
        for (auto& s : sums) post.connect([&s](double v) { s += v; });
        if (veto) pre.connect([](double v) { return v >= 0; });
    }
    void set(double v) {
        if (!pre.empty() && !pre(v)) return;
        value = v;
        post(v);
    }
    double get() const { return value; }
    double sum() const {
        double t = 0;
        for (double s : sums) t += s;
        return t;
    }
};
BENCH_PEER("W1", "boost_signals2", Peer,
           [](Run& run) { notify::runAll<Signals<boost::signals2::mutex>>(run, true, 0.5); });
BENCH_PEER("W1", "boost_signals2_nomutex", Peer,
           [](Run& run) { notify::runAll<Signals<boost::signals2::dummy_mutex>>(run, true, 0.5); });
}  // namespace
