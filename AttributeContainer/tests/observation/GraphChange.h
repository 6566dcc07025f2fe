// One change of a value in the model of an observer graph: who is to be asked and told, in turn.
#pragma once

#include "GraphModel.h"

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// A call that an observer must get.
struct ExpectedCall {
    NodeId at;
    NodeId observer;
    bool isAsked;
};

/// Goes along a change step by step, while observers change the graph in between.
class GraphChange {
public:
    enum Kind { SetValue, TellOnly, AskOnly };
    using Record = std::pair<NodeId, Action::ExecReturn>;

    GraphChange(GraphModel& model, NodeId at, Kind kind, int value, NodeId initiator)
        : at(at), model(model), kind(kind), value(value), initiator(initiator) {}

    /// The next call; empty when the change is over.
    std::optional<ExpectedCall> next();
    /// What the observer of the last call answered.
    void answer(Action::ExecReturn result) { lastAnswer = result; }

    const NodeId at;
    bool hasGone = false;       // the changing node ended meanwhile
    bool keepsRecords = false;  // the library was asked for its records
    std::array<std::vector<Record>, 2> records;

private:
    enum class Phase { Begin, Asked, Store, Last, Done };

    ModelNode& node() { return model.nodes.at(at); }
    void beginPhase();
    void beginWalk(Side side);
    void endWalk();
    void cleanUp();
    std::optional<ExpectedCall> step();
    bool finishCall();
    std::size_t size() { return node().lists[walked].size(); }

    GraphModel& model;
    Kind kind;
    int value;
    NodeId initiator;
    Phase phase = Phase::Begin;
    bool isWalking = false;
    Side walked = Pre;
    std::size_t index = 0;
    std::optional<NodeId> called;
    Action::ExecReturn lastAnswer = Action::ExecDone;
};

}  // namespace QOR::AttributeContainer::Testing
