// Who watches the document: one observer that is told of changes, and one that is asked first.
#pragma once

#include <AttributeContainer/Observer.h>

#include <string>

namespace example {

namespace model = QOR::AttributeContainer;

/// Prints every change of the numbers it is told of.
class ChangePrinter : public model::Observer {
public:
    ChangePrinter() : Observer(std::nullopt) {}
    std::string getName() const override { return "ChangePrinter"; }
    /// Called behind a change; `observable` has its new value already.
    model::Action::ExecReturn changedNotify(model::Observable& observable,
                                            Initiator& initiator) override;
};

/// Refuses names that are empty or begin with "tmp", and prints what it refuses.
class NameGuard : public model::Observer {
public:
    NameGuard() : Observer(std::nullopt) {}
    std::string getName() const override { return "NameGuard"; }
    /// Called ahead of a change; `observable` still has its old value.
    model::Action::ExecReturn toChangeNotify(model::Observable& observable,
                                             Initiator& initiator) override;
};

}  // namespace example
