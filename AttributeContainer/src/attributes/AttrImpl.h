// The bodies of the typed attributes, for the one source file that makes the instances.
#pragma once

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "attributes/AsTyped.h"
#include "attributes/MakeAttribute.h"
#include "attributes/SameValue.h"
#include "observation/SpareAllocator.h"

#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace QOR::AttributeContainer {

namespace detail {
// Never destroyed: values change to the very end of a program.
union Nobody {
    constexpr Nobody() : initiator() {}
    ~Nobody() {}

    std::shared_ptr<ObservingObject> initiator;
};
inline constinit Nobody nobody;
}  // namespace detail

template <AttrValue T>
Attr<T>::Attr(const std::optional<std::reference_wrapper<const Attribute>>& source)
    : Attribute(source), value(std::make_unique<AttrVal<T>>()) {}

template <AttrValue T>
Attr<T>::Attr(const std::optional<std::reference_wrapper<const Attribute>>& source,
              AttrVal<T>& holder)
    : Attribute(source), value(&holder) {}

template <AttrValue T>
void Attr<T>::endValue() {
    std::destroy_at(value.release());
}

template <AttrValue T>
Attr<T>::~Attr() = default;

template <AttrValue T>
const std::string& Attr<T>::getStaticClassName() {
    return getAttrClassName(attrTypeOf<T>);
}

template <AttrValue T>
const std::string& Attr<T>::getClassName() const {
    return getStaticClassName();
}

template <AttrValue T>
const T& Attr<T>::getCached() const {
    if (const auto cached = std::dynamic_pointer_cast<Attr<T>>(lookupCachedAttribute()))
        return *cached->value->AttrVal<T>::read();  // the info keeps it while it is pending
    return *value->AttrVal<T>::read();
}

template <AttrValue T>
void Attr<T>::store(const T& newValue) {
    if (value->AttrVal<T>::read() == &newValue) return;
    *value->AttrVal<T>::access() = newValue;
    if constexpr (std::same_as<T, std::string>) stored();
}

template <AttrValue T>
void Attr<T>::set(const T& newValue) {
    set(newValue, detail::nobody.initiator);
}

template <AttrValue T>
void Attr<T>::set(const T& newValue, const std::shared_ptr<ObservingObject>& initiator) {
    // The common change: nobody who waits for answers, nothing unusual on this thread.
    if (tempFlags() != 0) [[unlikely]]
        return setByFlags(newValue, initiator);
    if (getNumPreObservers() > 0) return setAsking(newValue, initiator);
    store(newValue);
    touch(initiator, nullptr);
}

template <AttrValue T>
void Attr<T>::setAsking(const T& newValue, const std::shared_ptr<ObservingObject>& initiator) {
    std::shared_ptr<ObserverInfo> info =
        std::allocate_shared<NewValueInfo<T>>(SpareAllocator<NewValueInfo<T>>{}, newValue);
    if (!askFirst(typeid(NewValueInfo<T>), std::move(info), initiator, nullptr)) return;
    store(newValue);
    touch(initiator, nullptr);
}

template <AttrValue T>
void Attr<T>::setByFlags(const T& newValue, const std::shared_ptr<ObservingObject>& initiator) {
    ResultPromise noPre;
    ResultPromise noPost;
    set(newValue, initiator, noPre, noPost);
}

template <AttrValue T>
void Attr<T>::set(const T& newValue, const std::shared_ptr<ObservingObject>& initiator,
                  ResultPromise& preResults, ResultPromise& postResults) {
    // Both words as they are now: observers may change them while they are asked.
    const bool blocked = isObservingBlocked();
    const bool pending = isCachedAttributePending();
    ResultPromise pre = std::move(preResults);  // deleted at the end on every way out
    ResultPromise post = std::move(postResults);
    if (!blocked) {
        std::shared_ptr<ObserverInfo> info;
        if (getNumPreObservers() > 0) info = std::make_shared<NewValueInfo<T>>(newValue);
        if (!runPreHalf(typeid(NewValueInfo<T>), std::move(info), initiator, pre)) return;
    }
    const auto consumed = pending ? takeCachedAttribute() : nullptr;  // may hold `newValue`
    store(newValue);
    if (!blocked) runPostHalf(initiator, post);
}

template <AttrValue T>
void Attr<T>::touch(const std::shared_ptr<ObservingObject>& initiator,
                    std::vector<NotificationResult>* results) {
    if (tempFlags() != 0) {
        if (isCachedAttributePending()) {
            const auto cached = std::dynamic_pointer_cast<Attr<T>>(takeCachedAttribute());
            if (cached) store(*cached->value->AttrVal<T>::read());
        }
        if (isObservingBlocked()) return;
    }
    if (isQuiet()) return;
    Attribute::touch(initiator, results);
}

template <AttrValue T>
std::shared_ptr<Attribute> Attr<T>::duplicate(CreateType type, Location location) const {
    std::optional<std::reference_wrapper<const Attribute>> source;
    if (type != CreateEmpty) source = *this;
    return makeAttribute(attrTypeOf<T>, source, location);
}

namespace detail {
/// The same vector in another precision; empty where T has no such sibling.
template <class T>
struct OtherPrecision {
    using type = void;
};
template <>
struct OtherPrecision<Vec3d<float>> {
    using type = Vec3d<double>;
};
template <>
struct OtherPrecision<Vec3d<double>> {
    using type = Vec3d<float>;
};
}  // namespace detail

template <AttrValue T>
Attr<T>& Attr<T>::operator=(const Attribute& other) {
    if (const auto* const same = asTyped<T>(other)) {
        set(same->get());
        return *this;
    }
    using Other = typename detail::OtherPrecision<T>::type;
    if constexpr (!std::is_void_v<Other>) {
        if (const auto* const wide = dynamic_cast<const Attr<Other>*>(&other)) {
            using Component = typename T::value_type;
            const Other& from = wide->get();
            set(T(static_cast<Component>(from.x), static_cast<Component>(from.y),
                  static_cast<Component>(from.z)));
            return *this;
        }
    }
    Attribute::assignFrom(other.getValueString());
    return *this;
}

template <AttrValue T>
bool Attr<T>::operator==(const Attribute& other) const {
    const auto* const same = asTyped<T>(other);
    return same && (same == this || sameValue(get(), same->get()));
}

// The two kinds of place ------------------------------------------------------------------------

template <AttrValue T>
HardCodedAttr<T>::HardCodedAttr(const AttrContainer& container,
                                const std::optional<std::reference_wrapper<const Attribute>>& source)
    : Attr<T>(source), HardCodedAttribute(container) {
    if (source) Attr<T>::operator=(source->get());
}

template <AttrValue T>
HardCodedAttr<T>::HardCodedAttr(const HardCodedAttribute::Place& shared, AttrVal<T>& holder,
                                const std::optional<std::reference_wrapper<const Attribute>>& source)
    : Attr<T>(source, holder), HardCodedAttribute(shared) {
    if (!source) return;
    try {
        Attr<T>::operator=(source->get());
    } catch (...) {
        Attr<T>::endValue();  // what is not made is not ended as a whole
        throw;
    }
}

template <AttrValue T>
HardCodedAttr<T>::~HardCodedAttr() {
    if (isPlaceShared()) Attr<T>::endValue();
}

template <AttrValue T>
Attribute::Location HardCodedAttr<T>::getLocation() const {
    return container().getLocation();
}

template <AttrValue T>
const AttrDefinition* HardCodedAttr<T>::getDefinition() const {
    return HardCodedAttribute::getDefinition(*this);
}

template <AttrValue T>
std::string HardCodedAttr<T>::getName() const {
    return HardCodedAttribute::getName(*this);
}

template <AttrValue T>
std::uint64_t HardCodedAttr<T>::getToken() const {
    return HardCodedAttribute::getToken(*this);
}

template <AttrValue T>
void HardCodedAttr<T>::stored() const {
    // The text may be a name, and lists of children go by names.
    if constexpr (std::same_as<T, std::string>) {
        if (const AttrContainer* const living = container().get()) living->textStored(*this);
    }
}

template <AttrValue T>
CustAttr<T>::CustAttr(const std::optional<std::reference_wrapper<const Attribute>>& source)
    : Attr<T>(source) {
    if (!source) return;
    location.set(source->get().getLocation());
    Attr<T>::operator=(source->get());
}

template <AttrValue T>
CustAttr<T>::~CustAttr() = default;

template <AttrValue T>
Attribute::Location CustAttr<T>::getLocation() const {
    return location.getLocation();
}

template <AttrValue T>
const AttrDefinition* CustAttr<T>::getDefinition() const {
    return nullptr;
}

template <AttrValue T>
std::string CustAttr<T>::getName() const {
    return CustomAttribute::getName(*this);
}

template <AttrValue T>
std::uint64_t CustAttr<T>::getToken() const {
    return CustomAttribute::getToken(*this);
}

}  // namespace QOR::AttributeContainer
