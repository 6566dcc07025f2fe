#include "GraphModel.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace QOR::AttributeContainer::Testing {

bool ModelRelation::looksLike(const ModelRelation& other) const {
    const auto looks = [](const ModelRelation& relation) {
        return std::tie(relation.observer, relation.text, relation.priority, relation.action,
                        relation.isTemporary, relation.isActive, relation.hasGone);
    };
    return looks(*this) == looks(other);
}

// Places ----------------------------------------------------------------------------------------

std::string GraphModel::pathOf(NodeId id) const {
    std::string path;
    for (NodeId parent = nodes.at(id).parent; parent != nobody; parent = nodes.at(id).parent) {
        path = "/" + nameOf(id) + path;
        id = parent;
    }
    return path.empty() ? "/" : path;
}

NodeId GraphModel::resolve(NodeId start, const std::string& path) const {
    NodeId current = start;
    while (nodes.at(current).parent != nobody) current = nodes.at(current).parent;
    for (std::size_t begin = 1; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string name = path.substr(begin, end - begin);
        const auto child = std::ranges::find_if(nodes, [&](const auto& entry) {
            return entry.second.parent == current && nameOf(entry.first) == name;
        });
        if (child == nodes.end()) return nobody;
        current = child->first;
        begin = end + 1;
    }
    return current;
}

std::set<NodeId> GraphModel::subtreeOf(NodeId id) const {
    std::set<NodeId> found{id};
    for (std::size_t before = 0; before != found.size();) {
        before = found.size();
        for (const auto& [below, node] : nodes)
            if (found.contains(node.parent)) found.insert(below);
    }
    return found;
}

GraphModel::Index GraphModel::numRelations(NodeId at) const {
    return nodes.at(at).lists[Pre].size() + nodes.at(at).lists[Post].size();
}

ModelNode::List& GraphModel::listOf(NodeId at, Index& index, Side& side) {
    auto& lists = nodes.at(at).lists;
    side = index < lists[Pre].size() ? Pre : Post;
    if (side == Post) index -= lists[Pre].size();
    return lists[side];
}

ModelRelation& GraphModel::relation(NodeId at, Index index) {
    Side side{};
    ModelNode::List& list = listOf(at, index, side);
    return list.at(index);
}

// Equal relations -------------------------------------------------------------------------------

std::optional<std::string> GraphModel::textOf(const ModelRelation& relation) const {
    if (relation.hasGone) return std::nullopt;
    return relation.isResolved() ? pathOf(relation.observer) : relation.text;
}

bool GraphModel::areEqual(const ModelRelation& a, const ModelRelation& b) const {
    if (a.action != b.action) return false;
    if (a.isResolved() && b.isResolved()) return a.observer == b.observer;
    const auto text = textOf(a);
    return text && text == textOf(b);
}

std::optional<GraphModel::Index> GraphModel::find(const ModelNode::List& list,
                                                  const ModelRelation& wanted) const {
    for (Index i = list.size(); i-- > 0;)
        if (areEqual(list[i], wanted)) return i;
    return std::nullopt;
}

std::optional<GraphModel::Index> GraphModel::findInBoth(NodeId at,
                                                        const ModelRelation& wanted) const {
    const auto& lists = nodes.at(at).lists;
    if (const auto found = find(lists[Post], wanted)) return *found + lists[Pre].size();
    return find(lists[Pre], wanted);
}

// Adding and removing ---------------------------------------------------------------------------

GraphModel::AddResult GraphModel::add(NodeId at, Side side, ModelRelation relation) {
    ModelNode::List& list = nodes.at(at).lists[side];
    if (find(list, relation)) return Observable::AlreadyThere;
    // Behind what is no stronger; what has gone does not count.
    const auto isNoStronger = [&](const ModelRelation& listed) {
        if (listed.hasGone) return false;
        if (listed.isActive != relation.isActive) return relation.isActive;
        return relation.priority >= listed.priority;
    };
    Index place = list.size();
    while (place > 0 && !isNoStronger(list[place - 1])) --place;
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(place), relation);
    if (!relation.isActive) return Observable::ObserverPending;
    nodes.at(relation.observer).observed.push_back(at);
    return Observable::ObserverInformed;
}

void GraphModel::forgetLast(NodeId observer, NodeId at) {
    auto& observed = nodes.at(observer).observed;
    const auto last = std::find(observed.rbegin(), observed.rend(), at);
    if (last != observed.rend()) observed.erase(std::next(last).base());
}

void GraphModel::dismiss(NodeId at, ModelRelation& relation) {
    if (!relation.isActive || relation.isDismissed) return;
    forgetLast(relation.observer, at);
    relation.isDismissed = true;
}

void GraphModel::removeAt(NodeId at, Index index) {
    Side side{};
    ModelNode::List& list = listOf(at, index, side);
    ModelNode& node = nodes.at(at);
    ModelRelation& relation = list.at(index);
    dismiss(at, relation);
    node.needsCleanUp[side] = true;
    if (node.depth == 0) {
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(index));
        return;
    }
    if (relation.isActive) nodes.at(relation.observer).lingering.insert(at);
    relation.action = tellAction;
}

bool GraphModel::removeEqual(NodeId at, Index index) {
    const ModelRelation wanted = relation(at, index);
    auto found = findInBoth(at, wanted);
    if (!found) return false;
    const bool once = nodes.at(at).depth > 0;
    for (; found; found = once ? std::nullopt : findInBoth(at, wanted)) removeAt(at, *found);
    return true;
}

void GraphModel::rmObserver(NodeId at, NodeId observer) {
    ModelNode& node = nodes.at(at);
    const auto leadsThere = [&](const auto& relation) { return relation.observer == observer; };
    for (const Side side : {Post, Pre}) {
        ModelNode::List& list = node.lists[side];
        if (std::ranges::none_of(list, leadsThere)) continue;
        if (node.depth == 0) {
            std::erase_if(list, leadsThere);
            continue;
        }
        for (ModelRelation& relation : list) {
            if (!leadsThere(relation)) continue;
            relation.action = tellAction;
            relation.isDismissed = true;
        }
        node.needsCleanUp[side] = true;
        nodes.at(observer).lingering.insert(at);
    }
    std::erase(nodes.at(observer).observed, at);
}

void GraphModel::leave(NodeId observer) {
    const auto observed = nodes.at(observer).observed;
    for (const NodeId at : observed)
        if (isAlive(at)) rmObserver(at, observer);
    nodes.at(observer).observed.clear();
}

std::uint64_t GraphModel::takeOver(NodeId observer, NodeId other) {
    if (observer == other) return 0;
    std::uint64_t numTaken = 0;
    // Each observable once, from the one told of last to the first; never the other's own value.
    std::set<NodeId> done{other};
    const auto observed = nodes.at(other).observed;
    for (auto at = observed.rbegin(); at != observed.rend(); ++at) {
        if (!isAlive(*at) || !done.insert(*at).second) continue;
        for (Index i = numRelations(*at); i-- > 0;) {
            const ModelRelation& there = relation(*at, i);
            if (!there.isActive || there.observer != other) continue;
            setObserver(*at, i, observer);
            ++numTaken;
        }
    }
    return numTaken;
}

std::optional<std::uint64_t> GraphModel::copyObservations(NodeId observer, NodeId other) {
    std::uint64_t numCopied = 0;
    const auto observed = nodes.at(other).observed;
    for (auto at = observed.rbegin(); at != observed.rend(); ++at) {
        if (*at == other || !isAlive(*at)) continue;
        std::vector<std::pair<Side, ModelRelation>> records;
        for (const Side side : {Pre, Post}) {
            const auto& list = nodes.at(*at).lists[side];
            for (auto there = list.rbegin(); there != list.rend(); ++there) {
                if (there->hasGone) continue;
                if (!there->isActive) return std::nullopt;
                if (there->observer == other) records.emplace_back(side, *there);
            }
        }
        for (auto& [side, record] : records) {
            record.observer = observer;
            record.isDismissed = false;
            add(*at, side, record);
        }
        numCopied += records.size();
    }
    return numCopied;
}

// One relation ----------------------------------------------------------------------------------

void GraphModel::setObserver(NodeId at, Index index, NodeId observer) {
    ModelRelation& there = relation(at, index);
    dismiss(at, there);
    there.observer = observer;
    there.text.clear();
    there.isActive = true;
    there.hasGone = there.isDismissed = false;
    nodes.at(observer).observed.push_back(at);
}

bool GraphModel::setObserverAsPath(NodeId at, Index index) {
    ModelRelation& there = relation(at, index);
    if (!there.isResolved()) return false;
    dismiss(at, there);
    there.text = pathOf(there.observer);
    there.observer = nobody;
    there.isActive = false;
    return true;
}

bool GraphModel::activate(NodeId at, Index index) {
    ModelRelation& there = relation(at, index);
    if (there.isActive || there.hasGone) return false;
    if (!there.isResolved()) there.observer = resolve(at, there.text);
    if (!there.isResolved()) return false;
    there.text.clear();
    there.isActive = true;
    there.isDismissed = false;
    nodes.at(there.observer).observed.push_back(at);
    return true;
}

bool GraphModel::deactivate(NodeId at, Index index) {
    ModelRelation& there = relation(at, index);
    if (!there.isActive) return false;
    dismiss(at, there);
    there.isActive = there.isDismissed = false;
    return true;
}

std::pair<bool, bool> GraphModel::update(NodeId at, bool forceSort) {
    bool areAllResolved = true;
    bool isSorted = forceSort;
    for (Index i = numRelations(at); i-- > 0;) {
        if (activate(at, i)) isSorted = true;
        const ModelRelation& there = relation(at, i);
        if (!there.isResolved() && !there.hasGone) areAllResolved = false;
    }
    return {areAllResolved, isSorted};
}

bool GraphModel::acceptOrder(NodeId at, Side side, const ModelNode::List& found) {
    ModelNode::List left = std::move(nodes.at(at).lists[side]);
    ModelNode::List& ordered = nodes.at(at).lists[side] = {};
    for (const ModelRelation& relation : found) {
        const auto same = std::ranges::find_if(
            left, [&](const ModelRelation& own) { return own.looksLike(relation); });
        if (same == left.end()) return false;
        ordered.push_back(*same);
        left.erase(same);
    }
    return left.empty() && std::ranges::is_sorted(ordered, {}, [](const ModelRelation& relation) {
               return std::pair(relation.isActive, relation.priority);
           });
}

// Life and death --------------------------------------------------------------------------------

void GraphModel::create(NodeId id, NodeId parent) {
    ModelNode& node = nodes[id];
    node.parent = parent;
    node.observed.push_back(ownName);
}

void GraphModel::duplicate(NodeId source, NodeId copy) {
    create(copy, nobody);
    const ModelNode& from = nodes.at(source);
    ModelNode& to = nodes.at(copy);
    to.value = from.value;
    for (const Side side : {Pre, Post}) {
        for (ModelRelation relation : from.lists[side]) {
            if (relation.priority <= 0 || relation.isTemporary || relation.action == noAction ||
                relation.hasGone)
                continue;
            relation.isActive = relation.isDismissed = false;
            if (!find(to.lists[side], relation)) to.lists[side].push_back(relation);
        }
    }
    // Who watches nothing has no copy to be found.
    for (Index i = numRelations(copy); i-- > 0;)
        if (relation(copy, i).observer == source && !from.observed.empty())
            setObserver(copy, i, copy);
    update(copy, true);
}

void GraphModel::leaveFor(NodeId at, NodeId observer) {
    ModelNode& node = nodes.at(at);
    for (const Side side : {Pre, Post}) {
        ModelNode::List& list = node.lists[side];
        if (node.depth == 0)
            std::erase_if(list,
                          [&](const auto& relation) { return relation.observer == observer; });
        for (ModelRelation& relation : list) {
            if (relation.observer != observer) continue;
            relation.action = noAction;
            node.needsCleanUp[side] = true;
        }
    }
}

void GraphModel::destroy(const std::set<NodeId>& ids) {
    for (const NodeId id : ids) {
        std::set<NodeId> known = nodes.at(id).lingering;
        known.insert(nodes.at(id).observed.begin(), nodes.at(id).observed.end());
        for (const NodeId at : known)
            if (isAlive(at)) leaveFor(at, id);
    }
    for (const NodeId id : ids) nodes.erase(id);
    // What the leaver could not take along leads nowhere from now on.
    for (auto& [id, node] : nodes)
        for (ModelNode::List& list : node.lists)
            for (ModelRelation& relation : list) {
                if (!ids.contains(relation.observer)) continue;
                relation.observer = nobody;
                relation.isActive = false;
                relation.hasGone = true;
            }
}

void GraphModel::compress(NodeId at, Side side) {
    std::erase_if(nodes.at(at).lists[side], [](const ModelRelation& relation) {
        return relation.action == noAction || relation.hasGone;
    });
}

}  // namespace QOR::AttributeContainer::Testing
