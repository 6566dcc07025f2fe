#include <QOR/StatisticVal.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using QOR::StatisticVal;
using QOR::StatisticValLimits;
using QOR::StatisticValLimitsEx;
using QOR::SVec2d;

template <class Value> Value counting() {
    Value value;
    value.a = 1;
    value.b = 2;
    value.c = 3;
    value.d = 4;
    value.p = {5, 6};
    value.q = {7, 8};
    value.r = {9, 10};
    value.s = {11, 12};
    return value;
}

TEST(StatisticVal, ArePlainValues) {
    EXPECT_TRUE(std::is_trivially_copyable_v<StatisticVal<double>>);
    EXPECT_TRUE(std::is_trivially_copyable_v<StatisticValLimits<double>>);
    EXPECT_TRUE(std::is_trivially_copyable_v<StatisticValLimitsEx<double>>);
    EXPECT_EQ(sizeof(StatisticVal<double>), 4 * sizeof(double));
    EXPECT_EQ(sizeof(StatisticValLimits<double>), 12 * sizeof(double));
}

TEST(StatisticVal, IsZeroAtFirst) {
    const StatisticVal<double> value;

    EXPECT_EQ(value.a, 0.0);
    EXPECT_EQ(value.b, 0.0);
    EXPECT_EQ(value.c, 0.0);
    EXPECT_EQ(value.d, 0.0);
}

TEST(StatisticVal, TakesItsFourStatisticsInOrder) {
    const StatisticVal<double> value{1, 2, 3, 4};

    EXPECT_EQ(value.a, 1.0);
    EXPECT_EQ(value.b, 2.0);
    EXPECT_EQ(value.c, 3.0);
    EXPECT_EQ(value.d, 4.0);
}

TEST(StatisticVal, DiffersInAnyStatistic) {
    const StatisticVal<double> value{1, 2, 3, 4};

    EXPECT_TRUE(value == (StatisticVal<double>{1, 2, 3, 4}));
    EXPECT_TRUE(value != (StatisticVal<double>{0, 2, 3, 4}));
    EXPECT_TRUE(value != (StatisticVal<double>{1, 0, 3, 4}));
    EXPECT_TRUE(value != (StatisticVal<double>{1, 2, 0, 4}));
    EXPECT_TRUE(value != (StatisticVal<double>{1, 2, 3, 0}));
}

TEST(StatisticValLimits, HasTheStatisticsAndFourPairsAllZeroAtFirst) {
    const StatisticValLimits<double> value;

    EXPECT_TRUE((std::is_base_of_v<StatisticVal<double>, StatisticValLimits<double>>));
    EXPECT_EQ(value.a, 0.0);
    EXPECT_EQ(value.p, SVec2d<double>());
    EXPECT_EQ(value.q, SVec2d<double>());
    EXPECT_EQ(value.r, SVec2d<double>());
    EXPECT_EQ(value.s, SVec2d<double>());
}

TEST(StatisticValLimits, DiffersInAnyStatisticAndAnyLimit) {
    using Value = StatisticValLimits<double>;
    const auto value = counting<Value>();
    EXPECT_TRUE(value == counting<Value>());

    double StatisticVal<double>::*const statistics[] = {&Value::a, &Value::b, &Value::c, &Value::d};
    for (const auto member : statistics) {
        auto other = value;
        other.*member = 0;
        EXPECT_TRUE(value != other);
    }
    SVec2d<double> Value::*const limits[] = {&Value::p, &Value::q, &Value::r, &Value::s};
    for (const auto member : limits) {
        auto other = value;
        (other.*member).y = 0;
        EXPECT_TRUE(value != other);
    }
}

TEST(StatisticValLimitsEx, IsATypeOfItsOwnWithTheSameNumbers) {
    using Value = StatisticValLimitsEx<double>;
    EXPECT_TRUE((std::is_base_of_v<StatisticValLimits<double>, Value>));
    EXPECT_FALSE((std::is_same_v<StatisticValLimits<double>, Value>));

    auto other = counting<Value>();
    EXPECT_TRUE(other == counting<Value>());
    other.s.x = 0;
    EXPECT_TRUE(other != counting<Value>());
}

}  // namespace
