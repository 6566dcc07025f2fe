// The one action that knows what an attribute is.
#include <AttributeContainer/Action.h>

#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/AttributePropagationObserver.h>

namespace QOR::AttributeContainer {

Action::ExecReturn ActionPropagate::execute(Observable& observable, Observer& observer,
                                            Initiator initiator) {
    if (initiator && &initiator->get() == static_cast<ObservingObject*>(&observer))
        return ExecUnchanged;
    auto& source = dynamic_cast<Attribute&>(observable);
    const auto target = dynamic_cast<AttributePropagationObserver&>(observer).getAttribute();
    if (!target) return ExecRefused;
    return propagateValue(source, *target, initiator);
}

Action::ExecReturn ActionPropagate::propagateValue(Attribute& source, Attribute& target,
                                                   Initiator) {
    const auto self = source.shared_from_this();
    const auto kept = target.weak_from_this().lock();
    if (target.getNumPreObservers() > 0) {
        target.preTouch(self, nullptr);
        if (target.lookupNotifyInfo(typeid(InfoFailed))) {
            target.removeNotifyInfos(false);
            return ExecUnchanged;
        }
    }
    target = source;
    target.touch(self, nullptr);
    return ExecDone;
}

}  // namespace QOR::AttributeContainer
