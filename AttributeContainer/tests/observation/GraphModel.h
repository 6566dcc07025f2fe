// What a graph of observers has to do, told once more in the plainest way: by numbers and lists.
#pragma once

#include <AttributeContainer/Observable.h>

#include "support/ObserverGraph.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// Nodes are numbered in the order of their making; no number is used twice.
using NodeId = int;
inline constexpr NodeId nobody = -1;
/// Stands in `observed` for the name of the node itself, over which every container keeps guard.
inline constexpr NodeId ownName = -2;

enum Side { Pre, Post };

/// One relation of the model.
struct ModelRelation {
    NodeId observer = nobody;  // nobody for a text, or where the observer has gone
    std::string text;
    int priority = 0;
    std::uint64_t action = noAction;
    bool isTemporary = false;
    bool isActive = false;
    bool hasGone = false;
    bool isDismissed = false;  // the observer does not know of it any more

    bool isResolved() const { return observer != nobody; }
    /// Whether the two look the same from outside.
    bool looksLike(const ModelRelation& other) const;
};

/// One node of the model: an object with one watched value, which is an observer too.
struct ModelNode {
    using List = std::vector<ModelRelation>;

    NodeId parent = nobody;
    int value = 0;
    std::array<List, 2> lists;
    std::array<bool, 2> needsCleanUp{};
    bool isEnabled = true;
    bool isRefused = false;  // a veto hangs on the value
    int depth = 0;
    std::vector<NodeId> observed;  // one for each telling; those of nodes that have ended stay
    std::set<NodeId> lingering;    // where a relation to this node stayed behind
};

/// A forest of nodes with the relations among them. Relations are addressed as the library does it:
/// by one index over the pre-observers and then the post-observers.
class GraphModel {
public:
    using AddResult = Observable::AddResult;
    using Index = std::uint64_t;

    std::map<NodeId, ModelNode> nodes;

    bool isAlive(NodeId id) const { return nodes.contains(id); }
    static std::string nameOf(NodeId id) { return "n" + std::to_string(id); }
    std::string pathOf(NodeId id) const;
    NodeId resolve(NodeId start, const std::string& path) const;
    /// The node and everything below it.
    std::set<NodeId> subtreeOf(NodeId id) const;
    Index numRelations(NodeId at) const;
    ModelRelation& relation(NodeId at, Index index);

    AddResult add(NodeId at, Side side, ModelRelation relation);
    void rmObserver(NodeId at, NodeId observer);
    void removeAt(NodeId at, Index index);
    /// Removes all that equal the relation at `index`, or while the node notifies the first found.
    bool removeEqual(NodeId at, Index index);
    void leave(NodeId observer);
    std::uint64_t takeOver(NodeId observer, NodeId other);
    /// \return empty where a relation that is not active stands in the way.
    std::optional<std::uint64_t> copyObservations(NodeId observer, NodeId other);

    void setObserver(NodeId at, Index index, NodeId observer);
    bool setObserverAsPath(NodeId at, Index index);
    bool activate(NodeId at, Index index);
    bool deactivate(NodeId at, Index index);
    /// \return the answer, and whether the lists are to be sorted now.
    std::pair<bool, bool> update(NodeId at, bool forceSort);
    /// Takes over an order that was found; equal relations have no defined one after a sort.
    /// \return whether it is an order that a sort may give.
    bool acceptOrder(NodeId at, Side side, const ModelNode::List& found);

    void create(NodeId id, NodeId parent);
    void duplicate(NodeId source, NodeId copy);
    void destroy(const std::set<NodeId>& ids);
    /// Drops what has no action or no observer any more.
    void compress(NodeId at, Side side);

private:
    ModelNode::List& listOf(NodeId at, Index& index, Side& side);
    std::optional<std::string> textOf(const ModelRelation& relation) const;
    bool areEqual(const ModelRelation& a, const ModelRelation& b) const;
    std::optional<Index> find(const ModelNode::List& list, const ModelRelation& wanted) const;
    std::optional<Index> findInBoth(NodeId at, const ModelRelation& wanted) const;
    void dismiss(NodeId at, ModelRelation& relation);
    void leaveFor(NodeId at, NodeId observer);
    void forgetLast(NodeId observer, NodeId at);
};

}  // namespace QOR::AttributeContainer::Testing
