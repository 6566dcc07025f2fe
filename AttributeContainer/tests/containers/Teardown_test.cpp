// Deep and wide trees end on a flat call stack.
#include "containers/Teardown.h"

#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// A chain of fields, the outermost first; each is the only owner of the next.
std::shared_ptr<AttrContainer> chainOf(int length) {
    auto chain = AttrContainer::create();
    for (int i = 1; i < length; ++i) {
        auto outer = AttrContainer::create();
        outer->addField(std::move(chain), "inner", AddFlags::SkipNameTest);
        chain = std::move(outer);
    }
    return chain;
}

/// Notes its end.
struct Element {
    Element(std::vector<std::string>& log, std::string name) : log(log), name(std::move(name)) {}
    ~Element() {
        log.push_back(name);
        for (auto& next : inner) releaseInTurn(std::move(next));
    }

    std::vector<std::string>& log;
    std::string name;
    std::vector<std::shared_ptr<void>> inner;
};

}  // namespace

TEST(Teardown, EndsAChainOfAHundredThousandFields) {
    auto chain = chainOf(100000);
    const std::weak_ptr<AttrContainer> innermost = [&] {
        auto field = chain;
        while (auto next = field->getField(std::uint64_t{0}).lock()) field = next;
        return field;
    }();

    chain.reset();

    EXPECT_TRUE(innermost.expired());
}

TEST(Teardown, EndsAChainThatIsTakenOutOfAContainer) {
    const auto container = AttrContainer::create();
    container->addField(chainOf(100000), "chain", 0);
    const std::weak_ptr<AttrContainer> outermost = container->getField("chain");

    EXPECT_TRUE(container->rmField("chain"));

    EXPECT_TRUE(outermost.expired());
}

TEST(Teardown, EndsAChainThatIsReplaced) {
    const auto container = AttrContainer::create();
    container->addField(chainOf(100000), "chain", 0);
    EXPECT_TRUE(container->setField(0, AttrContainer::create()));
    EXPECT_EQ(container->getField("chain").lock()->getNumFields(), 0u);
}

TEST(Teardown, LeavesWhatIsOwnedElsewhere) {
    auto container = AttrContainer::create();
    const auto kept = addNamedField(*container, "kept");
    addNamedField(*kept, "inner");

    container.reset();

    EXPECT_FALSE(kept->getField("inner").expired());
}

TEST(Teardown, EndsEverythingBeforeTheOutermostReleaseReturns) {
    std::vector<std::string> log;
    auto a = std::make_shared<Element>(log, "a");
    auto b = std::make_shared<Element>(log, "b");
    b->inner.push_back(std::make_shared<Element>(log, "b1"));
    a->inner.push_back(std::move(b));
    a->inner.push_back(std::make_shared<Element>(log, "c"));

    releaseInTurn(std::move(a));

    EXPECT_EQ(log, (std::vector<std::string>{"a", "b", "c", "b1"}));
}

TEST(Teardown, TakesNothing) {
    releaseInTurn(nullptr);
    std::vector<std::string> log;
    releaseInTurn(std::make_shared<Element>(log, "a"));
    EXPECT_EQ(log.size(), 1u);
}
