#include <QOR/Time.h>

#include <chrono>

namespace QOR {

namespace {

template <class Clock> double secondsOf() {
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

double monotonicNow() {
    static const double shift =
        secondsOf<std::chrono::system_clock>() - secondsOf<std::chrono::steady_clock>();
    return secondsOf<std::chrono::steady_clock>() + shift;
}

}  // namespace

double Time::getCurrentTime() const { return monotonicNow(); }

double Time::calcCurrentTimeStatic() { return secondsOf<std::chrono::system_clock>(); }

double Time::realTimeToMonotonic(double realTime) {
    return realTime + (monotonicNow() - calcCurrentTimeStatic());
}

}  // namespace QOR
