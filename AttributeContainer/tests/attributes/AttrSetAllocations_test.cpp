// What a change costs in memory where nobody is asked.
#include <AttributeContainer/Attr.h>

#include "support/AllocationCount.h"
#include "support/FreeAttribute.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// How many allocations some changes make, behind a first one that may set things up.
template <class Change>
std::uint64_t allocationsOf(const Change& change) {
    change(0.5);
    const std::uint64_t before = bench::allocationCount();
    for (int i = 0; i < 100; ++i) change(i);
    return bench::allocationCount() - before;
}

}  // namespace

TEST(AttrSetAllocations, AreNoneWhereNobodyObserves) {
    const auto attribute = attributeOf(0.0);
    EXPECT_EQ(allocationsOf([&](double value) { attribute->set(value); }), 0u);
}

TEST(AttrSetAllocations, AreNoneWhereObserversAreOnlyTold) {
    const auto attribute = attributeOf(0.0);
    const auto counter = std::make_shared<Counter>();
    const auto initiator = std::make_shared<Counter>();
    attribute->addObserver(*counter, 5, tellAction, true);
    ResultPromise noPre;
    ResultPromise noPost;

    EXPECT_EQ(allocationsOf([&](double value) { attribute->set(value); }), 0u);
    EXPECT_EQ(allocationsOf([&](double value) { attribute->set(value, initiator, noPre, noPost); }),
              0u);
    EXPECT_EQ(counter->told, 202);
}

TEST(AttrSetAllocations, AreNoneWhileObservingIsBlocked) {
    const auto attribute = attributeOf(0.0);
    const auto counter = watch(*attribute);
    const BlockObserver block;

    EXPECT_EQ(allocationsOf([&](double value) { attribute->set(value); }), 0u);
}

TEST(AttrSetAllocations, AreNoneWhereASmallNewValueIsShownToThoseWhoAreAsked) {
    const auto attribute = attributeOf(0.0);
    const auto counter = watch(*attribute);

    EXPECT_EQ(allocationsOf([&](double value) { attribute->set(value); }), 0u);
    EXPECT_EQ(counter->asked, 101);
}

TEST(AttrSetAllocations, AreOneAChangeWhereALargeNewValueIsShownToThoseWhoAreAsked) {
    const auto attribute = attributeOf(QOR::Mat4d<double>());
    const auto counter = watch(*attribute);

    EXPECT_EQ(allocationsOf([&](double) { attribute->set(QOR::Mat4d<double>()); }), 100u);
    EXPECT_EQ(counter->asked, 101);
}
