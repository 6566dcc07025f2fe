#include <AttributeContainer/AttributeWriteProtection.h>

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/FreeAttribute.h"
#include "support/LogCapture.h"
#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Texts = std::vector<std::string>;
using Callback = AttributeWriteProtection::NewValueText;

// Tells the pending value, and so refuses every change at once.
std::optional<std::string> pendingText(Attribute& attribute) {
    const auto info = attribute.lookupNotifyInfo(typeid(NewValueInfo<int>));
    if (!info) return std::nullopt;
    return std::to_string(static_cast<NewValueInfo<int>&>(*info).getValue());
}

// Lets every change come through.
std::optional<std::string> noText(Attribute&) { return std::nullopt; }

// Notes the values that it is told of.
class ValueLog : public Counter {
public:
    Action::ExecReturn changedNotify(Observable& observable, Initiator& initiator) override {
        values.push_back(static_cast<Attr<int>&>(observable).get());
        return Counter::changedNotify(observable, initiator);
    }
    std::vector<int> values;
};

}  // namespace

TEST(AttributeWriteProtection, WatchesBothHalvesForItselfAlone) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, pendingText);
    EXPECT_EQ(protection->getName(), "AttributeWriteProtection");
    ASSERT_EQ(number->getNumPreObservers(), 1u);
    ASSERT_EQ(number->getNumPostObservers(), 1u);
    for (std::uint64_t i = 0; i < 2; ++i) {
        EXPECT_EQ(number->getPath(i).getPriority(), 100);
        EXPECT_TRUE(number->getPath(i).isTemporary());
        EXPECT_EQ(number->getPath(i).getActionName(), i == 0 ? "PreNotify" : "Notify");
    }
    EXPECT_EQ(protection->getNumObservedByMe(), 2u);
}

TEST(AttributeWriteProtection, WatchesNothingWithAnEmptyCallback) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, Callback{});
    ASSERT_NE(protection, nullptr);
    EXPECT_EQ(number->getNumPreObservers() + number->getNumPostObservers(), 0u);
    AttributeWriteProtection::Initiator nobody;
    EXPECT_THROW(protection->toChangeNotify(*number, nobody), std::bad_function_call);
}

TEST(AttributeWriteProtection, WatchesNothingWithoutAnAttribute) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(nullptr, noText);
    AttributeWriteProtection::Initiator nobody;
    EXPECT_EQ(protection->toChangeNotify(*number, nobody), Action::ExecDone);
    EXPECT_EQ(protection->changedNotify(*number, nobody), Action::ExecRefused);
}

// Refusing at once ------------------------------------------------------------------------------

TEST(AttributeWriteProtection, RefusesAChangeAndLogsIt) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, pendingText);
    const auto counter = watch(*number);
    LogCapture log;

    number->set(2);

    EXPECT_EQ(number->get(), 1);
    EXPECT_EQ(counter->told, 0);
    EXPECT_EQ(log.messages(3),
              Texts{"Trying to modify write protected attribute value. Original value: 1 "
                    "New requested value: 2"});
    EXPECT_EQ(log.messages(1).size(), 1u) << "of the error itself";
    EXPECT_STREQ(log.records.front().function,
                 "QOR::AttributeContainer::AttributeWriteProtection::toChangeNotify");
}

TEST(AttributeWriteProtection, LeavesAVetoForThoseAskedAfterIt) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, pendingText);
    std::optional<ErrorCode> code;
    const auto witness = std::make_shared<Actor>();
    witness->before = [&](Observable& observable, Actor::Initiator&) {
        const auto veto = observable.lookupNotifyInfo(typeid(InfoFailed));
        if (veto) code = static_cast<InfoFailed&>(*veto).getError()->getCode();
    };
    number->addPreObserver(*witness, 1, askAction, false);
    number->set(2);
    EXPECT_EQ(code, ErrorCode::WriteProtected);
    EXPECT_EQ(number->copyNotifyInfos(), nullptr);
}

TEST(AttributeWriteProtection, AnswersAsTheStepsOfARefusalGo) {
    auto number = attributeOf<int>(1);
    const auto refusing = AttributeWriteProtection::create(
        number, [](Attribute&) { return std::optional<std::string>{"9"}; });
    const auto lenient = AttributeWriteProtection::create(number, noText);
    AttributeWriteProtection::Initiator nobody;
    AttributeWriteProtection::Initiator self{*refusing};
    EXPECT_EQ(refusing->toChangeNotify(*number, nobody), Action::ExecRefused);
    EXPECT_EQ(refusing->toChangeNotify(*number, self), Action::ExecUnchanged);
    EXPECT_EQ(lenient->toChangeNotify(*number, nobody), Action::ExecUnchanged);
    const auto bell = std::make_shared<Bell>();
    number.reset();
    EXPECT_EQ(refusing->toChangeNotify(*bell, nobody), Action::ExecDone);
}

// Putting the value back ------------------------------------------------------------------------

TEST(AttributeWriteProtection, PutsAValueBackThatCameAsText) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, noText);
    LogCapture log;

    number->assignFrom("5");

    EXPECT_EQ(number->get(), 1);
    EXPECT_EQ(log.messages(3),
              Texts{"Trying to modify write protected attribute value. Original value: 1 "
                    "New requested value: 5"});
    EXPECT_STREQ(log.records.front().function,
                 "QOR::AttributeContainer::AttributeWriteProtection::changedNotify");
}

TEST(AttributeWriteProtection, PutsATextBackThoughItWasRefusedInVain) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(
        number, [](Attribute&) { return std::optional<std::string>{"5"}; });
    LogCapture log;
    number->assignFrom("5");
    EXPECT_EQ(number->get(), 1);
    EXPECT_EQ(log.messages(3).size(), 2u) << "once when asked, once when told";
}

TEST(AttributeWriteProtection, LetsStrongerObserversSeeAValueThatItPutsBack) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, noText);
    const auto strong = std::make_shared<ValueLog>();
    const auto weak = std::make_shared<ValueLog>();
    number->addObserver(*strong, 101, tellAction, false);
    number->addObserver(*weak, 1, tellAction, false);
    LogCapture log;

    number->set(5);

    EXPECT_EQ(number->get(), 1);
    EXPECT_EQ(strong->values, (std::vector<int>{5, 1}));
    EXPECT_EQ(weak->values, (std::vector<int>{1, 1}));
    EXPECT_EQ(log.messages(3).size(), 1u) << "the restoring store does not recurse";
}

TEST(AttributeWriteProtection, AssignsTheValueAgainAlsoWhenNothingHasChanged) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, noText);
    const auto counter = std::make_shared<Counter>();
    number->addObserver(*counter, 1, tellAction, false);
    LogCapture log;
    number->touch(nullptr, nullptr);
    EXPECT_EQ(counter->told, 2);
    EXPECT_EQ(log.messages(3),
              Texts{"Trying to modify write protected attribute value. Original value: 1 "
                    "New requested value: 1"});
}

TEST(AttributeWriteProtection, AnswersAsTheStepsOfARestoreGo) {
    auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, noText);
    AttributeWriteProtection::Initiator nobody;
    AttributeWriteProtection::Initiator self{*protection};
    EXPECT_EQ(protection->changedNotify(*number, self), Action::ExecUnchanged);
    EXPECT_EQ(protection->changedNotify(*number, nobody), Action::ExecRefused);
    const auto bell = std::make_shared<Bell>();
    number.reset();
    LogCapture log;
    EXPECT_EQ(protection->changedNotify(*bell, nobody), Action::ExecRefused);
    EXPECT_TRUE(log.records.empty());
}

// Two at a time, and the end --------------------------------------------------------------------

TEST(AttributeWriteProtection, EndsWhereTwoOfThemWantUnlikeValues) {
    const auto number = attributeOf<int>(1);
    const auto first = AttributeWriteProtection::create(number, noText);
    {
        const BlockObserver block;
        number->set(2);
    }
    const auto second = AttributeWriteProtection::create(number, noText);

    number->set(5);

    EXPECT_EQ(number->get(), 2) << "the second one is told last, of the store of the first";
}

TEST(AttributeWriteProtection, FreesTheAttributeAtItsEnd) {
    const auto number = attributeOf<int>(1);
    auto protection = AttributeWriteProtection::create(number, pendingText);
    protection.reset();
    EXPECT_EQ(number->getNumPreObservers() + number->getNumPostObservers(), 0u);
    number->set(2);
    EXPECT_EQ(number->get(), 2);
}

TEST(AttributeWriteProtection, DoesNotHoldItsAttribute) {
    auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, pendingText);
    EXPECT_EQ(number.use_count(), 1);
}

TEST(AttributeWriteProtection, MayBeLetGoByItsOwnCallback) {
    const auto number = attributeOf<int>(1);
    std::shared_ptr<AttributeWriteProtection> protection;
    protection = AttributeWriteProtection::create(number, [&](Attribute&) {
        protection.reset();
        return std::optional<std::string>{"2"};
    });
    number->set(2);
    EXPECT_EQ(number->get(), 1) << "its last word counts";
    number->set(3);
    EXPECT_EQ(number->get(), 3);
}

TEST(AttributeWriteProtection, AnswersAgainAfterARestoreThatFailed) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, noText);
    const auto thrower = std::make_shared<Actor>();
    thrower->after = [](Observable&, Actor::Initiator& initiator) {
        if (initiator) throw std::runtime_error("enough");
    };
    number->addObserver(*thrower, 1, tellAction, false);
    EXPECT_THROW(number->set(2), std::runtime_error);
    LogCapture log;
    EXPECT_THROW(number->set(3), std::runtime_error);
    EXPECT_EQ(log.messages(3).size(), 1u);
}

TEST(AttributeWriteProtection, DoesNotGoWithACopyOfTheContainer) {
    const auto mark = Mark::create();
    const auto count = std::static_pointer_cast<Attribute>(mark->Attr_Count().shared_from_this());
    const auto protection = AttributeWriteProtection::create(count, pendingText);
    const auto copy = std::static_pointer_cast<Mark>(mark->duplicate(CreateDeep));
    copy->Count(20);
    mark->Count(20);
    EXPECT_EQ(copy->Count(), 20);
    EXPECT_EQ(mark->Count(), 7);
}

TEST(AttributeWriteProtection, SeesNothingOfAChangeInsideABlock) {
    const auto number = attributeOf<int>(1);
    const auto protection = AttributeWriteProtection::create(number, pendingText);
    LogCapture log;
    const BlockObserver block;
    number->set(2);
    EXPECT_EQ(number->get(), 2);
    EXPECT_TRUE(log.records.empty());
}
