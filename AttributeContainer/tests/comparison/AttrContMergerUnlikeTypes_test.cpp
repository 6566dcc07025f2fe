// A merge where an attribute has one type in the source and another in the target.
#include <AttributeContainer/AttrContMerger.h>

#include "support/Containers.h"
#include "support/MergeResults.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// An attribute "Gain" of type `To` in the target, which takes over one of type `From`.
template <class To, class From> struct GainPair {
    GainPair(const To& to, const From& from) {
        gain = addCustom(*target, "Gain", to);
        addCustom(*source, "Gain", from);
    }
    Counters merge(unsigned flags) const { return mergeResult(*target, *source, flags); }
    /// How often an observer is asked and told in a merge.
    std::pair<int, int> calls(unsigned flags) const {
        const auto observer = watch(*gain);
        merge(flags);
        return {observer->asked, observer->told};
    }
    /// Whether an observer can keep the value as it is.
    bool isRefused(unsigned flags) const {
        const auto refuser = watch<Refuser>(*gain);
        const To before = gain->get();
        EXPECT_EQ(merge(flags).changed, 1u) << flags;
        return gain->get() == before;
    }

    std::shared_ptr<AttrContainer> target = AttrContainer::create();
    std::shared_ptr<AttrContainer> source = AttrContainer::create();
    std::shared_ptr<Attr<To>> gain;
};

using Calls = std::pair<int, int>;

}  // namespace

TEST(AttrContMergerUnlikeTypes, ConvertThroughTextAndNeverBecomeEqual) {
    const GainPair pair(2.5, 7);
    for (const unsigned flags : {0u, 1u, 16u, 32u}) {
        pair.gain->set(2.5);
        EXPECT_EQ(pair.merge(flags), (Counters{.changed = 1, .unchanged = 1})) << flags;
        EXPECT_EQ(pair.gain->get(), 7.0) << flags;
    }
    EXPECT_EQ(pair.merge(0).changed, 1u);
}

// The road through text asks whoever blocks, and goes on without the answer.
TEST(AttrContMergerUnlikeTypes, AskObserversEvenWhereTheyAreBlocked) {
    EXPECT_EQ(GainPair(2.5, 7).calls(0), (Calls{1, 2}));
    EXPECT_EQ(GainPair(2.5, 7).calls(16), (Calls{1, 1}));
    EXPECT_EQ(GainPair(2.5, 7).calls(32), (Calls{1, 0}));
    for (const unsigned flags : {0u, 16u, 32u})
        EXPECT_FALSE(GainPair(2.5, 7).isRefused(flags)) << flags;
}

TEST(AttrContMergerUnlikeTypes, AreAssignedToATextAsATextIs) {
    using Pair = GainPair<std::string, double>;
    EXPECT_EQ(Pair("old", 2.5).calls(0), (Calls{1, 2}));
    EXPECT_EQ(Pair("old", 2.5).calls(16), (Calls{0, 1}));
    EXPECT_EQ(Pair("old", 2.5).calls(32), (Calls{0, 0}));
    EXPECT_TRUE(Pair("old", 2.5).isRefused(0));
    for (const unsigned flags : {16u, 32u}) {
        const Pair pair("old", 2.5);
        EXPECT_FALSE(pair.isRefused(flags)) << flags;
        EXPECT_EQ(pair.gain->get(), "2.5") << flags;
    }
}

// Six digits of text would lose what the float had.
TEST(AttrContMergerUnlikeTypes, ConvertPointsOfFloatsAndDoublesByTheirNumbers) {
    using Pair = GainPair<Vec3d<double>, Vec3d<float>>;
    const Vec3d<float> point{0.1f, 1, 2};
    EXPECT_TRUE(Pair({}, point).isRefused(0));
    for (const unsigned flags : {0u, 16u, 32u}) {
        const Pair pair({}, point);
        EXPECT_EQ(pair.calls(flags).first, flags == 0 ? 1 : 0) << flags;
        EXPECT_EQ(pair.gain->get().x, static_cast<double>(0.1f)) << flags;
    }
}

TEST(AttrContMergerUnlikeTypes, LetTheFailureOfAConversionThroughAndUnblockTheThread) {
    const GainPair pair(2.5, std::string("1e"));
    for (const unsigned flags : {0u, 16u, 32u}) {
        EXPECT_THROW(pair.merge(flags), std::invalid_argument);
        EXPECT_FALSE(Attribute::isObservingBlocked());
    }
}
