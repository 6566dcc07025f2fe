// Finding, adding and removing the elements of a container.
#include <AttributeContainer/kVAttrContainer.h>

#include "containers/UniqueNames.h"

#include <utility>

namespace QOR::AttributeContainer {

Attribute& AttrContainer::hardCodedAttribute(std::uint64_t token) const {
    Attribute* const attribute = attrList ? attrList->get(token).get() : nullptr;
    if (!attribute) throw std::out_of_range("invalid vector subscript");
    return *attribute;
}

const std::shared_ptr<Attribute>& AttrContainer::attributeAt(std::uint64_t token) const {
    static const std::shared_ptr<Attribute> none;
    if (attrList && token < attrList->size()) return attrList->get(token);
    return custAttrList ? custAttrList->get(token) : none;
}

const std::shared_ptr<Attribute>& AttrContainer::lookAtAttribute(std::uint64_t token) const {
    return attrList && token < attrList->size() ? attrList->look(token) : attributeAt(token);
}

std::weak_ptr<Attribute> AttrContainer::getAttribute(std::uint64_t token) {
    return attributeAt(token);
}

std::weak_ptr<const Attribute> AttrContainer::getAttribute(std::uint64_t token) const {
    return attributeAt(token);
}

std::weak_ptr<Attribute> AttrContainer::getAttribute(const std::string& name) {
    return attributeAt(getAttrToken(name));
}

std::weak_ptr<const Attribute> AttrContainer::getAttribute(const std::string& name) const {
    return attributeAt(getAttrToken(name));
}

std::weak_ptr<AttrContainer> AttrContainer::getField(std::uint64_t token) {
    return fieldList ? fieldList->getAttrContainer(token) : std::weak_ptr<AttrContainer>{};
}

std::weak_ptr<const AttrContainer> AttrContainer::getField(std::uint64_t token) const {
    return fieldList ? std::as_const(*fieldList).getAttrContainer(token)
                     : std::weak_ptr<const AttrContainer>{};
}

std::weak_ptr<AttrContainer> AttrContainer::getField(const std::string& name) {
    return getField(getFieldToken(name));
}

std::weak_ptr<const AttrContainer> AttrContainer::getField(const std::string& name) const {
    return getField(getFieldToken(name));
}

std::uint64_t AttrContainer::getNumHardCodedAttributes() const {
    return attrList ? attrList->size() : 0;
}

std::uint64_t AttrContainer::getNumAttributes() const {
    return getNumHardCodedAttributes() + (custAttrList ? custAttrList->size() : 0);
}

std::uint64_t AttrContainer::getNumFields() const {
    return fieldList ? fieldList->size() : 0;
}

// Custom attributes -----------------------------------------------------------------------------

std::weak_ptr<Attribute> AttrContainer::addAttribute(std::shared_ptr<Attribute> attribute,
                                                     const std::string& name) {
    auto* const custom = dynamic_cast<CustomAttribute*>(attribute.get());
    if (!custom || !isNameValid(name) || !isNameUnique(name)) return {};
    custom->setLocation(*this);
    if (!custAttrList) custAttrList = std::make_unique<CustAttrList>(getMaxAttrToken() + 1);
    auto added = custAttrList->addElement(attribute, name);
    if (custAttrList->empty()) custAttrList.reset();
    return added;
}

bool AttrContainer::rmAttribute(const std::string& name) {
    if (!custAttrList) return false;
    const std::uint64_t token = custAttrList->getToken(name);
    if (token == noToken) return false;
    UniqueNames::forget(*this);
    const auto removed = custAttrList->get(token);
    if (!custAttrList->rmElement(token, true)) return false;
    auto* const custom = dynamic_cast<CustomAttribute*>(removed.get());
    const auto location = removed ? removed->getLocation() : std::nullopt;
    if (custom && location && &location->get() == this) custom->setLocation(std::nullopt);
    return true;
}

bool AttrContainer::rmAllCustomAttributes() {
    UniqueNames::forget(*this);
    const auto removed = std::move(custAttrList);
    for (std::uint64_t i = 0; removed && i < removed->size(); ++i) {
        const auto& attribute = removed->get(removed->getFirstToken() + i);
        auto* const custom = dynamic_cast<CustomAttribute*>(attribute.get());
        if (!custom || attribute.use_count() == 1) continue;
        const auto location = attribute->getLocation();
        if (location && &location->get() == this) custom->setLocation(std::nullopt);
    }
    return true;
}

// Fields ----------------------------------------------------------------------------------------

bool AttrContainer::addField(std::shared_ptr<AttrContainer> field, const std::string& name,
                             int addFlags) {
    if (!field) return false;
    std::string working = name.empty() ? field->getName() : name;
    if ((addFlags & AddFlags::SkipNameTest) == 0 && !isNameUnique(working)) {
        if ((addFlags & AddFlags::MakeNameUnique) == 0) return false;
        working = generateUniqueName(working);
    }
    if (!fields().addElement(field, working)) return false;
    field->attachToParent(self());
    return true;
}

bool AttrContainer::setField(std::uint64_t token, std::shared_ptr<AttrContainer> field) {
    if (!fieldList) return false;
    if (!field) UniqueNames::forget(*this);
    const auto old = fieldList->get(token);
    if (old) old->detachFromParent(self());
    if (!fieldList->setElement(token, field)) return false;
    if (field) field->attachToParent(self());
    return true;
}

bool AttrContainer::replaceField(std::shared_ptr<AttrContainer> old,
                                 std::shared_ptr<AttrContainer> replacement) {
    if (!old || !replacement || !fieldList) return false;
    if (!fieldList->replaceField(old, replacement)) return false;
    old->detachFromParent(self());
    replacement->attachToParent(self());
    return true;
}

bool AttrContainer::rmField(std::uint64_t token) {
    if (!fieldList) return false;
    UniqueNames::forget(*this);
    const auto field = fieldList->get(token);
    if (field) field->detachFromParent(self());
    return fieldList->rmElement(token, true);
}

bool AttrContainer::rmField(const std::string& name) {
    const std::uint64_t token = getFieldToken(name);
    return token != noToken && rmField(token);
}

bool AttrContainer::rmField(std::shared_ptr<AttrContainer> field) {
    if (!fieldList || !field) return false;
    if (getFieldToken(*field) == noToken) return false;
    UniqueNames::forget(*this);
    field->detachFromParent(self());
    const bool removed = fieldList->rmElement(field, true);
    if (fieldList->empty()) fieldList.reset();
    return removed;
}

bool AttrContainer::rmAllCustomFields() {
    const std::uint64_t first = getMaxFieldToken() + 1;
    while (fieldList && fieldList->size() > first)
        if (!rmField(fieldList->getFirstToken() + fieldList->size() - 1)) break;
    return true;
}

}  // namespace QOR::AttributeContainer
