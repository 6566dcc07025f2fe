// The road of a change: who is asked, what is stored, who is told.
#include <AttributeContainer/Attr.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"
#include "support/ResultPromises.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

struct AttrSet : testing::Test, ResultPromises {
    ~AttrSet() override { Attribute::setObservingBlocked(false); }

    std::shared_ptr<Attr<int>> attribute = std::make_shared<CustAttr<int>>(std::nullopt);
};

}  // namespace

TEST_F(AttrSet, StoresTheValue) {
    attribute->set(5);
    EXPECT_EQ(attribute->get(), 5);
}

TEST_F(AttrSet, AsksThenStoresThenTells) {
    const auto actor = watch<Actor>(*attribute);
    std::vector<std::pair<std::string, int>> seen;
    actor->before = [&](Observable&, auto&) { seen.emplace_back("before", attribute->get()); };
    actor->after = [&](Observable&, auto&) { seen.emplace_back("after", attribute->get()); };

    attribute->set(5);

    EXPECT_EQ(seen, (std::vector<std::pair<std::string, int>>{{"before", 0}, {"after", 5}}));
}

TEST_F(AttrSet, NotifiesAlsoWhereTheValueIsThereAlready) {
    attribute->set(5);
    const auto counter = watch(*attribute);

    attribute->set(5);

    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
}

TEST_F(AttrSet, TakesItsOwnValueAsTheNewOne) {
    const auto text = std::make_shared<CustAttr<std::string>>(std::nullopt);
    text->set("a text too long for the object itself to hold");
    const auto counter = watch(*text);

    text->set(text->get());

    EXPECT_EQ(text->get(), "a text too long for the object itself to hold");
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
}

TEST_F(AttrSet, ShowsTheNewValueToBothHalvesAndDropsItAfterwards) {
    const auto actor = watch<Actor>(*attribute);
    std::vector<int> seen;
    const auto look = [&](Observable& observable, auto&) {
        const auto info = observable.lookupNotifyInfo(typeid(NewValueInfo<int>));
        seen.push_back(info ? static_cast<NewValueInfo<int>&>(*info).getValue() : -1);
    };
    actor->before = look;
    actor->after = look;

    attribute->set(5);

    EXPECT_EQ(seen, (std::vector<int>{5, 5}));
    EXPECT_EQ(attribute->copyNotifyInfos(), nullptr);
}

TEST_F(AttrSet, MakesNoInfoWhereNobodyIsAsked) {
    const auto actor = std::make_shared<Actor>();
    attribute->addObserver(*actor, 5, tellAction, true);
    bool found = true;
    actor->after = [&](Observable& observable, auto&) {
        found = observable.lookupNotifyInfo(typeid(NewValueInfo<int>)) != nullptr;
    };

    attribute->set(5);

    EXPECT_EQ(actor->told, 1);
    EXPECT_FALSE(found);
}

TEST_F(AttrSet, KeepsTheValueWhereAnObserverRefuses) {
    attribute->set(1);
    const auto refuser = watch<Refuser>(*attribute);

    attribute->set(5);

    EXPECT_EQ(attribute->get(), 1);
    EXPECT_EQ(refuser->asked, 1);
    EXPECT_EQ(refuser->told, 0);
    EXPECT_EQ(attribute->copyNotifyInfos(), nullptr);  // the veto and the new value are gone
}

TEST_F(AttrSet, PassesItsInitiator) {
    const auto actor = watch<Actor>(*attribute);
    const auto initiator = std::make_shared<Counter>();
    std::vector<const ObservingObject*> seen;
    const auto note = [&](Observable&, Observer::Initiator& given) {
        seen.push_back(given ? &given->get() : nullptr);
    };
    actor->before = note;
    actor->after = note;

    attribute->set(5, initiator);
    attribute->set(6);

    EXPECT_EQ(seen, (std::vector<const ObservingObject*>{initiator.get(), initiator.get(), nullptr,
                                                         nullptr}));
}

TEST_F(AttrSet, DoesNotNotifyTheInitiatorItself) {
    const auto counter = watch(*attribute);

    attribute->set(5, counter);

    EXPECT_EQ(attribute->get(), 5);
    EXPECT_EQ(counter->asked + counter->told, 0);
}

// The results of the two halves -------------------------------------------------------------------

TEST_F(AttrSet, FulfilsBothPromises) {
    const auto counter = watch(*attribute);

    attribute->set(5, nullptr, pre, post);

    expectConsumed();
    const Results asked = preAnswers.get();
    const Results told = postAnswers.get();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].observer.lock(), counter);
    EXPECT_EQ(asked[0].result, Action::ExecDone);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].observer.lock(), counter);
}

TEST_F(AttrSet, FulfilsThePromisesWithNothingWhereNobodyObserves) {
    attribute->set(5, nullptr, pre, post);

    EXPECT_TRUE(preAnswers.get().empty());
    EXPECT_TRUE(postAnswers.get().empty());
}

TEST_F(AttrSet, BreaksThePostPromiseWhereTheChangeIsRefused) {
    const auto refuser = watch<Refuser>(*attribute);

    attribute->set(5, nullptr, pre, post);

    expectConsumed();
    const Results asked = preAnswers.get();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].observer.lock(), refuser);
    EXPECT_EQ(asked[0].result, Action::ExecRefused);
    expectBroken(postAnswers);
}

TEST_F(AttrSet, TakesOnlyThePromiseThatIsThere) {
    const auto counter = watch(*attribute);
    ResultPromise none;

    attribute->set(5, nullptr, none, post);
    EXPECT_EQ(postAnswers.get().size(), 1u);
    attribute->set(6, nullptr, pre, none);
    EXPECT_EQ(preAnswers.get().size(), 1u);
    EXPECT_EQ(counter->asked, 2);
    EXPECT_EQ(counter->told, 2);
}

TEST_F(AttrSet, BreaksAPromiseThatIsAloneWhereTheChangeIsRefused) {
    const auto refuser = watch<Refuser>(*attribute);
    ResultPromise none;

    attribute->set(5, nullptr, none, post);

    EXPECT_EQ(post, nullptr);
    expectBroken(postAnswers);
}

// Blocked -----------------------------------------------------------------------------------------

TEST_F(AttrSet, StoresAndTellsNobodyWhileObservingIsBlocked) {
    const auto refuser = watch<Refuser>(*attribute);
    {
        const BlockObserver block;
        attribute->set(5);
    }
    EXPECT_EQ(attribute->get(), 5);
    EXPECT_EQ(refuser->asked, 0);
    EXPECT_EQ(refuser->told, 0);
    EXPECT_EQ(attribute->copyNotifyInfos(), nullptr);
}

TEST_F(AttrSet, BreaksBothPromisesWhileObservingIsBlocked) {
    const BlockObserver block;

    attribute->set(5, nullptr, pre, post);

    EXPECT_EQ(attribute->get(), 5);
    expectConsumed();
    expectBroken(preAnswers);
    expectBroken(postAnswers);
}

TEST_F(AttrSet, SwallowsATouchWhileObservingIsBlocked) {
    const auto counter = watch(*attribute);
    const BlockObserver block;

    attribute->touch(nullptr, nullptr);
    EXPECT_EQ(counter->told, 0);
    attribute->Observable::touch(nullptr, nullptr);  // the block is the attribute's
    EXPECT_EQ(counter->told, 1);
}

TEST_F(AttrSet, ReadsTheBlockWhereTheChangeBegins) {
    const auto actor = watch<Actor>(*attribute);
    actor->before = [](Observable&, auto&) { Attribute::setObservingBlocked(true); };

    attribute->set(5);

    EXPECT_EQ(attribute->get(), 5);
    EXPECT_EQ(actor->asked, 1);
    EXPECT_EQ(actor->told, 0);  // the notification itself is blocked by then
}

TEST_F(AttrSet, AsksAndTellsWhileOnlyACachedValueIsPending) {
    const auto counter = watch(*attribute);
    Attribute::setIsCachedAttributePending(true);

    attribute->set(5, nullptr, pre, post);
    const bool stillPending = Attribute::isCachedAttributePending();
    Attribute::setIsCachedAttributePending(false);

    EXPECT_TRUE(stillPending);  // there was no cached value here to consume
    EXPECT_EQ(attribute->get(), 5);
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(preAnswers.get().size(), 1u);
    EXPECT_EQ(postAnswers.get().size(), 1u);
}

// Observers that interfere ------------------------------------------------------------------------

TEST_F(AttrSet, SurvivesAnObserverThatEndsTheAttributeBeforeTheChange) {
    const auto actor = watch<Actor>(*attribute);
    Attr<int>* const raw = attribute.get();
    actor->before = [&](Observable&, auto&) { attribute.reset(); };

    raw->set(5, nullptr, pre, post);

    EXPECT_EQ(attribute, nullptr);
    expectBroken(postAnswers);
}

TEST_F(AttrSet, SurvivesAnObserverThatEndsTheAttributeAfterTheChange) {
    const auto actor = watch<Actor>(*attribute);
    Attr<int>* const raw = attribute.get();
    actor->after = [&](Observable&, auto&) { attribute.reset(); };

    raw->set(5, nullptr, pre, post);

    EXPECT_EQ(attribute, nullptr);
    EXPECT_EQ(actor->told, 1);
}

TEST_F(AttrSet, LetsAnObserverChangeTheValueAgain) {
    const auto actor = watch<Actor>(*attribute);
    actor->after = [&](Observable&, auto&) {
        if (attribute->get() < 3) attribute->set(attribute->get() + 1);
    };

    attribute->set(1);

    EXPECT_EQ(attribute->get(), 3);
    EXPECT_EQ(actor->told, 3);
}
