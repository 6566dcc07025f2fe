// Makes containers from the names of their classes.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace QOR::AttributeContainer {

class Object;

/// The register of container classes by name, through which streams and tables make objects.
///
/// Classes register at load time, on one thread; a static registration works in whatever order
/// the files of a program are initialised.
class QOR_API FieldFactory : public std::enable_shared_from_this<FieldFactory> {
public:
    using Creator = std::function<std::shared_ptr<AttrContainer>()>;

    /// Takes its class out again when it ends, and keeps the factory alive until then.
    class QOR_API FactoryRegistration {
    public:
        FactoryRegistration(std::string name, std::shared_ptr<const FieldFactory> factory);
        FactoryRegistration(const FactoryRegistration&) = delete;
        FactoryRegistration& operator=(const FactoryRegistration&) = delete;
        ~FactoryRegistration();

    private:
        std::string name;
        std::shared_ptr<const FieldFactory> factory;
    };

    static std::shared_ptr<FieldFactory> the();

    /// Registers class `X` under `name` for as long as the result lives; streams know classes by
    /// `X::getStaticClassName()`.
    /// \return an empty pointer when the name is taken; the first class keeps it.
    template <class X>
    [[nodiscard]] static std::unique_ptr<const FactoryRegistration> addField(
        const std::string& name) {
        if (!the()->add(name, [] { return X::create(CreateDeep, std::nullopt); })) return nullptr;
        return std::make_unique<const FactoryRegistration>(name, the());
    }
    /// A new container of the class of that name; empty for an unknown name.
    std::shared_ptr<AttrContainer> createField(const std::string& name) const;
    /// The same for objects; empty also for a class that is no object.
    std::shared_ptr<Object> createObject(const std::string& name) const;
    /// All names, in the order in which they were registered.
    std::vector<std::string> getAllRegisteredFields() const;
    /// \return false for an unknown name.
    static bool removeField(const std::string& name);

private:
    struct Entry {
        std::size_t order;
        Creator create;
    };

    bool add(const std::string& name, Creator create);

    std::unordered_map<std::string, Entry> creators;
    std::size_t numAdded = 0;
};

}  // namespace QOR::AttributeContainer
