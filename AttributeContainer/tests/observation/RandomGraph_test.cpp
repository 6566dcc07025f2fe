// Thousands of random operations on a graph of observers, held against a plain model of it.
#include <AttributeContainer/ContainerClass.h>
#include <AttributeContainer/Object.h>

#include "GraphChange.h"
#include "GraphModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

class Graph;

/// An object with a watched value, which reports to the graph whenever it is asked or told.
class Node : public ContainerClass<Node, Object, "RandomGraphNode"> {
public:
    using Block::Block;
    using Observer::rmAllObservers;

    QOR_ATTRIBUTE(6, int, Gain);

    Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator) override;
    Action::ExecReturn changedNotify(Observable& observable, Initiator& initiator) override;

    NodeId id = nobody;
    Graph* graph = nullptr;
};

/// The graph and its model side by side. Every operation runs on both, and whatever the library
/// asks or tells must be what the model expects next.
class Graph {
public:
    explicit Graph(unsigned seed);

    void run(int numOperations);

    /// What happened in the run, so that a test can tell an empty one.
    struct Events {
        int calls = 0;
        int callsInCalls = 0;
        int refusals = 0;
        int deathsInCalls = 0;     // subtrees that ended while somebody was called
        int deathsOfChanging = 0;  // of these, nodes whose own change ran
    } events;

    Action::ExecReturn called(NodeId observer, const Observable& observable, bool isAsked);
    bool knows(const Observable& observable) const { return observables.contains(&observable); }

private:
    static constexpr std::size_t numNodes = 100;
    using Index = GraphModel::Index;

    // What is chosen at random.
    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); }
    bool chance(int percent) { return pick(100) < percent; }
    NodeId pickNode();
    std::pair<NodeId, Index> pickRelation();
    ModelRelation pickKind();

    // The operations.
    void operate();
    void add();
    void addByPath();
    void remove();
    void changeRelation();
    void update();
    void moveRelations();
    void create();
    void duplicate();
    void move();
    void destroy();
    void change();
    void runChange(NodeId at, NodeId initiator, GraphChange::Kind kind);

    // Both sides against each other.
    ModelRelation found(const ObserverPath& path) const;
    ModelNode::List foundList(NodeId at, Side side) const;
    void acceptOrders(NodeId at);
    void compare(NodeId at);
    void compareRecords(const std::vector<Observable::NotificationResult>& results,
                        const std::vector<GraphChange::Record>& expected);
    void expect(bool condition, const std::string& what);
    void note(const std::string& what);

    Node& real(NodeId id) { return *nodes.at(id); }
    Attr<int>& gain(NodeId id) { return nodes.at(id)->Attr_Gain(); }
    void enter(const std::shared_ptr<Node>& node, NodeId id);
    void put(const std::shared_ptr<Node>& node, NodeId parent);
    std::shared_ptr<Node> take(NodeId id);
    bool isPinned(const std::set<NodeId>& ids) const;

    const unsigned seed;
    std::mt19937 random;
    GraphModel model;
    std::map<NodeId, Node*> nodes;
    std::map<const Observable*, NodeId> observables;
    std::map<const Observer*, NodeId> observers;
    std::vector<std::shared_ptr<Node>> roots;
    std::vector<GraphChange*> changes;  // that run, the innermost last
    std::vector<NodeId> busy;           // who is called in these, and by whom
    std::vector<NodeId> pinned;         // held by a running change, so that they cannot end
    NodeId nextId = 0;
    int numDeeds = 0;  // what observers may still do in the operation that runs
    std::deque<std::string> log;
    bool hasFailed = false;
};

Action::ExecReturn Node::toChangeNotify(Observable& observable, Initiator& initiator) {
    if (!graph || !graph->knows(observable)) return Object::toChangeNotify(observable, initiator);
    const auto answer = graph->called(id, observable, true);  // this object may have ended in there
    return answer;
}

Action::ExecReturn Node::changedNotify(Observable& observable, Initiator& initiator) {
    if (!graph || !graph->knows(observable)) return Object::changedNotify(observable, initiator);
    return graph->called(id, observable, false);
}

// What is chosen --------------------------------------------------------------------------------

NodeId Graph::pickNode() {
    // Those who are at work in the calls that run make the most of an operation in them.
    if (!busy.empty() && chance(40)) {
        const NodeId id = busy[static_cast<std::size_t>(pick(static_cast<int>(busy.size())))];
        if (model.isAlive(id)) return id;
    }
    auto place = nodes.begin();
    std::advance(place, pick(static_cast<int>(nodes.size())));
    return place->first;
}

// Of a few nodes, since most have some; none where none of these has.
std::pair<NodeId, Graph::Index> Graph::pickRelation() {
    for (int i = 0; i < 20; ++i) {
        const NodeId at = pickNode();
        if (const Index count = model.numRelations(at); count > 0)
            return {at, static_cast<Index>(pick(static_cast<int>(count)))};
    }
    return {nobody, 0};
}

ModelRelation Graph::pickKind() {
    static constexpr std::uint64_t actions[] = {tellAction, tellAction, tellAction, tellAction,
                                                askAction,  askAction,  linkAction, noAction};
    ModelRelation relation;
    relation.priority = pick(400) - 20;
    relation.action = actions[pick(8)];
    relation.isTemporary = chance(20);
    return relation;
}

// Holding both against each other ---------------------------------------------------------------

void Graph::note(const std::string& what) {
    log.push_back(std::string(changes.size() * 2, ' ') + what);
    if (log.size() > 60) log.pop_front();
}

void Graph::expect(bool condition, const std::string& what) {
    if (condition || hasFailed) return;
    hasFailed = true;
    std::string text;
    for (const std::string& line : log) text += line + '\n';
    ADD_FAILURE() << what << "\nQOR_GRAPH_SEED=" << seed << "\nthe last operations:\n" << text;
}

ModelRelation Graph::found(const ObserverPath& path) const {
    ModelRelation relation;
    if (const auto observer = path.getObserver()) {
        const auto known = observers.find(&observer->get());
        relation.observer = known != observers.end() ? known->second : -100;
    } else {
        relation.text = path.getPath().value_or(std::string{});
    }
    relation.priority = path.getPriority();
    relation.action = path.getActionToken();
    relation.isTemporary = path.isTemporary();
    relation.isActive = path.isActive();
    relation.hasGone = path.isGone();
    return relation;
}

ModelNode::List Graph::foundList(NodeId at, Side side) const {
    const Observable& observable = nodes.at(at)->Attr_Gain();
    const Index numPre = observable.getNumPreObservers();
    const Index first = side == Pre ? 0 : numPre;
    const Index last = side == Pre ? numPre : numPre + observable.getNumPostObservers();
    ModelNode::List list;
    for (Index i = first; i < last; ++i) list.push_back(found(observable.getPath(i)));
    return list;
}

void Graph::acceptOrders(NodeId at) {
    for (const Side side : {Pre, Post})
        expect(model.acceptOrder(at, side, foundList(at, side)),
               "no order for a sort of " + std::to_string(at));
}

void Graph::compare(NodeId at) {
    const ModelNode& node = model.nodes.at(at);
    const std::string who = GraphModel::nameOf(at);
    for (const Side side : {Pre, Post}) {
        const auto list = foundList(at, side);
        expect(std::ranges::equal(list, node.lists[side], &ModelRelation::looksLike),
               "unlike relations of " + who);
    }
    expect(nodes.at(at)->Gain() == node.value, "unlike values of " + who);
    expect(real(at).getNumObservedByMe() == node.observed.size(), "unlike view of " + who);
    expect(real(at).inqObjPath() == model.pathOf(at), "unlike path of " + who);
}

void Graph::compareRecords(const std::vector<Observable::NotificationResult>& results,
                           const std::vector<GraphChange::Record>& expected) {
    expect(std::ranges::equal(results, expected,
                              [&](const auto& result, const auto& record) {
                                  const auto living =
                                      std::dynamic_pointer_cast<Node>(result.observer.lock());
                                  return result.result == record.second &&
                                         (!living || living->id == record.first) &&
                                         (living || !model.isAlive(record.first));
                              }),
           "unlike records");
}

// Relations -------------------------------------------------------------------------------------

void Graph::add() {
    const NodeId at = pickNode();
    ModelRelation relation = pickKind();
    relation.observer = pickNode();
    relation.isActive = true;
    const Side side = chance(40) ? Pre : Post;
    note("add " + std::to_string(relation.observer) + " to " + std::to_string(at));
    auto path = std::make_unique<ObserverPath>(
        ObserverPath::Owner{gain(at)}, ObserverPath::OptionalObserver{real(relation.observer)},
        static_cast<short>(relation.priority), relation.action);
    path->setTemporary(relation.isTemporary);
    const auto result = side == Pre ? gain(at).addPreObserver(std::move(path), true)
                                    : gain(at).addObserver(std::move(path), true);
    expect(result == model.add(at, side, relation), "unlike results of adding");
}

void Graph::addByPath() {
    const NodeId at = pickNode();
    ModelRelation relation = pickKind();
    const std::string path =
        chance(70) ? model.pathOf(pickNode()) : "/" + GraphModel::nameOf(nextId + pick(3));
    relation.observer = model.resolve(at, path);
    relation.isActive = relation.isResolved();
    if (!relation.isResolved()) relation.text = path;
    note("add " + path + " to " + std::to_string(at));
    const auto result = gain(at).addObserver(path, static_cast<short>(relation.priority),
                                             relation.action, relation.isTemporary);
    expect(result == model.add(at, Post, relation), "unlike results of adding a path");
}

void Graph::remove() {
    const auto [at, index] = pickRelation();
    if (at == nobody) return;
    const NodeId observer = model.relation(at, index).observer;
    const int way = pick(4);
    note("remove " + std::to_string(index) + " of " + std::to_string(at) + " by way " +
         std::to_string(way));
    if (way == 0) {
        gain(at).removePath(index);
        model.removeAt(at, index);
    } else if (way == 1) {
        ObserverPath wanted(gain(at).getPath(index));
        expect(gain(at).removePath(wanted) == model.removeEqual(at, index), "unlike removals");
    } else if (way == 2 || chance(80)) {
        if (observer == nobody) return;
        gain(at).rmObserver(real(observer));
        model.rmObserver(at, observer);
    } else {
        const NodeId leaver = pickNode();
        note("leave " + std::to_string(leaver));
        real(leaver).rmAllObservers(true);
        model.leave(leaver);
    }
}

void Graph::changeRelation() {
    const auto [at, index] = pickRelation();
    if (at == nobody) return;
    ObserverPath& path = gain(at).getPath(index);
    const int way = pick(4);
    note("change " + std::to_string(index) + " of " + std::to_string(at) + " by way " +
         std::to_string(way));
    if (way == 0) {
        const NodeId observer = pickNode();
        path.setObserver(real(observer), true);
        model.setObserver(at, index, observer);
    } else if (way == 1) {
        expect(path.setObserverAsPath(std::nullopt) == model.setObserverAsPath(at, index),
               "unlike results of turning into a path");
    } else if (way == 2) {
        expect(path.activate() == model.activate(at, index), "unlike activations");
    } else {
        expect(path.deactivate() == model.deactivate(at, index), "unlike deactivations");
    }
}

void Graph::update() {
    const NodeId at = pickNode();
    const bool forceSort = chance(30);
    note("update " + std::to_string(at));
    const bool areAllResolved = gain(at).updateObserverLists(forceSort);
    const auto [expected, isSorted] = model.update(at, forceSort);
    expect(areAllResolved == expected, "unlike results of updating");
    if (isSorted) acceptOrders(at);
}

void Graph::moveRelations() {
    const NodeId observer = pickNode();
    const NodeId other = pickNode();
    const bool copies = chance(50);
    note((copies ? "copy to " : "move to ") + std::to_string(observer) + " from " +
         std::to_string(other));
    if (!copies) {
        const auto numTaken = real(observer).takeOverObservationsFrom(real(other));
        expect(numTaken == model.takeOver(observer, other), "unlike numbers of taken relations");
        return;
    }
    std::optional<std::uint64_t> numCopied;
    try {
        numCopied = real(observer).copyObservationsFrom(real(other));
    } catch (const std::bad_optional_access&) {
        note("a relation is not active");
    }
    expect(numCopied == model.copyObservations(observer, other), "unlike numbers of copies");
}

// Nodes -----------------------------------------------------------------------------------------

void Graph::enter(const std::shared_ptr<Node>& node, NodeId id) {
    node->id = id;
    node->graph = this;
    nodes[id] = node.get();
    observables[&node->Attr_Gain()] = id;
    observers[node.get()] = id;
    expect(!node->setName(GraphModel::nameOf(id)), "a name was refused");
}

void Graph::put(const std::shared_ptr<Node>& node, NodeId parent) {
    if (parent == nobody) {
        roots.push_back(node);
    } else {
        expect(real(parent).addChild(node, AddFlags::SkipNameTest), "a child was refused");
    }
}

std::shared_ptr<Node> Graph::take(NodeId id) {
    auto node = std::static_pointer_cast<Node>(real(id).shared_from_this());
    if (const auto parent = node->getParent()) {
        expect(parent->rmChild(*node, 0), "a child was not there");
    } else {
        std::erase(roots, node);
    }
    return node;
}

bool Graph::isPinned(const std::set<NodeId>& ids) const {
    return std::ranges::any_of(pinned, [&](NodeId id) { return ids.contains(id); });
}

void Graph::create() {
    const NodeId parent = nodes.empty() || chance(5) ? nobody : pickNode();
    const NodeId id = nextId++;
    note("create " + std::to_string(id) + " below " + std::to_string(parent));
    const auto node = Node::create();
    enter(node, id);
    put(node, parent);
    model.create(id, parent);
}

void Graph::duplicate() {
    const NodeId source = pickNode();
    const NodeId id = nextId++;
    const NodeId parent = chance(20) ? nobody : pickNode();
    note("duplicate " + std::to_string(source) + " as " + std::to_string(id));
    const auto copy = std::static_pointer_cast<Node>(real(source).duplicate(CreateDeep));
    enter(copy, id);
    model.duplicate(source, id);
    acceptOrders(id);
    put(copy, parent);
    model.nodes.at(id).parent = parent;
}

void Graph::move() {
    const NodeId id = pickNode();
    const NodeId parent = pickNode();
    if (model.subtreeOf(id).contains(parent)) return;
    note("move " + std::to_string(id) + " below " + std::to_string(parent));
    put(take(id), parent);
    model.nodes.at(id).parent = parent;
}

void Graph::destroy() {
    const NodeId id = pickNode();
    const std::set<NodeId> ids = model.subtreeOf(id);
    if (isPinned(ids) || ids.size() > 10 || ids.size() == nodes.size()) return;
    note("destroy " + std::to_string(id));
    auto node = take(id);
    for (const NodeId below : ids) {
        observables.erase(&gain(below));
        observers.erase(nodes.at(below));
        nodes.erase(below);
    }
    const std::weak_ptr<Node> trace = node;
    node.reset();
    expect(trace.expired(), "somebody holds the destroyed node");
    model.destroy(ids);
    if (!changes.empty()) ++events.deathsInCalls;
    for (GraphChange* const change : changes) {
        if (!ids.contains(change->at)) continue;
        change->hasGone = true;
        ++events.deathsOfChanging;
    }
}

// Changes ---------------------------------------------------------------------------------------

void Graph::change() {
    if (changes.size() >= 4) return;
    const NodeId watched = chance(70) ? pickRelation().first : nobody;
    const NodeId at = watched != nobody ? watched : pickNode();
    if (chance(model.nodes.at(at).isEnabled ? 1 : 50)) {
        note("switch " + std::to_string(at));
        model.nodes.at(at).isEnabled = !model.nodes.at(at).isEnabled;
        gain(at).setNotifyEnabled(model.nodes.at(at).isEnabled);
        return;
    }
    const int kind = pick(10);
    const NodeId initiator = chance(30) ? pickNode() : nobody;
    note("change " + std::to_string(at) + " for " + std::to_string(initiator));
    if (initiator != nobody) pinned.push_back(initiator);
    runChange(at, initiator,
              kind < 8 ? GraphChange::SetValue : static_cast<GraphChange::Kind>(kind - 7));
    if (initiator != nobody) pinned.pop_back();
}

void Graph::runChange(NodeId at, NodeId initiator, GraphChange::Kind kind) {
    const int value = pick(1000);
    const auto self = initiator != nobody ? real(initiator).shared_from_this() : nullptr;
    GraphChange expected(model, at, kind, value, initiator);
    changes.push_back(&expected);
    Attr<int>& attribute = gain(at);
    if (kind == GraphChange::SetValue) {
        attribute.set(value, self);
    } else {
        std::vector<Observable::NotificationResult> results;
        // Records hold their observers during their action, so these cannot end in it.
        expected.keepsRecords = chance(50);
        auto* const wanted = expected.keepsRecords ? &results : nullptr;
        if (kind == GraphChange::AskOnly) {
            attribute.preTouch(self, wanted);
        } else {
            attribute.touch(self, wanted);
        }
        expect(!expected.next(), "somebody was not called");
        if (wanted)
            compareRecords(results, expected.records[kind == GraphChange::AskOnly ? Pre : Post]);
    }
    expect(!expected.next(), "somebody was not called");
    changes.pop_back();
}

Action::ExecReturn Graph::called(NodeId observer, const Observable& observable, bool isAsked) {
    if (hasFailed) return Action::ExecDone;
    const NodeId at = observables.at(&observable);
    GraphChange& change = *changes.back();
    ++events.calls;
    if (changes.size() > 1) ++events.callsInCalls;
    note(std::to_string(observer) + (isAsked ? " asked by " : " told by ") + std::to_string(at));
    const auto expected = change.next();
    expect(expected && expected->at == at && expected->observer == observer &&
               expected->isAsked == isAsked,
           "somebody else was to be called");
    busy.insert(busy.end(), {at, observer});
    if (change.keepsRecords) pinned.push_back(observer);
    for (; !hasFailed && numDeeds > 0 && chance(40); --numDeeds) operate();
    if (change.keepsRecords) pinned.pop_back();
    busy.resize(busy.size() - 2);

    auto answer = Action::ExecDone;
    if (observer % 13 == 5) answer = Action::ExecStopNotify;
    if (isAsked && observer % 4 == 1) {
        answer = Action::ExecRefused;
        ++events.refusals;
        if (!change.hasGone) {
            gain(at).addNotifyInfo(std::make_shared<InfoFailed>(nullptr));
            model.nodes.at(at).isRefused = true;
            model.nodes.at(at).needsCleanUp[Post] = true;
        }
    }
    change.answer(answer);
    return answer;
}

// The run ---------------------------------------------------------------------------------------

Graph::Graph(unsigned seed) : seed(seed), random(seed) {}

void Graph::operate() {
    const int which = pick(100);
    if (which < 30) return add();
    if (which < 35) return addByPath();
    if (which < 43) return remove();
    if (which < 48) return changeRelation();
    if (which < 51) return update();
    if (which < 55) return moveRelations();
    if (which < 58) return move();
    if (which < 60) return duplicate();
    if (which < 64) return destroy();
    change();
}

void Graph::run(int numOperations) {
    for (int i = 0; i < numOperations && !hasFailed; ++i) {
        while (nodes.size() < numNodes) create();
        numDeeds = 8;
        operate();
        if (i % 8 != 0 && i + 1 != numOperations) continue;
        for (const auto& [id, node] : nodes) compare(id);
    }
}

}  // namespace

TEST(RandomGraph, TellsWhomAPlainModelExpects) {
    const char* const chosen = std::getenv("QOR_GRAPH_SEED");
    const std::vector<unsigned> seeds =
        chosen ? std::vector{static_cast<unsigned>(std::strtoul(chosen, nullptr, 10))}
               : std::vector{1u, 2u, 3u};
    for (const unsigned seed : seeds) {
        Graph graph(seed);
        graph.run(10'000);
        if (HasFailure()) return;
        // A run in which nothing happens shows nothing.
        EXPECT_GT(graph.events.calls, 2000);
        EXPECT_GT(graph.events.callsInCalls, 300);
        EXPECT_GT(graph.events.refusals, 100);
        EXPECT_GT(graph.events.deathsInCalls, 50);
        EXPECT_GT(graph.events.deathsOfChanging, 2);
    }
}
