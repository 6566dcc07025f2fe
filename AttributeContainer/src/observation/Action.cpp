#include <AttributeContainer/Action.h>

#include <AttributeContainer/ActionContainer.h>
#include <AttributeContainer/Observer.h>

namespace QOR::AttributeContainer {

namespace {
bool isInitiator(const Action::Initiator& initiator, const Observer& observer) {
    return initiator && &initiator->get() == static_cast<const ObservingObject*>(&observer);
}
}  // namespace

const std::string& Action::getStaticClassName() {
    static const std::string name{"Action"};
    return name;
}

const std::string& Action::getClassName() const { return getStaticClassName(); }

Action::~Action() = default;

std::string Action::getName() const {
    return ActionContainer::the()->getName(token).value_or(std::string{});
}

Action::ExecReturn ActionNotify::execute(Observable& observable, Observer& observer,
                                         Initiator initiator) {
    if (isInitiator(initiator, observer)) return ExecUnchanged;
    return observer.changedNotify(observable, initiator);
}

Action::ExecReturn ActionPreNotify::execute(Observable& observable, Observer& observer,
                                            Initiator initiator) {
    if (isInitiator(initiator, observer)) return ExecUnchanged;
    return observer.toChangeNotify(observable, initiator);
}

Action::ExecReturn ActionCorrespondenceBase::execute(Observable&, Observer&, Initiator) {
    return ExecDone;
}

}  // namespace QOR::AttributeContainer
