// W1: the signals of sigc++, with members of trackable objects as receivers.
#include "notify/CallbackSums.h"
#include "notify/Notify.h"

#include <sigc++/sigc++.h>

#include <cstddef>
#include <vector>

namespace {

struct AllAllow {
    template <class Iterator> bool operator()(Iterator first, Iterator last) const {
        for (; first != last; ++first)
            if (!*first) return false;
        return true;
    }
};

struct Summer : sigc::trackable {
    void add(double value) { sum += value; }
    double sum = 0;
};

class Signalling {
public:
    Signalling(int numPost, bool hasVeto) : summers(static_cast<std::size_t>(numPost)) {
        for (Summer& summer : summers) post.connect(sigc::mem_fun(summer, &Summer::add));
        if (hasVeto) pre.connect(&bench::notify::isAllowed);
    }
    void set(double wanted) {
        if (!pre.empty() && !pre.emit(wanted)) return;
        value = wanted;
        post.emit(wanted);
    }
    double get() const { return value; }
    double sum() const {
        double total = 0;
        for (const Summer& summer : summers) total += summer.sum;
        return total;
    }

private:
    double value = 0;
    std::vector<Summer> summers;
    sigc::signal<bool(double)>::accumulated<AllAllow> pre;
    sigc::signal<void(double)> post;
};

BENCH_PEER("W1", "sigcpp", Peer, [](bench::Run& run) { bench::notify::runAll<Signalling>(run); });

}  // namespace
