// How much of the call stack the deepest read takes.
#include <AttributeContainer/Object.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/SmallStack.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr int deepest = 1000;

// What stands ahead of one level and behind it.
struct Level {
    std::string begin, end;
};
const std::array<Level, 2> levels{
    Level{"AttrContainer { SubContainer { \"Deep\" \"f\" ", "} } "},
    Level{"AttrContainer { } Child { \"Deep\" \"c\" ", "} "},
};

// A stream of so many levels: all of fields, all of children, or of both in turn.
std::string nested(int numLevels, std::optional<std::size_t> kind) {
    std::string begin, end;
    for (int i = 0; i < numLevels; ++i) {
        const auto& level = levels[kind.value_or(static_cast<std::size_t>(i) % levels.size())];
        begin += level.begin;
        end = level.end + end;
    }
    return begin + "AttrContainer { } " + end;
}

/// Notes where the call stack stands when its body is read.
class Deep : public ContainerClass<Deep, Object, "Deep"> {
public:
    using Block::Block;
    ErrorPtr readFrom(std::istream& stream,
                      std::shared_ptr<const ReadContextBase> context) override {
        const char here = 0;
        const auto place = reinterpret_cast<std::uintptr_t>(&here);
        lowest = std::min(lowest, place);
        highest = std::max(highest, place);
        ++numReads;
        return Object::readFrom(stream, std::move(context));
    }

    static inline std::uintptr_t lowest, highest;
    static inline int numReads;
};
const auto deepRegistered = FieldFactory::addField<Deep>("Deep");

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitized = true;
#elif defined(__has_feature)
constexpr bool isSanitized = __has_feature(address_sanitizer);
#else
constexpr bool isSanitized = false;
#endif

}  // namespace

#if __has_include(<pthread.h>)
TEST(ReadStack, HoldsTheDeepestReadInEightMegabytes) {
    using Kind = std::optional<std::size_t>;
    for (const auto kind : {Kind(0), Kind(1), Kind()}) {
        const std::string text = nested(deepest, kind);
        const bool isRun = runOnStackOf(8 << 20, [&] {
            const auto root = Object::create();
            EXPECT_EQ(readText(*root, text), std::nullopt);
            EXPECT_NE(written(*root), "failed");
        });
        EXPECT_TRUE(isRun);
    }
}

TEST(ReadStack, HoldsAReadOfTwoHundredLevelsInHalfAMegabyte) {
    if (isSanitized) GTEST_SKIP() << "the frames of the sanitizer are larger";
    const std::string text = nested(200, std::nullopt);
    EXPECT_TRUE(runOnStackOf(512 << 10,
                             [&] { EXPECT_EQ(readText(*Object::create(), text), std::nullopt); }));
}
#endif

TEST(ReadStack, TakesNoMoreThanTwoKilobytesALevel) {
    constexpr std::uintptr_t most = isSanitized ? 7000 : 2048;
    for (std::size_t kind = 0; kind < levels.size(); ++kind) {
        Deep::lowest = ~std::uintptr_t{0};
        Deep::highest = 0;
        Deep::numReads = 0;

        EXPECT_EQ(readText(*Object::create(), nested(deepest, kind)), std::nullopt);

        ASSERT_EQ(Deep::numReads, deepest);
        const auto bytesALevel = (Deep::highest - Deep::lowest) / (deepest - 1);
        RecordProperty("bytes_a_level_" + std::to_string(kind), std::to_string(bytesALevel));
        EXPECT_LE(bytesALevel, most);
    }
}
