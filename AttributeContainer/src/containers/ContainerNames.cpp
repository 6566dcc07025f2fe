// The name of a container, and the guard over it.
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/Text.h>

#include "attributes/AsTyped.h"
#include "containers/UniqueNames.h"

#include <algorithm>
#include <cctype>
#include <cwctype>
#include <typeinfo>

namespace QOR::AttributeContainer {

namespace {
bool isMark(char character) {
    return character == '_' || character == '-' || character == '.';
}

bool isNameCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || isMark(character);
}
}  // namespace

std::string AttrContainer::getName() const {
    const Attribute* const first = attrList ? attrList->get(0).get() : nullptr;
    const auto* const attribute = first ? asTyped<std::string>(*first) : nullptr;
    return attribute ? attribute->get() : std::string{};
}

const std::string& AttrContainer::name() const {
    return typedAttribute<std::string>(0).get();
}

void AttrContainer::name(const std::string& newName) {
    typedAttribute<std::string>(0).set(newName);
}

std::string AttrContainer::getDisplayName() const {
    return getName();
}

ErrorPtr AttrContainer::setDisplayName(const std::string& newName) {
    return setName(newName);
}

bool AttrContainer::isNameValid(const std::string& name) {
    return !name.empty() && std::ranges::all_of(name, isNameCharacter);
}

bool AttrContainer::makeNameValid(std::string& name) {
    if (name.empty()) return false;
    // The wide test, where `isNameValid` has the narrow one: above ASCII the two can differ, and
    // names that are stored were made by this one.
    std::ranges::replace_if(
        name,
        [](char character) {
            return std::iswalnum(static_cast<unsigned char>(character)) == 0 && !isMark(character);
        },
        '_');
    return true;
}

bool AttrContainer::isNameUnique(const std::string& name) const {
    return inqObserver(name).expired();
}

ErrorPtr AttrContainer::checkName(const std::string& name) const {
    if (isNameValid(name)) return nullptr;
    return addErrorInfo(QOR_ERROR(InvalidName, "AttrContainer::checkName"), {"CheckedName", name});
}

std::string AttrContainer::generateUniqueName(const std::string& name) const {
    const std::string candidate = isNameValid(name) ? name : getClassName();
    if (isNameUnique(candidate)) return candidate;
    std::string found = UniqueNames::resume(*this, candidate);
    while (!isNameUnique(found)) incrementIndex(found);
    UniqueNames::remember(*this, candidate, found);
    return found;
}

ErrorPtr AttrContainer::setName(const std::string& newName) {
    if (auto error = checkName(newName)) return error;
    typedAttribute<std::string>(0).set(newName, shared_from_this());
    return nullptr;
}

std::string AttrContainer::toTarvoName(const std::string& name) const {
    std::string result = name;
    const auto isRefused = [this](const std::string& text) {
        const auto error = checkName(text);
        return error && !error->isWarning();
    };
    if (!isRefused(result)) return result;
    std::ranges::replace_if(result, [](char character) { return !isNameCharacter(character); }, '_');
    return isRefused(result) ? "Object" : result;
}

Action::ExecReturn AttrContainer::toChangeNotify(Observable& observable, Initiator& initiator) {
    auto* const attribute = dynamic_cast<Attribute*>(&observable);
    if (!attribute) return Observer::toChangeNotify(observable, initiator);
    const bool isOwnName = attrList && attrList->get(0).get() == attribute;
    if (!isOwnName && attribute->getToken() != 0) return Action::ExecDone;
    const auto* const nameAttribute = asTyped<std::string>(*attribute);
    if (!nameAttribute) return Action::ExecDone;
    const auto info = attribute->lookupNotifyInfo(typeid(NewValueInfo<std::string>));
    if (!info) return Action::ExecDone;
    const std::string& newName = static_cast<NewValueInfo<std::string>&>(*info).getValue();
    const std::string current = nameAttribute->get();
    if (compareIgnoreCase(current, newName) == 0) return Action::ExecDone;
    auto error = checkName(newName);
    if (!error) return Action::ExecDone;
    error = addErrorInfo(std::move(error), {"CurrentName", current});
    error = addErrorInfo(std::move(error), {"NewName", newName});
    attribute->addNotifyInfo(std::make_shared<InfoFailed>(std::move(error)));
    return Action::ExecRefused;
}

std::weak_ptr<const ObservingObject> AttrContainer::inqObserver(
    const std::optional<const std::string>& path) const {
    if (path) {
        if (const auto& attribute = attributeAt(getAttrToken(*path))) return attribute;
        if (const auto field = getField(getFieldToken(*path)).lock()) return field;
    }
    return Observer::inqObserver(path);
}

}  // namespace QOR::AttributeContainer
