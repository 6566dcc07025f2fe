// A value with two signals of Boost.Signals2, with the lock that they have by default.
#include <boost/signals2.hpp>

#include <cstddef>
#include <vector>

#include "notify/Contender.h"

namespace {

// Stops at the first refusal.
struct AllAgree {
    using result_type = bool;
    template <class Iterator> bool operator()(Iterator answer, Iterator last) const {
        for (; answer != last; ++answer)
            if (!*answer) return false;
        return true;
    }
};

class SignalledValue {
public:
    SignalledValue(int numPost, bool hasVeto) : sums(static_cast<std::size_t>(numPost)) {
        for (double& sum : sums) post.connect([&sum](double added) { sum += added; });
        if (hasVeto) pre.connect([](double wanted) { return wanted >= 0; });
    }
    void set(double wanted) {
        if (!pre.empty() && !pre(wanted)) return;
        value = wanted;
        post(value);
    }
    double sum() const {
        double total = 0;
        for (const double part : sums) total += part;
        return total;
    }

private:
    double value = 0;
    boost::signals2::signal<bool(double), AllAgree> pre;
    boost::signals2::signal<void(double)> post;
    std::vector<double> sums;
};

const bench::notify::Entry<SignalledValue> entry{"Boost.Signals2"};

}  // namespace
