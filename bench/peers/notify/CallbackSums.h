// What the observers are where callbacks are connected: a sum for each, and a veto.
#pragma once

#include <cstddef>
#include <numeric>
#include <vector>

namespace bench::notify {

class CallbackSums {
public:
    explicit CallbackSums(int count) : sums(static_cast<std::size_t>(count)) {}
    CallbackSums(const CallbackSums&) = delete;
    CallbackSums& operator=(const CallbackSums&) = delete;

    /// Hands a callback for each sum to `connect`; it lasts as long as this object.
    template <class Connect> void connectEach(Connect&& connect) {
        for (double& sum : sums) connect([&sum](double value) { sum += value; });
    }
    std::vector<double>& each() { return sums; }
    double total() const { return std::accumulate(sums.begin(), sums.end(), 0.0); }

private:
    std::vector<double> sums;
};

/// The veto.
inline bool isAllowed(double wanted) { return wanted >= 0; }

}  // namespace bench::notify
