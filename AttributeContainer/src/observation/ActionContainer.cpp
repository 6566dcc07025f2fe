#include <AttributeContainer/ActionContainer.h>

#include <algorithm>

namespace QOR::AttributeContainer {

namespace {
// A plain pointer, so that relations can still ask for actions while statics are torn down.
ActionContainer* instance = nullptr;
}  // namespace

ActionContainer::ActionContainer() = default;
ActionContainer::~ActionContainer() = default;

ActionContainer* ActionContainer::the() {
    if (!instance) {
        instance = new ActionContainer;
        instance->registerActionDef(ActionDefinition::the());
    }
    return instance;
}

void ActionContainer::cleanup() {
    delete instance;
    instance = nullptr;
}

std::optional<std::reference_wrapper<Action>> ActionContainer::getAction(
    std::uint64_t token) const {
    if (token >= actions.size()) return std::nullopt;
    return actions[token];
}

std::optional<std::string> ActionContainer::getName(std::uint64_t token) const {
    return names.tokenToKey(token);
}

std::uint64_t ActionContainer::getToken(const std::string& name) const {
    return names.keyToToken(name);
}

bool ActionContainer::registerActionDef(std::shared_ptr<ActionDefinitionBase> definition) {
    if (!definition || std::ranges::find(definitions, definition) != definitions.end())
        return false;
    definition->baseToken = static_cast<std::uint32_t>(actions.size());
    for (std::uint64_t i = 0; i < definition->getNumActions(); ++i) {
        const std::uint64_t token = definition->baseToken + i;
        names.addEntry(token, definition->getActionName(i));
        const auto action = definition->getAction(i);
        if (action) action->get().setToken(token);
        actions.push_back(action);
    }
    definitions.push_back(std::move(definition));
    return true;
}

bool ActionContainer::unregisterActionDef(std::shared_ptr<const ActionDefinitionBase> definition) {
    const auto found = std::ranges::find(definitions, definition);
    if (found == definitions.end()) return false;
    for (std::uint64_t i = 0; i < definition->getNumActions(); ++i) {
        const std::uint64_t token = definition->baseToken + i;
        if (token < actions.size()) actions[token].reset();
        if (const auto name = names.tokenToKey(token)) names.rmEntry(token, *name);
    }
    definitions.erase(found);
    return true;
}

}  // namespace QOR::AttributeContainer
