#include "Settings.h"

#include <AttributeContainer/FieldFactory.h>

namespace settings {

namespace {

// The fields of new settings are made by the factory, which knows their classes from here.
const auto windowRegistered = FieldFactory::addField<Window>(Window::getStaticClassName());
const auto scanningRegistered = FieldFactory::addField<Scanning>(Scanning::getStaticClassName());

}  // namespace

}  // namespace settings
