// Small observers for tests, each with one habit.
#pragma once

#include <AttributeContainer/ActionToken.h>
#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/Observer.h>

#include <QOR/ErrorCode.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// The tokens of the two actions that ask and tell.
inline constexpr std::uint64_t tellAction = ActionToken::Notify;
inline constexpr std::uint64_t askAction = ActionToken::PreNotify;

/// Counts how often it is asked and told.
class Counter : public Observer {
public:
    Counter() : Observer(std::nullopt) {}

    std::string getName() const override { return "Counter"; }
    Action::ExecReturn toChangeNotify(Observable&, Initiator&) override {
        ++asked;
        return Action::ExecDone;
    }
    Action::ExecReturn changedNotify(Observable&, Initiator&) override {
        ++told;
        return Action::ExecDone;
    }

    int asked = 0;
    int told = 0;
};

/// Refuses every change.
class Refuser : public Counter {
public:
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator) override {
        Counter::toChangeNotify(observable, initiator);
        observable.addNotifyInfo(std::make_shared<InfoFailed>(
            makeError(__FILE__, __LINE__, ErrorCode::WriteProtected, "Refuser")));
        return Action::ExecRefused;
    }
};

/// Does what a test tells it, before and after a change.
class Actor : public Counter {
public:
    using Deed = std::function<void(Observable&, Initiator&)>;

    Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator) override {
        if (before) before(observable, initiator);
        return Counter::toChangeNotify(observable, initiator);
    }
    Action::ExecReturn changedNotify(Observable& observable, Initiator& initiator) override {
        if (after) after(observable, initiator);
        return Counter::changedNotify(observable, initiator);
    }

    Deed before;
    Deed after;
};

/// A new observer that is asked before and told after each change of `observable`. The relation
/// ends with the observer.
template <class Kind = Counter>
std::shared_ptr<Kind> watch(Observable& observable) {
    const auto observer = std::make_shared<Kind>();
    observable.addPreObserver(*observer, 5, askAction, true);
    observable.addObserver(*observer, 5, tellAction, true);
    return observer;
}

}  // namespace QOR::AttributeContainer::Testing
