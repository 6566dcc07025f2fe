#include "persistence/ReadDepth.h"

#include <gtest/gtest.h>

#include <thread>

using namespace QOR::AttributeContainer;

namespace {

// How many levels the context accepts from here down, looking no further than to `limit`.
int acceptedLevels(const ReadContextBase& context, int limit) {
    const ReadDepth level(context);
    if (limit == 0 || level.isTooDeep()) return 0;
    return 1 + acceptedLevels(context, limit - 1);
}

}  // namespace

TEST(ReadDepth, AcceptsAThousandLevelsByDefault) {
    EXPECT_EQ(acceptedLevels(ReadContextBase(), 5000), 1000);
}

TEST(ReadDepth, AcceptsAsManyLevelsAsTheContextSays) {
    ReadContextBase context;
    context.setMaxDepth(3);
    EXPECT_EQ(acceptedLevels(context, 10), 3);
    context.setMaxDepth(0);
    EXPECT_EQ(acceptedLevels(context, 10), 0);
}

TEST(ReadDepth, CountsOnlyTheLevelsThatAreOpen) {
    ReadContextBase context;
    context.setMaxDepth(1);
    for (int i = 0; i < 3; ++i) {
        const ReadDepth level(context);
        EXPECT_FALSE(level.isTooDeep());
        const ReadDepth below(context);
        EXPECT_TRUE(below.isTooDeep());
    }
}

TEST(ReadDepth, CountsEachThreadForItself) {
    ReadContextBase context;
    context.setMaxDepth(1);
    const ReadDepth level(context);
    bool tooDeepElsewhere = true;

    std::thread([&] { tooDeepElsewhere = ReadDepth(context).isTooDeep(); }).join();

    EXPECT_FALSE(tooDeepElsewhere);
}
