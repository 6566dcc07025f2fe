// W1: Boost.Signals2, with its lock and without.
#include "notify/CallbackSums.h"
#include "notify/Notify.h"

#include <boost/signals2.hpp>

namespace signals = boost::signals2;

namespace {

struct AllAllow {
    using result_type = bool;
    template <class Iterator> bool operator()(Iterator first, Iterator last) const {
        for (; first != last; ++first)
            if (!*first) return false;
        return true;
    }
};

template <class Mutex> class Signalling {
public:
    Signalling(int numPost, bool hasVeto) : sums(numPost) {
        sums.connectEach([&](auto callback) { post.connect(callback); });
        if (hasVeto) pre.connect(bench::notify::isAllowed);
    }
    void set(double wanted) {
        if (!pre.empty() && !pre(wanted)) return;
        value = wanted;
        post(wanted);
    }
    double get() const { return value; }
    double sum() const { return sums.total(); }

private:
    template <class Signature, class Combiner>
    using Signal =
        typename signals::signal_type<Signature, signals::keywords::combiner_type<Combiner>,
                                      signals::keywords::mutex_type<Mutex>>::type;

    double value = 0;
    bench::notify::CallbackSums sums;
    Signal<bool(double), AllAllow> pre;
    Signal<void(double), signals::optional_last_value<void>> post;
};

BENCH_PEER("W1", "boost_signals2", Peer, [](bench::Run& run) {
    bench::notify::runAll<Signalling<signals::mutex>>(run, true, 0.5);
});
BENCH_PEER("W1", "boost_signals2_nomutex", Peer, [](bench::Run& run) {
    bench::notify::runAll<Signalling<signals::dummy_mutex>>(run, true, 0.5);
});

}  // namespace
