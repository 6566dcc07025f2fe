#include "GraphChange.h"

#include <algorithm>

namespace QOR::AttributeContainer::Testing {

std::optional<ExpectedCall> GraphChange::next() {
    while (isWalking || phase != Phase::Done) {
        if (!isWalking) {
            beginPhase();
            continue;
        }
        if (const auto call = step()) return call;
        isWalking = false;
        endWalk();
    }
    return std::nullopt;
}

void GraphChange::beginPhase() {
    switch (phase) {
        case Phase::Begin:
            if (kind != SetValue) {
                phase = Phase::Last;
                beginWalk(kind == AskOnly ? Pre : Post);
            } else if (node().lists[Pre].empty()) {
                phase = Phase::Store;
            } else {
                node().needsCleanUp[Post] = true;  // the pending value hangs on the node
                phase = Phase::Asked;
                beginWalk(Pre);
            }
            return;
        case Phase::Asked:
            phase = hasGone || node().isRefused ? Phase::Done : Phase::Store;
            if (!hasGone) node().isRefused = false;
            return;
        case Phase::Store:
            node().value = value;
            phase = Phase::Last;
            beginWalk(Post);
            return;
        case Phase::Last:
        case Phase::Done: phase = Phase::Done; return;
    }
}

void GraphChange::beginWalk(Side side) {
    if (!node().isEnabled) return;
    walked = side;
    isWalking = true;
    ++node().depth;
    index = size();
}

void GraphChange::endWalk() {
    if (hasGone) return;
    if (--node().depth == 0) cleanUp();
}

void GraphChange::cleanUp() {
    if (!node().needsCleanUp[walked]) return;
    node().needsCleanUp[walked] = false;
    model.compress(at, walked);
    if (walked == Post) node().isRefused = false;
}

// \return whether the walk goes on behind the last call.
bool GraphChange::finishCall() {
    if (!called) return true;
    records[walked].emplace_back(*called, lastAnswer);
    called.reset();
    if (hasGone || lastAnswer == Action::ExecStopNotify) return false;
    index = std::min(index, size());
    return true;
}

std::optional<ExpectedCall> GraphChange::step() {
    if (!finishCall()) return std::nullopt;
    while (index > 0) {
        const ModelRelation& relation = node().lists[walked][--index];
        if (relation.hasGone) continue;
        if (!relation.isActive) return std::nullopt;
        if (relation.action == noAction) continue;
        const bool calls = relation.action == tellAction || relation.action == askAction;
        if (!calls || relation.observer == initiator) {
            records[walked].emplace_back(relation.observer,
                                         calls ? Action::ExecUnchanged : Action::ExecDone);
            continue;
        }
        called = relation.observer;
        lastAnswer = Action::ExecDone;
        return ExpectedCall{at, relation.observer, relation.action == askAction};
    }
    return std::nullopt;
}

}  // namespace QOR::AttributeContainer::Testing
