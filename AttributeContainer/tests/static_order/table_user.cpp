// Reads the definition tables before main.

#include "early.h"

#include <AttributeContainer/AttributeContainer.h>

#include <memory>

namespace AC = QOR::AttributeContainer;

namespace {

const std::shared_ptr<AC::Object> object = AC::Object::create();
const bool named = checkEarly(object->getName() == "Object", "an object is named after its class");
const bool ownToken = checkEarly(object->getAttrToken("UUID") == 5, "UUID has the token 5");
const bool baseToken = checkEarly(object->getAttrToken("Name") == 0, "Name has the token 0");
const AC::AttrDefinition* const definition = object->getAttrDefinition(5);
const bool ownRow = checkEarly(definition && definition->name == "UUID", "row 5 is that of UUID");

}  // namespace

bool tableUserIsSound() {
    return object->getAttrDefinition(5) == definition && object->getAttrToken("UUID") == 5;
}
