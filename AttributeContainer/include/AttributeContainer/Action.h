// What a relation does when its observable notifies.
#pragma once

#include <AttributeContainer/Export.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

class Attribute;
class Observable;
class Observer;
class ObservingObject;

/// One thing that a relation can do. Relations share the action objects and refer to them by token
/// in memory and by name in a stream, since tokens depend on the order of registration.
class QOR_API Action {
public:
    /// What an action answers to the walk that ran it.
    enum ExecReturn : std::uint32_t {
        ExecDone = 0,          ///< the action did its work
        ExecUnchanged = 1,     ///< there was nothing to do
        ExecRefused = 3,       ///< the work was refused or could not be done; the walk goes on
        ExecStopNotify = 100,  ///< ends the walk over this list at once
    };
    /// On whose behalf a change runs; empty for nobody in particular.
    using Initiator = std::optional<std::reference_wrapper<ObservingObject>>;

    explicit Action(std::uint64_t token) : token(token) {}
    Action(const Action&) = delete;
    Action& operator=(const Action&) = delete;

    virtual const std::string& getClassName() const;
    static const std::string& getStaticClassName();
    virtual ~Action();

    /// Does the work of this action for one relation.
    virtual ExecReturn execute(Observable& observable, Observer& observer, Initiator initiator) = 0;

    std::uint64_t getToken() const { return token; }
    /// Registration renumbers an action through this.
    void setToken(std::uint64_t newToken) { token = newToken; }
    /// The registered name of this action's token; empty when there is none.
    std::string getName() const;

private:
    std::uint64_t token;
};

/// Tells the observer after a change, unless it is the initiator itself.
class QOR_API ActionNotify : public Action {
public:
    using Action::Action;
    ExecReturn execute(Observable& observable, Observer& observer, Initiator initiator) override;
};

/// Asks the observer before a change, unless it is the initiator itself.
class QOR_API ActionPreNotify : public Action {
public:
    using Action::Action;
    ExecReturn execute(Observable& observable, Observer& observer, Initiator initiator) override;
};

/// A label: it orders and stores a link between two objects, and a notification passes it by.
class QOR_API ActionCorrespondenceBase : public Action {
public:
    using Action::Action;
    ExecReturn execute(Observable& observable, Observer& observer, Initiator initiator) override;
};

/// Copies the value of the notifying attribute into the attribute whose companion observer the
/// relation names.
class QOR_API ActionPropagate : public Action {
public:
    using Action::Action;

    /// \return ExecRefused when the target attribute has gone.
    /// \throws std::bad_cast when the observable is no attribute or the observer no companion.
    ExecReturn execute(Observable& observable, Observer& observer, Initiator initiator) override;

    /// Copies the value of `source` to `target`. The target's observers hear of it twice: from the
    /// store itself, with no initiator, and around it with the source as initiator.
    /// \return ExecUnchanged when an observer of the target refused.
    virtual ExecReturn propagateValue(Attribute& source, Attribute& target, Initiator initiator);
};

}  // namespace QOR::AttributeContainer
