// A calendar time, and the clocks.
#pragma once

#include <QOR/Export.h>

namespace QOR {

/// A calendar time in whole seconds, of no particular time zone. A plain value; at first all zero.
class QOR_API Time {
public:
    /// Sets the fields as they are given, with no test of their range. The last argument, the
    /// fraction of the second, is not kept.
    constexpr void setTime(int newYear, int newMonth, int newDay, int newHour, int newMin,
                           int newSec, int /*fraction*/) {
        year = newYear;
        month = newMonth;
        day = newDay;
        hour = newHour;
        min = newMin;
        sec = newSec;
    }

    constexpr int getYear() const { return year; }
    constexpr int getMonth() const { return month; }
    constexpr int getDay() const { return day; }
    constexpr int getHour() const { return hour; }
    constexpr int getMin() const { return min; }
    constexpr int getSec() const { return sec; }

    constexpr bool operator==(const Time&) const = default;

    /// The present time on the monotonic scale, in seconds. It does not depend on the fields, and
    /// never goes back.
    double getCurrentTime() const;

    /// The present real time, in seconds since the start of 1970 (UTC), by the system's clock.
    static double calcCurrentTimeStatic();

    /// Converts a real time to the monotonic scale, both in seconds. That scale agrees with the
    /// real time when the process first asks for it, and then runs on evenly even if the system's
    /// clock is set: the result tells apart times that such a setting would mix up.
    static double realTimeToMonotonic(double realTime);

private:
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int min = 0;
    int sec = 0;
};

}  // namespace QOR
