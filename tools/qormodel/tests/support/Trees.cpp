#include "support/Trees.h"

#include "support/Sample.h"

#include "model/Elements.h"
#include "model/ModelPath.h"
#include "model/Values.h"

#include <AttributeContainer/Attr.h>

#include <utility>

namespace qormodel::testing {

namespace {
template <class T> void putValue(ac::AttrContainer& container, const std::string& name, T value) {
    auto attribute = std::dynamic_pointer_cast<ac::Attr<T>>(container.getAttribute(name).lock());
    if (!attribute) {
        attribute = std::make_shared<ac::CustAttr<T>>(std::nullopt);
        container.addAttribute(attribute, name);
    }
    attribute->set(std::move(value));
}
}  // namespace

Document makeDocument(const std::string& name) {
    Document document;
    document.file = "made here";
    document.root = ac::Object::create();
    document.root->name(name);
    return document;
}

std::shared_ptr<ac::Object> addObject(ac::Object& parent, const std::string& name, int id) {
    auto object = ac::Object::create();
    object->name(name);
    QOR::uuids::uuid::Bytes bytes{};
    bytes.back() = static_cast<std::uint8_t>(id);
    object->setUuid(QOR::uuids::uuid(bytes));
    parent.addChild(object, 0);
    return object;
}

std::shared_ptr<ac::AttrContainer> addField(ac::AttrContainer& holder, const std::string& name) {
    auto field = ac::AttrContainer::create();
    field->name(name);
    holder.addField(field, name, 0);
    return field;
}

void put(ac::AttrContainer& container, const std::string& name, int value) {
    putValue(container, name, value);
}

void put(ac::AttrContainer& container, const std::string& name, const std::string& value) {
    putValue(container, name, value);
}

std::string textWithoutRelation() {
    const std::string relation =
        "PostObserver \nObserverPath { \nPath \"/\"\nPriority 3\nAction \"Notify\"\n}\n";
    std::string text = projectText;
    return text.erase(text.find(relation), relation.size());
}

std::string textWithUnknown(const std::string& word) {
    const auto container = [](const std::string& name) {
        return "AttrContainer { \nAttr<String> { \nName \"Name\"\nValue \"" + name + "\"\n}\n}\n";
    };
    return modelText(container("Root") + "Child { \n\"Radar\" \"r\"\n" + word + " 5\n" +
                     container("r") + "}\n");
}

std::uint64_t numRelations(const Document& document) {
    const auto found = inqAttribute(document, "/Scans/Count");
    return found ? found->attribute->getNumPostObservers() : 0;
}

std::string valueAt(const Document& document, const std::string& path) {
    const auto found = inqAttribute(document, path);
    return found ? valueText(*found->attribute) : "none";
}

std::string pathsOf(const Document& document) {
    std::string paths;
    forEachElement(document.root, [&](const Element& element) {
        paths += element.path + '\n';
        return true;
    });
    return paths;
}

}  // namespace qormodel::testing
