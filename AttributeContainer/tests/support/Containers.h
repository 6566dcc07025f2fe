// Small container classes for tests.
#pragma once

#include <AttributeContainer/ContainerClass.h>
#include <AttributeContainer/FieldFactory.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// Three attributes of its own, each with a default that is not the zero of its type.
class Mark : public ContainerClass<Mark, AttrContainer, "Mark"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, std::string, Label, "none");
    QOR_ATTRIBUTE(2, double, Height, 1.75);
    QOR_ATTRIBUTE(3, int, Count, 7);
};

/// Goes on behind the tokens of its base; one attribute is never stored.
class TallMark : public ContainerClass<TallMark, Mark, "TallMark"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(4, bool, Lit, true);
    QOR_ATTRIBUTE(5, int, Cached, {}, AttrDefinition::domain | AttrDefinition::notPersistent);
};

/// No rows at all.
class PlainMark : public ContainerClass<PlainMark, TallMark, "PlainMark"> {
public:
    using Block::Block;
};

/// Two fields, of which one has the key of its class.
class Pole : public ContainerClass<Pole, AttrContainer, "Pole"> {
public:
    using Block::Block;

    QOR_FIELD(0, Testing::Mark, Mark);
    QOR_FIELD(1, TallMark, Top);
    QOR_ATTRIBUTE(1, int, Length, 2);
};

/// One field more behind those of its base.
class LongPole : public ContainerClass<LongPole, Pole, "LongPole"> {
public:
    using Block::Block;

    QOR_FIELD(2, Testing::Mark, Bottom);
};

/// Remembers by whom it was attached and detached.
class Guest : public ContainerClass<Guest, AttrContainer, "Guest"> {
public:
    using Block::Block;

    void attachToParent(std::shared_ptr<AttrContainer> parent) override {
        calls.emplace_back("attach", std::move(parent));
    }
    bool detachFromParent(std::shared_ptr<AttrContainer> parent) override {
        calls.emplace_back("detach", std::move(parent));
        return true;
    }

    struct Call {
        Call(std::string what, std::weak_ptr<AttrContainer> parent)
            : what(std::move(what)), parent(std::move(parent)) {}
        std::string what;
        std::weak_ptr<AttrContainer> parent;
    };
    std::vector<Call> calls;
};

/// Lies at a path that the test sets.
class Placed : public ContainerClass<Placed, AttrContainer, "Placed"> {
public:
    using Block::Block;
    using AttrContainer::inqObjPath;

    std::optional<std::string> inqObjPath() const override { return path; }

    std::optional<std::string> path;
};

/// No shared pointer owns it; it has a name, which it does not guard.
class Loose : public AttrContainer {
public:
    Loose() : AttrContainer(ConstructorProtector{}, CreateDeep, std::nullopt) {
        createAttributes({{0, "Name", AttrType{10}, 4}}, CreateDeep, std::nullopt);
    }
};

/// Has been constructed and not initialised, so it has no attributes yet.
template <class X>
class Hasty : public X {
public:
    explicit Hasty(const typename X::ConstructorProtector& key)
        : X(key, CreateDeep, std::nullopt) {}
    static std::shared_ptr<Hasty> make() {
        return std::make_shared<Hasty>(typename X::ConstructorProtector{});
    }
};

/// Registers the classes of this header for as long as it lives.
struct RegisteredContainers {
    std::vector<std::unique_ptr<const FieldFactory::FactoryRegistration>> registrations;

    RegisteredContainers() {
        add<Mark>();
        add<TallMark>();
        add<PlainMark>();
        add<Pole>();
        add<LongPole>();
        add<Guest>();
        add<Placed>();
    }

private:
    template <class X>
    void add() {
        registrations.push_back(FieldFactory::addField<X>(X::getStaticClassName()));
    }
};

/// The classes of this header, registered for the whole run.
inline const RegisteredContainers registeredContainers;

/// A new custom attribute with a value, in `container` under `name`.
template <class T>
std::shared_ptr<Attr<T>> addCustom(AttrContainer& container, const std::string& name,
                                   const T& value) {
    auto attribute = std::make_shared<CustAttr<T>>(std::nullopt);
    attribute->set(value);
    if (container.addAttribute(attribute, name).expired()) return nullptr;
    return attribute;
}

/// A new field of class `X`, in `container` under `name`.
template <class X = AttrContainer>
std::shared_ptr<X> addNamedField(AttrContainer& container, const std::string& name) {
    const auto field = X::create();
    return container.addField(field, name, 0) ? field : nullptr;
}

/// The same, where the field goes by that name itself as well.
template <class X = AttrContainer>
std::shared_ptr<X> addField(AttrContainer& container, const std::string& name) {
    const auto field = X::create();
    field->name(name);
    return container.addField(field, name, 0) ? field : nullptr;
}

}  // namespace QOR::AttributeContainer::Testing
