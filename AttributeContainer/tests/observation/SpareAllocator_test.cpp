// The block of memory that changes hand on to each other.
#include "support/FreeAttribute.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

/// Keeps the infos of all changes that it is asked about.
template <class T>
class Keeper : public Counter {
public:
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator&) override {
        kept.push_back(observable.lookupNotifyInfo(typeid(NewValueInfo<T>)));
        if (whenAsked) whenAsked();
        return Action::ExecDone;
    }

    std::vector<T> values() const {
        std::vector<T> result;
        for (const auto& info : kept)
            result.push_back(static_cast<const NewValueInfo<T>&>(*info).getValue());
        return result;
    }

    std::vector<std::shared_ptr<ObserverInfo>> kept;
    std::function<void()> whenAsked;
};

template <class T>
std::shared_ptr<Keeper<T>> addKeeper(Attr<T>& attribute) {
    const auto keeper = std::make_shared<Keeper<T>>();
    attribute.addPreObserver(*keeper, 1, 1, false);
    return keeper;
}

}  // namespace

TEST(SpareAllocator, LeavesInfosAloneThatOutliveTheirChange) {
    const auto attribute = attributeOf(0.5);
    const auto keeper = addKeeper(*attribute);

    for (const double value : {1.5, 2.5, 3.5}) attribute->set(value);

    EXPECT_EQ(keeper->values(), (std::vector{1.5, 2.5, 3.5}));
}

TEST(SpareAllocator, GivesChangesWithinChangesBlocksOfTheirOwn) {
    const auto outer = attributeOf(1);
    const auto inner = attributeOf(std::string("none"));
    const auto outerKeeper = addKeeper(*outer);
    const auto innerKeeper = addKeeper(*inner);
    outerKeeper->whenAsked = [&] { inner->set("a text that has no room in the string itself"); };

    outer->set(2);
    outer->set(3);

    EXPECT_EQ(outerKeeper->values(), (std::vector{2, 3}));
    EXPECT_EQ(innerKeeper->values(),
              std::vector<std::string>(2, "a text that has no room in the string itself"));
}

TEST(SpareAllocator, TakesBackWhatAnotherThreadMade) {
    std::vector<std::shared_ptr<ObserverInfo>> kept;
    std::thread([&] {
        const auto attribute = attributeOf(1);
        const auto keeper = addKeeper(*attribute);
        attribute->set(2);
        kept = keeper->kept;
    }).join();
    ASSERT_EQ(kept.size(), 1u);

    const auto attribute = attributeOf(3);
    const auto keeper = addKeeper(*attribute);
    attribute->set(4);
    kept.clear();
    attribute->set(5);

    EXPECT_EQ(keeper->values(), (std::vector{4, 5}));
}

TEST(SpareAllocator, EndsInfosOnAThreadThatMadeNone) {
    const auto attribute = attributeOf(1);
    const auto keeper = addKeeper(*attribute);
    attribute->set(2);
    const std::weak_ptr<ObserverInfo> info = keeper->kept.front();

    std::thread([kept = std::move(keeper->kept)]() mutable { kept.clear(); }).join();

    EXPECT_TRUE(info.expired());
}
