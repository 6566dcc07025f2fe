#include <sigc++/sigc++.h>

#include "notify/Notify.h"
using namespace bench;
namespace {
struct AllOf {
    template <class It> bool operator()(It a, It b) const {
        for (; a != b; ++a)
            if (!*a) return false;
        return true;
    }
};
struct Watcher : sigc::trackable {
    double sum = 0;
    void on(double v) { sum += v; }
};
struct Sigc {
    double value = 0;
    sigc::signal<bool(double)>::accumulated<AllOf> pre;
    sigc::signal<void(double)> post;
    std::vector<Watcher> w;
    Sigc(int k, bool veto) : w(std::size_t(k)) {
        for (auto& x : w) post.connect(sigc::mem_fun(x, &Watcher::on));
        if (veto) pre.connect([](double v) { return v >= 0; });
    }
    void set(double v) {
        if (!pre.empty() && !pre.emit(v)) return;
        value = v;
        post.emit(v);
    }
    double get() const { return value; }
    double sum() const {
        double t = 0;
        for (auto& x : w) t += x.sum;
        return t;
    }
};
BENCH_PEER("W1", "sigcpp", Peer, [](Run& run) { notify::runAll<Sigc>(run); });
}  // namespace
