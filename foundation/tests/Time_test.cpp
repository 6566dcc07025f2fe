#include <QOR/Time.h>

#include <gtest/gtest.h>

#include <chrono>

namespace {

using QOR::Time;

TEST(Time, IsAllZeroAtFirst) {
    const Time time;

    EXPECT_EQ(time.getYear(), 0);
    EXPECT_EQ(time.getMonth(), 0);
    EXPECT_EQ(time.getDay(), 0);
    EXPECT_EQ(time.getHour(), 0);
    EXPECT_EQ(time.getMin(), 0);
    EXPECT_EQ(time.getSec(), 0);
}

TEST(Time, TellsTheFieldsThatWereSet) {
    Time time;

    time.setTime(2021, 12, 31, 23, 59, 58, 0);

    EXPECT_EQ(time.getYear(), 2021);
    EXPECT_EQ(time.getMonth(), 12);
    EXPECT_EQ(time.getDay(), 31);
    EXPECT_EQ(time.getHour(), 23);
    EXPECT_EQ(time.getMin(), 59);
    EXPECT_EQ(time.getSec(), 58);
}

TEST(Time, KeepsFieldsOutOfTheirRangeAsTheyAre) {
    Time time;

    time.setTime(-5, 13, 32, 24, 60, 99, 0);

    EXPECT_EQ(time.getYear(), -5);
    EXPECT_EQ(time.getMonth(), 13);
    EXPECT_EQ(time.getDay(), 32);
    EXPECT_EQ(time.getHour(), 24);
    EXPECT_EQ(time.getMin(), 60);
    EXPECT_EQ(time.getSec(), 99);
}

TEST(Time, IsEqualIfAllSixFieldsAre) {
    Time first;
    first.setTime(2021, 1, 2, 3, 4, 5, 0);
    const auto differing = [](int year, int month, int day, int hour, int min, int sec) {
        Time time;
        time.setTime(year, month, day, hour, min, sec, 0);
        return time;
    };

    EXPECT_EQ(first, differing(2021, 1, 2, 3, 4, 5));
    EXPECT_NE(first, differing(2022, 1, 2, 3, 4, 5));
    EXPECT_NE(first, differing(2021, 2, 2, 3, 4, 5));
    EXPECT_NE(first, differing(2021, 1, 3, 3, 4, 5));
    EXPECT_NE(first, differing(2021, 1, 2, 4, 4, 5));
    EXPECT_NE(first, differing(2021, 1, 2, 3, 5, 5));
    EXPECT_NE(first, differing(2021, 1, 2, 3, 4, 6));
}

TEST(Time, RealTimeIsThatOfTheSystemsClock) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();

    EXPECT_NEAR(Time::calcCurrentTimeStatic(), std::chrono::duration<double>(now).count(), 5.0);
}

TEST(Time, CurrentTimeNeverGoesBack) {
    const Time time;
    double former = time.getCurrentTime();
    for (int i = 0; i < 1000; ++i) {
        const double present = time.getCurrentTime();
        EXPECT_GE(present, former);
        former = present;
    }
}

TEST(Time, PresentRealTimeIsThePresentTimeOnTheMonotonicScale) {
    const double converted = Time::realTimeToMonotonic(Time::calcCurrentTimeStatic());

    EXPECT_NEAR(converted, Time().getCurrentTime(), 1.0);
}

TEST(Time, MonotonicScaleKeepsDistances) {
    const double real = Time::calcCurrentTimeStatic();

    const double early = Time::realTimeToMonotonic(real - 3600.0);
    const double late = Time::realTimeToMonotonic(real);

    EXPECT_NEAR(late - early, 3600.0, 1.0);
}

}  // namespace
