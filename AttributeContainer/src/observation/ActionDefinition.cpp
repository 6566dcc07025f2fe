#include <AttributeContainer/ActionContainer.h>

namespace QOR::AttributeContainer {

namespace {
using DataStructures::KeyTable;
using DataStructures::KeyTableEntry;

struct ActionRow {
    KeyTableEntry entry;
    std::shared_ptr<Action> (*make)(std::uint64_t token);
};

template <class X> std::shared_ptr<Action> make(std::uint64_t token) {
    return std::make_shared<X>(token);
}

// The names are stored in documents; the spelling of row 7 is theirs.
const std::vector<ActionRow>& actionTable() {
    static const std::vector<ActionRow> rows{
        {{0, "Notify"}, make<ActionNotify>},
        {{1, "PreNotify"}, make<ActionPreNotify>},
        {{2, "Propagate"}, make<ActionPropagate>},
        {{3, "Correspondence"}, make<ActionCorrespondenceBase>},
        {{4, "CorrespondenceChronological"}, make<ActionCorrespondenceBase>},
        {{5, "CorrespondenceSensor"}, make<ActionCorrespondenceBase>},
        {{6, "CorrespondenceUserHints"}, make<ActionCorrespondenceBase>},
        {{7, "CorespondenceUserConfirmed"}, make<ActionCorrespondenceBase>},
        {{8, "CorrespondenceTemp"}, make<ActionCorrespondenceBase>},
        {{9, "CorrespondenceTemp2"}, make<ActionCorrespondenceBase>},
        {{10, "CorrespondenceFineVeryLikely"}, make<ActionCorrespondenceBase>},
        {{11, "CorrespondenceFineLikely"}, make<ActionCorrespondenceBase>},
        {{12, "AntiCorrespondence_UserConfirmed"}, make<ActionCorrespondenceBase>},
    };
    return rows;
}

const KeyTable& actionKeyTable() {
    static const KeyTable table = [] {
        KeyTable names;
        for (const ActionRow& row : actionTable()) names.addEntry(row.entry.token, row.entry.key);
        return names;
    }();
    return table;
}

std::shared_ptr<ActionDefinition>& instance() {
    static std::shared_ptr<ActionDefinition> definition;
    return definition;
}
}  // namespace

const std::string& ActionDefinitionBase::getStaticClassName() {
    static const std::string name{"ActionDefinitionBase"};
    return name;
}

const std::string& ActionDefinitionBase::getClassName() const { return getStaticClassName(); }

std::uint64_t ActionDefinitionBase::getNumActions() const { return 0; }

std::optional<std::reference_wrapper<Action>> ActionDefinitionBase::getAction(std::uint64_t) const {
    return std::nullopt;
}

std::string ActionDefinitionBase::getActionName(std::uint64_t) const { return {}; }

ActionDefinitionBase::~ActionDefinitionBase() = default;

ActionDefinition::ActionDefinition() {
    baseToken = ~std::uint64_t{0};
    for (const ActionRow& row : actionTable())
        actions.emplace(row.entry.token, row.make(row.entry.token));
}

ActionDefinition::~ActionDefinition() = default;

std::shared_ptr<ActionDefinition> ActionDefinition::the() {
    auto& definition = instance();
    if (!definition) definition = std::make_shared<ActionDefinition>();
    return definition;
}

void ActionDefinition::cleanup() { instance().reset(); }

std::uint64_t ActionDefinition::getNumActions() const { return actions.size(); }

std::optional<std::reference_wrapper<Action>> ActionDefinition::getAction(
    std::uint64_t index) const {
    if (index >= actions.size()) return std::nullopt;
    return *actions.at(index);
}

std::string ActionDefinition::getActionName(std::uint64_t index) const {
    return actionKeyTable().tokenToKey(index).value_or(std::string{});
}

std::uint64_t ActionDefinition::getActionToken(const std::string& name) const {
    return actionKeyTable().keyToToken(name);
}

}  // namespace QOR::AttributeContainer
