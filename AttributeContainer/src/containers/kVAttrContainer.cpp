#include <AttributeContainer/kVAttrContainer.h>

#include "containers/ObserverObservable.h"
#include "containers/Teardown.h"
#include "containers/UniqueNames.h"

#include <map>
#include <utility>

namespace QOR::AttributeContainer {

const AttrContainer::Flags AttrContainer::nullFlags{};

AttrContainer::AttrContainer(const ConstructorProtector&, CreateType, const Source&)
    : Observer(std::nullopt) {}

AttrContainer::~AttrContainer() {
    UniqueNames::forget(*this);
    if (!fieldList) return;
    for (std::uint64_t i = 0; i < fieldList->size(); ++i) {
        std::shared_ptr<AttrContainer> field = fieldList->get(fieldList->getFirstToken() + i);
        fieldList->setElement(fieldList->getFirstToken() + i, nullptr);
        releaseInTurn(std::move(field));
    }
}

std::shared_ptr<AttrContainer> AttrContainer::create(CreateType type, Source source) {
    const auto container = std::make_shared<AttrContainer>(ConstructorProtector{}, type, source);
    container->init(type, source);
    return container;
}

const std::string& AttrContainer::getStaticClassName() {
    static const std::string name{"AttrContainer"};
    return name;
}

const std::string& AttrContainer::getClassName() const {
    return getStaticClassName();
}

std::shared_ptr<AttrContainer> AttrContainer::self() {
    return std::static_pointer_cast<AttrContainer>(shared_from_this());
}

void AttrContainer::init(CreateType type, const Source& source) {
    if (!attrList) {
        const BlockUpdateObservers block(source ? self() : nullptr);
        createAttributes(ownDefinitions(), type, source);
        if (!source) {
            name(getClassName());
        } else {
            const AttrContainer& from = source->get();
            if (from.custAttrList) copyCustomAttributes(*from.custAttrList, type);
            if (from.fieldList) {
                fieldList = std::make_unique<FieldList>(0);
                fieldList->createAttrContainer(*this, *from.fieldList, type);
            }
            copyFrom(from);
        }
    }
    observerObservable.reset();
    const auto& nameAttribute = attrList->get(0);
    if (nameAttribute) nameAttribute->addPreObserver(*this, 100, 1, true);
}

void AttrContainer::copyCustomAttributes(const CustAttrList& source, CreateType type) {
    custAttrList = std::make_unique<CustAttrList>(getMaxAttrToken() + 1);
    for (std::uint64_t i = 0; i < source.size(); ++i) {
        const std::uint64_t token = source.getFirstToken() + i;
        const auto& from = source.get(token);
        if (!from) continue;
        auto copy = from->duplicate(type, std::nullopt);
        if (auto* const custom = dynamic_cast<CustomAttribute*>(copy.get()))
            custom->setLocation(*this);
        custAttrList->addElement(copy, source.getElementName(token).value_or(std::string{}));
    }
}

std::shared_ptr<AttrContainer> AttrContainer::duplicate(CreateType type) const {
    return create(type, type == CreateEmpty ? Source{} : Source{*this});
}

std::shared_ptr<AttrContainer> AttrContainer::duplicateAll(CreateType type) const {
    return duplicate(type);
}

std::shared_ptr<AttrContainer> AttrContainer::checkCreateChildField(const std::string&,
                                                                    const std::string&,
                                                                    std::uint64_t*) {
    return nullptr;
}

std::shared_ptr<AttrContainer> AttrContainer::checkCreateDefaultChildField(const std::string&,
                                                                           const std::string&,
                                                                           std::uint64_t*) {
    return nullptr;
}

SVec2d<int> AttrContainer::lookupToken(AttrContainer*) const {
    return {-1, -1};
}

std::weak_ptr<AttrContainer> AttrContainer::lookupField(const SVec2d<int>&) const {
    return {};
}

std::uint64_t AttrContainer::convertToNewFieldToken(std::uint64_t) const {
    return noToken;
}

void AttrContainer::attachToParent(std::shared_ptr<AttrContainer>) {}

bool AttrContainer::detachFromParent(std::shared_ptr<AttrContainer>) {
    return false;
}

std::uint64_t AttrContainer::getInstanceIdentifier() const {
    return reinterpret_cast<std::uintptr_t>(this);
}

void AttrContainer::setIsSerialized(bool value) {
    flags.bits = value ? Flags::isSerialized : 0;
}

Observable& AttrContainer::ownObservable() {
    if (!observerObservable)
        observerObservable =
            std::make_shared<ObserverObservable>(std::static_pointer_cast<Observer>(self()));
    return *observerObservable;
}

// Side containers -------------------------------------------------------------------------------

namespace {
// By identity, so that a container needs no member for what few of them have.
std::map<std::uint64_t, std::weak_ptr<AttrContainer>>& sideContainers() {
    static std::map<std::uint64_t, std::weak_ptr<AttrContainer>> containers;
    return containers;
}
}  // namespace

void AttrContainer::addAttrContInfo(std::shared_ptr<AttrContainer> info) {
    rmAttrContInfo();
    if (info) sideContainers().emplace(getInstanceIdentifier(), info);
}

std::weak_ptr<AttrContainer> AttrContainer::lookupAttrContInfo() const {
    const auto found = sideContainers().find(getInstanceIdentifier());
    return found != sideContainers().end() ? found->second : std::weak_ptr<AttrContainer>{};
}

void AttrContainer::rmAttrContInfo() {
    sideContainers().erase(getInstanceIdentifier());
}

}  // namespace QOR::AttributeContainer
