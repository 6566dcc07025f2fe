// Asks the factory for containers before main.

#include "early.h"

#include <AttributeContainer/AttributeContainer.h>

#include <memory>

namespace AC = QOR::AttributeContainer;

namespace {

const std::shared_ptr<AC::AttrContainer> made = AC::FieldFactory::the()->createField("Object");
const bool isThere = checkEarly(made != nullptr, "the factory knows Object");
const bool isObject = checkEarly(std::dynamic_pointer_cast<AC::Object>(made) != nullptr,
                                 "what the factory makes of Object is one");
const bool unknownIsEmpty =
    checkEarly(AC::FieldFactory::the()->createField("NoSuchClass") == nullptr,
               "the factory gives nothing for a name that it does not know");

}  // namespace

bool factoryUserIsSound() { return made && made->getName() == "Object"; }
