#include <AttributeContainer/FieldFactory.h>

#include <AttributeContainer/Object.h>

#include "containers/OwnClasses.h"

#include <algorithm>
#include <utility>

namespace QOR::AttributeContainer {

std::shared_ptr<FieldFactory> FieldFactory::the() {
    // Made and filled for whoever asks first, so it stands whatever file is initialised first.
    static const auto factory = std::make_shared<FieldFactory>();
    static bool isFilled = false;
    if (!isFilled) {
        isFilled = true;  // ahead of the filling, which comes here again
        registerOwnClasses();
    }
    return factory;
}

FieldFactory::FactoryRegistration::FactoryRegistration(std::string name,
                                                       std::shared_ptr<const FieldFactory> factory)
    : name(std::move(name)), factory(std::move(factory)) {}

FieldFactory::FactoryRegistration::~FactoryRegistration() {
    // From the factory that it has kept: at process end, that of `the()` can have gone ahead of it.
    std::const_pointer_cast<FieldFactory>(factory)->creators.erase(name);
}

bool FieldFactory::add(const std::string& name, Creator create) {
    return creators.try_emplace(name, Entry{numAdded++, std::move(create)}).second;
}

std::shared_ptr<AttrContainer> FieldFactory::createField(const std::string& name) const {
    const auto found = creators.find(name);
    return found != creators.end() ? found->second.create() : nullptr;
}

std::shared_ptr<Object> FieldFactory::createObject(const std::string& name) const {
    return std::dynamic_pointer_cast<Object>(createField(name));
}

std::vector<std::string> FieldFactory::getAllRegisteredFields() const {
    std::vector<std::pair<std::size_t, std::string>> ordered;
    for (const auto& [name, entry] : creators) ordered.emplace_back(entry.order, name);
    std::ranges::sort(ordered);
    std::vector<std::string> names;
    for (auto& [order, name] : ordered) names.push_back(std::move(name));
    return names;
}

bool FieldFactory::removeField(const std::string& name) {
    return the()->creators.erase(name) > 0;
}

}  // namespace QOR::AttributeContainer
