#include "model/Relations.h"

#include "model/ModelPath.h"

#include <AttributeContainer/ActionContainer.h>
#include <AttributeContainer/Observer.h>

#include <algorithm>
#include <map>
#include <set>

namespace qormodel {

namespace {
// The path of what a relation leads to from its holder; empty where it leads nowhere.
std::string targetOf(const Document& document, const std::string& holder, const std::string& path) {
    const auto element = inqElement(document, holder);
    if (!element) return "";
    const auto found = element->container->inqObserver(path).lock();
    if (const auto container = std::dynamic_pointer_cast<const ac::AttrContainer>(found))
        return container->inqObjPath().value_or(path);
    if (const auto attribute = std::dynamic_pointer_cast<const ac::Attribute>(found))
        return attribute->inqObjPath().value_or(path);
    return "";
}

bool isKnownAction(const std::string& name) {
    const auto* const actions = ac::ActionContainer::the();
    return actions && actions->getAction(actions->getToken(name)).has_value();
}

Relation relationOf(const Document& document, const std::string& holder,
                    const std::string& observable, const RelationText& text) {
    Relation relation;
    relation.observable = observable;
    relation.holder = holder;
    relation.observer = text.path;
    relation.target = targetOf(document, holder, text.path);
    relation.action = text.action;
    relation.priority = text.priority;
    relation.isAsked = text.isAsked;
    relation.isActionKnown = isKnownAction(text.action);
    relation.line = text.line;
    return relation;
}

using Graph = std::map<std::string, std::set<std::string>>;

// Depth first with a stack of its own; each circle is told once, where it closes.
class CycleSearch {
public:
    explicit CycleSearch(const Graph& graph) : graph(graph) {}

    std::vector<std::vector<std::string>> run() {
        for (const auto& [start, targets] : graph)
            if (!done.contains(start)) walk(start);
        return std::move(cycles);
    }

private:
    struct Step {
        std::string node;
        std::set<std::string>::const_iterator next;
    };

    const std::set<std::string>& targetsOf(const std::string& node) const {
        static const std::set<std::string> none;
        const auto found = graph.find(node);
        return found == graph.end() ? none : found->second;
    }

    void walk(const std::string& start) {
        std::vector<Step> path{{start, targetsOf(start).begin()}};
        std::set<std::string> onPath{start};
        while (!path.empty()) {
            Step& step = path.back();
            if (step.next == targetsOf(step.node).end()) {
                done.insert(step.node);
                onPath.erase(step.node);
                path.pop_back();
                continue;
            }
            const std::string& target = *step.next++;
            if (onPath.contains(target)) {
                note(path, target);
            } else if (!done.contains(target)) {
                onPath.insert(target);
                path.push_back({target, targetsOf(target).begin()});
            }
        }
    }

    void note(const std::vector<Step>& path, const std::string& target) {
        std::vector<std::string> cycle;
        auto step = path.begin();
        while (step->node != target) ++step;
        for (; step != path.end(); ++step) cycle.push_back(step->node);
        cycles.push_back(std::move(cycle));
    }

    const Graph& graph;
    std::set<std::string> done;
    std::vector<std::vector<std::string>> cycles;
};

// The container that a path of an element or attribute belongs to.
std::string containerOf(const std::string& target, const std::set<std::string>& containers) {
    return containers.contains(target) ? target : splitPath(target).first;
}
}  // namespace

std::vector<Relation> listRelations(const Document& document) {
    std::vector<Relation> relations;
    for (std::size_t i = 0; i < document.outline.elements.size(); ++i) {
        const ElementText& element = document.outline.elements[i];
        const std::string holder = document.outline.pathOf(i);
        const std::size_t numBefore = relations.size();
        for (const auto& attribute : element.attributes)
            for (const auto& text : attribute.relations)
                relations.push_back(
                    relationOf(document, holder, pathBelow(holder, attribute.name), text));
        for (const auto& text : element.relations)
            relations.push_back(relationOf(document, holder, holder, text));
        for (std::size_t own = relations.size(); own > numBefore; --own)
            relations[own - 1].element = i;
    }
    return relations;
}

std::vector<std::vector<std::string>> findCycles(const std::vector<Relation>& relations) {
    std::set<std::string> containers;
    for (const auto& relation : relations) {
        containers.insert(relation.holder);
        if (relation.observable == relation.holder) containers.insert(relation.target);
    }
    Graph graph;
    for (const auto& relation : relations) {
        if (relation.target.empty()) continue;
        const std::string to = containerOf(relation.target, containers);
        if (to != relation.holder) graph[relation.holder].insert(to);
    }
    return CycleSearch(graph).run();
}

}  // namespace qormodel
