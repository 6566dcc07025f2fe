// The typed attributes: a value of one type, changed through the notification protocol.
#pragma once

#include <AttributeContainer/AttrVal.h>
#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/ContainerLink.h>
#include <AttributeContainer/ValueTypes.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

/// An attribute that holds one value of `T`. The bodies and all instances stand in the library.
///
/// Every change asks the pre-observers, who may refuse, stores, and tells the post-observers; also
/// a change to the value that is there already.
template <AttrValue T>
class QOR_API Attr : public Attribute {
public:
    ~Attr() override;

    static const std::string& getStaticClassName();
    const std::string& getClassName() const override;

    /// The value; while a cached value is pending on this thread, that one. The reference lasts
    /// until the next change.
    const T& get() const {
        // The holder is made here and is of no derived class, so that no virtual call is needed.
        return (tempFlags() & cachedAttributePending) == 0 ? *value->AttrVal<T>::read()
                                                           : getCached();
    }
    /// Changes the value, with no initiator. A refusal is silent: the value is the old one then.
    void set(const T& newValue);
    /// Changes the value on behalf of `initiator`, which is not told of its own change.
    void set(const T& newValue, const std::shared_ptr<ObservingObject>& initiator);
    /// The same for who waits for the answers. A refused change breaks `postResults`; a change with
    /// observing blocked breaks both.
    void set(const T& newValue, const std::shared_ptr<ObservingObject>& initiator,
             ResultPromise& preResults, ResultPromise& postResults);

    std::shared_ptr<Attribute> duplicate(CreateType type, Location location) const override;
    Attr& operator=(const Attribute& other) override;
    Attr& operator=(const Attr& other) { return *this = static_cast<const Attribute&>(other); }
    bool operator==(const Attribute& other) const override;
    using Attribute::operator!=;
    void touch(const std::shared_ptr<ObservingObject>& initiator,
               std::vector<NotificationResult>* results) override;
    using Attribute::assignFrom;
    void assignFrom(const std::string& text, const std::shared_ptr<ObservingObject>& initiator,
                    ResultPromise& preResults, ResultPromise& postResults) override;
    std::string getValueString() const override;
    void readValueFrom(std::istream& stream,
                       std::shared_ptr<const ReadContextBase> context) override;
    [[nodiscard]] ErrorPtr readFrom(std::istream& stream,
                                    std::shared_ptr<const ReadContextBase> context) override;
    [[nodiscard]] ErrorPtr writeTo(std::ostream& stream,
                                   std::shared_ptr<const WriteContextBase> context) const override;

protected:
    explicit Attr(const std::optional<std::reference_wrapper<const Attribute>>& source);
    /// Takes a holder that lies beside the attribute in memory; `endValue` ends it.
    Attr(const std::optional<std::reference_wrapper<const Attribute>>& source, AttrVal<T>& holder);
    /// Ends the value ahead of the attribute, without giving back the memory of the holder.
    void endValue();

private:
    const T& getCached() const;
    void store(const T& newValue);
    // The less common roads of `set`: what all take stays short without them.
    void setAsking(const T& newValue, const std::shared_ptr<ObservingObject>& initiator);
    void setByFlags(const T& newValue, const std::shared_ptr<ObservingObject>& initiator);
    /// A text was stored; called for no other type.
    virtual void stored() const {}

    std::unique_ptr<AttrVal<T>> value;  // a pointer, so that attributes of all types are alike
};

/// Two typed attributes compare as attributes do; unlike types are unequal.
template <AttrValue T, AttrValue U>
bool operator==(const Attr<T>& a, const Attr<U>& b) {
    return static_cast<const Attribute&>(a).operator==(static_cast<const Attribute&>(b));
}
template <AttrValue T, AttrValue U>
bool operator!=(const Attr<T>& a, const Attr<U>& b) {
    return static_cast<const Attribute&>(a).operator!=(static_cast<const Attribute&>(b));
}

/// What an attribute that a container class declares knows of its place.
class QOR_API HardCodedAttribute {
public:
    /// The container of one attribute, or of many that are made together.
    struct Place {
        ContainerLink container;
        bool isShared = false;
    };

    HardCodedAttribute(const HardCodedAttribute&) = delete;
    HardCodedAttribute& operator=(const HardCodedAttribute&) = delete;
    virtual ~HardCodedAttribute();

protected:
    explicit HardCodedAttribute(const AttrContainer& container);
    /// One of the attributes of a shared place, which outlives them.
    explicit HardCodedAttribute(const Place& shared) : place(&shared) {}

    const ContainerLink& container() const { return place->container; }
    bool isPlaceShared() const { return place->isShared; }

    std::string getName(const Attribute& attribute) const;
    std::uint64_t getToken(const Attribute& attribute) const;
    const AttrDefinition* getDefinition(const Attribute& attribute) const;

private:
    const Place* place;
};

/// What an attribute that was added at run time knows of its place.
class QOR_API CustomAttribute {
public:
    void setLocation(const Attribute::Location& newLocation) { location.set(newLocation); }

protected:
    CustomAttribute() = default;
    ~CustomAttribute() = default;  // whoever owns an attribute owns it as one

    std::string getName(const Attribute& attribute) const;
    std::uint64_t getToken(const Attribute& attribute) const;

    ContainerLink location;

private:
    friend class CustAttrList;  // finds the attribute by it, without a search

    std::uint64_t slot = 0;  // where it stands in its list; a guess, since two lists can hold it
};

/// An attribute that a container class declares in its table.
template <AttrValue T>
class QOR_API HardCodedAttr final : public Attr<T>, public HardCodedAttribute {
public:
    HardCodedAttr(const AttrContainer& container,
                  const std::optional<std::reference_wrapper<const Attribute>>& source);
    /// One of the attributes of a shared place, which outlives them, as does the memory of `holder`.
    HardCodedAttr(const HardCodedAttribute::Place& shared, AttrVal<T>& holder,
                  const std::optional<std::reference_wrapper<const Attribute>>& source);
    ~HardCodedAttr() override;

    using Attr<T>::operator=;
    HardCodedAttr& operator=(const HardCodedAttr& other) {
        Attr<T>::operator=(static_cast<const Attribute&>(other));
        return *this;
    }
    Attribute::Location getLocation() const override;
    const AttrDefinition* getDefinition() const override;
    std::string getName() const override;
    std::uint64_t getToken() const override;

private:
    void stored() const override;
};

/// An attribute that is added to a container at run time, under a name of its own.
template <AttrValue T>
class QOR_API CustAttr final : public Attr<T>, public CustomAttribute {
public:
    /// A free attribute with the value and the location of `source`, or with the default value.
    explicit CustAttr(const std::optional<std::reference_wrapper<const Attribute>>& source);
    ~CustAttr() override;

    using Attr<T>::operator=;
    CustAttr& operator=(const CustAttr& other) {
        Attr<T>::operator=(static_cast<const Attribute&>(other));
        return *this;
    }
    Attribute::Location getLocation() const override;
    const AttrDefinition* getDefinition() const override;
    std::string getName() const override;
    std::uint64_t getToken() const override;
};

}  // namespace QOR::AttributeContainer
