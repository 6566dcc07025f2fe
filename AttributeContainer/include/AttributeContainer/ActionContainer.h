// The register of all actions, by token and by name.
#pragma once

#include <AttributeContainer/Action.h>

#include <QOR/KeyTable.h>

#include <memory>
#include <unordered_map>
#include <vector>

namespace QOR::AttributeContainer {

/// A set of actions that can be registered as one.
class QOR_API ActionDefinitionBase {
public:
    ActionDefinitionBase() = default;
    ActionDefinitionBase(const ActionDefinitionBase&) = delete;
    ActionDefinitionBase& operator=(const ActionDefinitionBase&) = delete;

    virtual const std::string& getClassName() const;
    static const std::string& getStaticClassName();
    virtual std::uint64_t getNumActions() const;
    virtual std::optional<std::reference_wrapper<Action>> getAction(std::uint64_t index) const;
    virtual std::string getActionName(std::uint64_t index) const;
    virtual ~ActionDefinitionBase();

    /// The token of the first action of this set, given at registration.
    std::uint64_t getBaseToken() const { return baseToken; }

protected:
    std::uint64_t baseToken = 0;

private:
    friend class ActionContainer;  // numbers the set
};

/// The system's own actions: notify, ask, propagate, and the labels of correspondence.
class QOR_API ActionDefinition : public ActionDefinitionBase {
public:
    ActionDefinition();
    ~ActionDefinition() override;

    /// The one instance, made at the first call; the first calls must not race.
    static std::shared_ptr<ActionDefinition> the();
    /// Releases the instance. For shutdown, when no relation is left.
    static void cleanup();

    std::uint64_t getNumActions() const override;
    std::optional<std::reference_wrapper<Action>> getAction(std::uint64_t index) const override;
    std::string getActionName(std::uint64_t index) const override;
    /// The place of a name in this set; all ones for an unknown one.
    virtual std::uint64_t getActionToken(const std::string& name) const;

private:
    std::unordered_map<std::uint64_t, std::shared_ptr<Action>> actions;
};

/// Maps tokens, names and action objects onto each other. Open to further sets of actions; a
/// token once given does not move, so a set that leaves makes a gap.
class QOR_API ActionContainer {
public:
    ActionContainer();
    ActionContainer(const ActionContainer&) = delete;
    ActionContainer& operator=(const ActionContainer&) = delete;
    virtual ~ActionContainer();

    /// The one instance, made at the first call with the system's own actions registered; the
    /// first calls must not race.
    static ActionContainer* the();
    /// Deletes the instance; a later `the()` makes a new one. For shutdown.
    static void cleanup();

    /// The action of a token; empty for a token that was never given or whose set has left.
    virtual std::optional<std::reference_wrapper<Action>> getAction(std::uint64_t token) const;
    virtual std::optional<std::string> getName(std::uint64_t token) const;
    /// The token of a name; all ones for an unknown one.
    virtual std::uint64_t getToken(const std::string& name) const;
    /// Numbers the actions of `definition` behind those that are there.
    /// \return false when this very set is registered already.
    virtual bool registerActionDef(std::shared_ptr<ActionDefinitionBase> definition);
    /// Takes a set out again. The caller keeps the set alive while relations use its actions.
    /// \return false for a set that is not registered.
    virtual bool unregisterActionDef(std::shared_ptr<const ActionDefinitionBase> definition);

private:
    DataStructures::KeyTable names;
    std::vector<std::optional<std::reference_wrapper<Action>>> actions;  // indexed by token
    std::vector<std::shared_ptr<ActionDefinitionBase>> definitions;
};

}  // namespace QOR::AttributeContainer
