// How a change of an attribute is refused, and what observers learn about it.
#include <AttributeContainer/Attr.h>
#include <AttributeContainer/ContainerClass.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/FreeAttribute.h"
#include "support/LogCapture.h"
#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <any>
#include <future>
#include <map>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Results = std::vector<Observable::NotificationResult>;

// Notes the pending value that it finds when it is asked and when it is told.
class ValueReader : public Observer {
public:
    ValueReader() : Observer(std::nullopt) {}

    std::string getName() const override { return "reader"; }
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator&) override {
        pendingWhenAsked = pendingIn(observable);
        currentWhenAsked = static_cast<Attr<int>&>(observable).get();
        return Action::ExecDone;
    }
    Action::ExecReturn changedNotify(Observable& observable, Initiator&) override {
        pendingWhenTold = pendingIn(observable);
        currentWhenTold = static_cast<Attr<int>&>(observable).get();
        return Action::ExecDone;
    }

    std::optional<int> pendingWhenAsked, pendingWhenTold;
    std::optional<int> currentWhenAsked, currentWhenTold;

private:
    static std::optional<int> pendingIn(Observable& observable) {
        const auto info = observable.lookupNotifyInfo(typeid(NewValueInfo<int>));
        if (!info) return std::nullopt;
        return static_cast<NewValueInfo<int>&>(*info).getValue();
    }
};

// Counts how often one of its names is checked.
class Odd : public ContainerClass<Odd, AttrContainer, "Odd"> {
public:
    using Block::Block;

    ErrorPtr checkName(const std::string& name) const override {
        ++numChecks;
        return AttrContainer::checkName(name);
    }

    mutable int numChecks = 0;
};

struct Promises {
    ResultPromise pre = std::make_unique<std::promise<Results>>();
    ResultPromise post = std::make_unique<std::promise<Results>>();
    std::future<Results> preResults = pre->get_future();
    std::future<Results> postResults = post->get_future();
};

}  // namespace

// Changes that pass -----------------------------------------------------------------------------

TEST(Veto, LeavesNoInfoBehindAChangeWithoutObservers) {
    const auto number = attributeOf<int>(1);
    number->set(2);
    EXPECT_EQ(number->get(), 2);
    EXPECT_EQ(number->copyNotifyInfos(), nullptr);
}

TEST(Veto, ShowsThePendingValueToBothHalvesAndNotAfterwards) {
    const auto number = attributeOf<int>(1);
    const auto reader = watch<ValueReader>(*number);

    number->set(2);

    EXPECT_EQ(reader->pendingWhenAsked, 2);
    EXPECT_EQ(reader->currentWhenAsked, 1);
    EXPECT_EQ(reader->pendingWhenTold, 2);
    EXPECT_EQ(reader->currentWhenTold, 2);
    EXPECT_EQ(number->copyNotifyInfos(), nullptr);
}

TEST(Veto, MakesNoPendingValueWithNobodyToAsk) {
    const auto number = attributeOf<int>(1);
    const auto reader = std::make_shared<ValueReader>();
    number->addObserver(*reader, 1, tellAction, false);
    number->set(2);
    EXPECT_EQ(reader->currentWhenTold, 2);
    EXPECT_EQ(reader->pendingWhenTold, std::nullopt);
}

TEST(Veto, TellsOfAChangeToTheSameValue) {
    const auto number = attributeOf<int>(1);
    const auto counter = watch(*number);
    number->set(1);
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
}

TEST(Veto, HandsTheAnswersOfBothHalvesOn) {
    const auto number = attributeOf<int>(1);
    const auto counter = watch(*number);
    Promises promises;

    number->set(2, nullptr, promises.pre, promises.post);

    const Results pre = promises.preResults.get();
    const Results post = promises.postResults.get();
    ASSERT_EQ(pre.size(), 1u);
    ASSERT_EQ(post.size(), 1u);
    EXPECT_EQ(pre[0].observer.lock(), counter);
    EXPECT_EQ(post[0].result, Action::ExecDone);
}

// Changes that are refused ----------------------------------------------------------------------

TEST(Veto, KeepsTheValueAndTellsNobody) {
    const auto number = attributeOf<int>(1);
    const auto refuser = watch<Refuser>(*number);
    const auto counter = watch(*number);

    number->set(2);

    EXPECT_EQ(number->get(), 1);
    EXPECT_EQ(refuser->told, 0);
    EXPECT_EQ(counter->told, 0);
    EXPECT_EQ(number->copyNotifyInfos(), nullptr) << "neither the veto nor the value stays";
}

TEST(Veto, AsksTheWeakerObserversAllTheSame) {
    const auto number = attributeOf<int>(1);
    const auto refuser = std::make_shared<Refuser>();
    const auto weaker = std::make_shared<Counter>();
    number->addPreObserver(*refuser, 9, askAction, false);
    number->addPreObserver(*weaker, 1, askAction, false);
    number->set(2);
    EXPECT_EQ(refuser->asked, 1);
    EXPECT_EQ(weaker->asked, 1);
}

TEST(Veto, HandsTheAnswersOfThePreHalfOn) {
    const auto number = attributeOf<int>(1);
    const auto refuser = watch<Refuser>(*number);
    Promises promises;

    number->set(2, nullptr, promises.pre, promises.post);

    const Results pre = promises.preResults.get();
    ASSERT_EQ(pre.size(), 1u);
    EXPECT_EQ(pre[0].result, Action::ExecRefused);
    EXPECT_THROW(promises.postResults.get(), std::future_error) << "that half never ran";
}

TEST(Veto, NeedsTheInfoAndNotTheAnswer) {
    const auto number = attributeOf<int>(1);
    Scribe::Book book;
    const auto grumbler = std::make_shared<Scribe>("grumbler", book);
    grumbler->answer = Action::ExecRefused;
    number->addPreObserver(*grumbler, 1, askAction, false);
    number->set(2);
    EXPECT_EQ(number->get(), 2);
}

TEST(Veto, IsNotMadeByEndingTheWalk) {
    const auto number = attributeOf<int>(1);
    Scribe::Book book;
    const auto stopper = std::make_shared<Scribe>("stopper", book);
    const auto refuser = std::make_shared<Refuser>();
    stopper->answer = Action::ExecStopNotify;
    number->addPreObserver(*stopper, 9, askAction, false);
    number->addPreObserver(*refuser, 1, askAction, false);

    number->set(2);

    EXPECT_EQ(number->get(), 2);
    EXPECT_EQ(refuser->asked, 0);
}

TEST(Veto, StaysReadableWhereItDoesNotExpire) {
    const auto number = attributeOf<int>(1);
    const auto keeper = std::make_shared<Actor>();
    keeper->before = [](Observable& observable, Actor::Initiator&) {
        const auto veto = std::make_shared<InfoFailed>(
            makeError(__FILE__, __LINE__, ErrorCode::InvalidName, "keeper"));
        veto->setExpire(false);
        observable.addNotifyInfo(veto);
    };
    number->addPreObserver(*keeper, 1, askAction, false);

    number->set(2);

    const auto veto = number->lookupNotifyInfo(typeid(InfoFailed));
    ASSERT_NE(veto, nullptr);
    EXPECT_EQ(static_cast<InfoFailed&>(*veto).getError()->getCode(), ErrorCode::InvalidName);
    EXPECT_EQ(number->removeNotifyInfos(true), 1);
}

TEST(Veto, DoesNotReachTheNextChange) {
    const auto number = attributeOf<int>(1);
    auto refuser = watch<Refuser>(*number);
    number->set(2);
    refuser.reset();
    number->set(3);
    EXPECT_EQ(number->get(), 3);
}

TEST(Veto, DoesNotSpeakForTheInitiatorItself) {
    const auto number = attributeOf<int>(1);
    const auto refuser = watch<Refuser>(*number);
    number->set(2, refuser);
    EXPECT_EQ(number->get(), 2);
    EXPECT_EQ(refuser->asked, 0);
}

// Blocking and switching off --------------------------------------------------------------------

TEST(Veto, IsNotAskedForInsideABlock) {
    const auto number = attributeOf<int>(1);
    const auto refuser = watch<Refuser>(*number);
    const auto reader = watch<ValueReader>(*number);
    {
        const BlockObserver block;
        number->set(2);
        number->touch(nullptr, nullptr);
    }
    EXPECT_EQ(number->get(), 2);
    EXPECT_EQ(refuser->asked + refuser->told, 0);
    EXPECT_EQ(number->copyNotifyInfos(), nullptr);
}

TEST(Veto, IsAskedForInsideABlockWhereSomebodyCallsTheWalkItself) {
    const auto number = attributeOf<int>(1);
    const auto counter = watch(*number);
    const BlockObserver block;
    number->preTouch(nullptr, nullptr);
    number->Observable::touch(nullptr, nullptr);
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
}

TEST(Veto, IsNotAskedForWhereNotificationIsSwitchedOff) {
    const auto number = attributeOf<int>(1);
    const auto refuser = watch<Refuser>(*number);
    number->setNotifyEnabled(false);
    number->set(2);
    EXPECT_EQ(number->get(), 2);
    EXPECT_EQ(refuser->asked + refuser->told, 0);
}

// The name guard of a container -----------------------------------------------------------------

TEST(Veto, OfAContainerKeepsItsNameValid) {
    const auto container = AttrContainer::create();
    container->name("scan");
    LogCapture log;

    container->name("no name, this");

    EXPECT_EQ(container->name(), "scan");
    EXPECT_EQ(log.messages(1).size(), 1u) << "of the error";
}

TEST(Veto, OfAContainerSaysWhichNameStaysAndWhichIsRefused) {
    const auto container = AttrContainer::create();
    container->name("scan");
    std::map<std::string, std::any> infos;
    const auto witness = std::make_shared<Actor>();
    witness->before = [&](Observable& observable, Actor::Initiator&) {
        const auto veto = observable.lookupNotifyInfo(typeid(InfoFailed));
        if (veto) infos = static_cast<InfoFailed&>(*veto).getError()->getInfos();
    };
    container->Attr_Name().addPreObserver(*witness, 1, askAction, true);

    container->name("no name, this");

    ASSERT_EQ(infos.count("CurrentName"), 1u);
    ASSERT_EQ(infos.count("NewName"), 1u);
    EXPECT_EQ(std::any_cast<std::string>(infos["CurrentName"]), "scan");
    EXPECT_EQ(std::any_cast<std::string>(infos["NewName"]), "no name, this");
}

TEST(Veto, OfAContainerIsNotEvenThoughtOfForAnotherCaseOfTheName) {
    const auto odd = Odd::create();
    odd->name("scan");
    odd->numChecks = 0;

    odd->name("SCAN");
    EXPECT_EQ(odd->name(), "SCAN");
    EXPECT_EQ(odd->numChecks, 0);
    odd->name("other");
    EXPECT_EQ(odd->numChecks, 1);
}

TEST(Veto, OfAContainerAnswersOnlyForItsOwnName) {
    const auto container = AttrContainer::create();
    const auto other = AttrContainer::create();
    const auto number = attributeOf<int>(1);
    const auto bell = std::make_shared<Bell>();
    AttrContainer::Initiator nobody;
    EXPECT_EQ(container->toChangeNotify(*bell, nobody), Action::ExecUnchanged);
    EXPECT_EQ(container->toChangeNotify(*number, nobody), Action::ExecDone);
    EXPECT_EQ(container->toChangeNotify(other->Attr_Name(), nobody), Action::ExecDone);
    EXPECT_EQ(container->toChangeNotify(container->Attr_Name(), nobody), Action::ExecDone)
        << "no value is pending";
}
