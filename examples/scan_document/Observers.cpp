#include "Observers.h"

#include "ErrorText.h"

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/ObserverInfo.h>
#include <QOR/ErrorCode.h>

#include <cstdint>
#include <iostream>
#include <memory>
#include <utility>

namespace example {

using model::Action;

Action::ExecReturn ChangePrinter::changedNotify(model::Observable& observable, Initiator&) {
    const auto* const attribute = dynamic_cast<const model::Attr<std::uint64_t>*>(&observable);
    if (!attribute) return Action::ExecUnchanged;
    std::cout << "  changed: " << attribute->inqObjPath().value_or(attribute->getName())
              << " is now " << attribute->get() << '\n';
    return Action::ExecDone;
}

Action::ExecReturn NameGuard::toChangeNotify(model::Observable& observable, Initiator&) {
    // The value that is about to come hangs on the observable for as long as its observers are
    // asked.
    const auto info = std::dynamic_pointer_cast<model::NewValueInfo<std::string>>(
        observable.lookupNotifyInfo(typeid(model::NewValueInfo<std::string>)));
    if (!info) return Action::ExecUnchanged;
    const std::string& newName = info->getValue();
    if (!newName.empty() && !newName.starts_with("tmp")) return Action::ExecDone;

    auto error = model::makeError(__FILE__, __LINE__, model::ErrorCode::InvalidName,
                                  "NameGuard::toChangeNotify");
    error->setDescription("\"" + newName + "\" is no name for a scan");
    std::cout << "  refused: " << describe(*error) << '\n';
    // This is the veto. What the action returns is only for those who ask for the results.
    observable.addNotifyInfo(std::make_shared<model::InfoFailed>(std::move(error)));
    return Action::ExecRefused;
}

}  // namespace example
