#include <AttributeContainer/ReferenceDictionary.h>

#include <AttributeContainer/ReadContext.h>
#include <AttributeContainer/WriteContext.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;

namespace {

using Keys = std::vector<std::uint64_t>;
using Container = std::shared_ptr<AttrContainer>;

// Stands for a container: the dictionary keeps pointers and never looks behind them.
Container standIn() {
    const auto owner = std::make_shared<int>();
    return Container(owner, reinterpret_cast<AttrContainer*>(owner.get()));
}

ReferenceDictionary declaring(Keys keys) {
    ReferenceDictionary dictionary;
    dictionary.initializeFromVector(keys);
    return dictionary;
}

}  // namespace

TEST(ReferenceDictionary, HasItsClassName) {
    const ReferenceDictionary dictionary;
    EXPECT_EQ(dictionary.getClassName(), "ReferenceDictionary");
    EXPECT_EQ(ReferenceDictionary::getStaticClassName(), "ReferenceDictionary");
}

TEST(ReferenceDictionary, KnowsNoKeyAtFirst) {
    ReferenceDictionary dictionary;
    EXPECT_EQ(dictionary.resolveReference(0), nullptr);
    EXPECT_FALSE(dictionary.registerReference(0, standIn()));
    EXPECT_FALSE(dictionary.unregisterReference(0));
}

TEST(ReferenceDictionary, LeavesTheKeysSortedThatAreDeclared) {
    Keys keys{30, 10, ~std::uint64_t{0}, 20};
    ReferenceDictionary dictionary;
    dictionary.initializeFromVector(keys);
    EXPECT_EQ(keys, (Keys{10, 20, 30, ~std::uint64_t{0}}));
}

TEST(ReferenceDictionary, ResolvesEachKeyToTheContainerThatWasRegistered) {
    auto dictionary = declaring({30, 10, 20});
    const auto a = standIn();
    const auto b = standIn();

    EXPECT_TRUE(dictionary.registerReference(10, a));
    EXPECT_TRUE(dictionary.registerReference(30, b));

    EXPECT_EQ(dictionary.resolveReference(10), a);
    EXPECT_EQ(dictionary.resolveReference(20), nullptr);  // declared, not registered
    EXPECT_EQ(dictionary.resolveReference(30), b);
    EXPECT_EQ(dictionary.resolveReference(15), nullptr);
    EXPECT_EQ(dictionary.resolveReference(31), nullptr);
}

TEST(ReferenceDictionary, RefusesAKeyThatWasNotDeclared) {
    auto dictionary = declaring({10, 20});
    EXPECT_FALSE(dictionary.registerReference(15, standIn()));
    EXPECT_EQ(dictionary.resolveReference(15), nullptr);
}

TEST(ReferenceDictionary, RefusesAnEmptyContainer) {
    auto dictionary = declaring({10});
    EXPECT_FALSE(dictionary.registerReference(10, nullptr));
}

TEST(ReferenceDictionary, KeepsTheFirstOfTwoContainersOfAKey) {
    auto dictionary = declaring({10});
    const auto first = standIn();
    EXPECT_TRUE(dictionary.registerReference(10, first));
    EXPECT_FALSE(dictionary.registerReference(10, standIn()));
    EXPECT_FALSE(dictionary.registerReference(10, nullptr));
    EXPECT_EQ(dictionary.resolveReference(10), first);
}

TEST(ReferenceDictionary, AcceptsTheSameContainerAgain) {
    auto dictionary = declaring({10});
    const auto container = standIn();
    EXPECT_TRUE(dictionary.registerReference(10, container));
    EXPECT_TRUE(dictionary.registerReference(10, container));
    EXPECT_EQ(dictionary.resolveReference(10), container);
}

TEST(ReferenceDictionary, CanRegisterAKeyAnewAfterItWasUnregistered) {
    auto dictionary = declaring({10});
    EXPECT_TRUE(dictionary.registerReference(10, standIn()));

    EXPECT_TRUE(dictionary.unregisterReference(10));
    EXPECT_EQ(dictionary.resolveReference(10), nullptr);

    const auto second = standIn();
    EXPECT_TRUE(dictionary.registerReference(10, second));
    EXPECT_EQ(dictionary.resolveReference(10), second);
    EXPECT_FALSE(dictionary.unregisterReference(11));
}

TEST(ReferenceDictionary, ForgetsEverythingWhenKeysAreDeclaredAnew) {
    auto dictionary = declaring({10, 20});
    dictionary.registerReference(10, standIn());
    Keys keys{10};

    dictionary.initializeFromVector(keys);

    EXPECT_EQ(dictionary.resolveReference(10), nullptr);
    EXPECT_FALSE(dictionary.unregisterReference(20));
}

TEST(ReferenceDictionary, HoldsTheContainersThatItKnows) {
    auto dictionary = declaring({10});
    auto container = standIn();
    const std::weak_ptr<AttrContainer> watch = container;
    dictionary.registerReference(10, std::move(container));
    EXPECT_FALSE(watch.expired());
    dictionary.unregisterReference(10);
    EXPECT_TRUE(watch.expired());
}

TEST(ReferenceDictionary, WritesNothing) {
    auto dictionary = declaring({10});
    std::ostringstream out;
    EXPECT_EQ(dictionary.writeTo(out, std::make_shared<const WriteContextBase>()), nullptr);
    EXPECT_EQ(dictionary.writeTo(out, nullptr), nullptr);
    EXPECT_EQ(out.str(), "");
}

TEST(ReferenceDictionary, IsNoPartOfAStreamToRead) {
    auto dictionary = declaring({10});
    const auto container = standIn();
    dictionary.registerReference(10, container);
    std::istringstream in("ReferenceDictionary { }");

    for (const auto& context : {std::make_shared<const ReadContextBase>(), {}}) {
        const auto error = dictionary.readFrom(in, context);
        ASSERT_NE(error, nullptr);
        EXPECT_EQ(error->getCode(), ErrorCode::ReadNotSupported);
    }

    EXPECT_EQ(in.tellg(), std::streampos(0));
    EXPECT_EQ(dictionary.resolveReference(10), container);
}
