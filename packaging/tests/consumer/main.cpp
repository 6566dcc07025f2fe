// The smallest host: makes an object through the factory and asks it for its name.

#include <AttributeContainer/AttributeContainer.h>

#include <iostream>

int main() {
    const auto object = QOR::AttributeContainer::FieldFactory::the()->createField("Object");
    if (!object || object->getAttrToken("UUID") != 5) return 1;
    std::cout << "made " << object->getName() << '\n';
}
