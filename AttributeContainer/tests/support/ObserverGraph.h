// Observables and observers for tests of the observer graph, with nothing behind them.
#pragma once

#include <AttributeContainer/Observable.h>
#include <AttributeContainer/Observer.h>

#include "support/ObserverActors.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer::Testing {

inline constexpr std::uint64_t propagateAction = 2;
inline constexpr std::uint64_t linkAction = 3;  // a label that no notification runs
inline constexpr std::uint64_t noAction = ~std::uint64_t{0};
inline constexpr std::uint64_t notFound = ~std::uint64_t{0};

/// Counts, and can be named and found.
class Listener : public Counter {
public:
    explicit Listener(std::string name = "listener") : name(std::move(name)) {}

    using Observer::inqObjPath;
    std::string getName() const override { return name; }
    std::optional<std::string> inqObjPath() const override { return path; }

    using Observer::rmAllObservers;

    std::string name;
    std::optional<std::string> path;
};

/// A listener that lies at `path`.
inline std::shared_ptr<Listener> listenerAt(const std::string& path) {
    auto listener = std::make_shared<Listener>();
    listener->path = path;
    return listener;
}

/// Writes down what it hears, in a book that it shares with others.
class Scribe : public Observer {
public:
    using Book = std::vector<std::string>;

    Scribe(std::string name, Book& book)
        : Observer(std::nullopt), name(std::move(name)), book(book) {}

    std::string getName() const override { return name; }
    Action::ExecReturn toChangeNotify(Observable&, Initiator&) override {
        book.push_back(name + " asked");
        return answer;
    }
    Action::ExecReturn changedNotify(Observable&, Initiator&) override {
        book.push_back(name + " told");
        return answer;
    }

    Action::ExecReturn answer = Action::ExecDone;

private:
    std::string name;
    Book& book;
};

/// An observable with relations and nothing else. It finds by name whom a test has put into `near`.
class Bell : public Observable {
public:
    Bell() = default;
    explicit Bell(const std::optional<std::reference_wrapper<const Observable>>& source)
        : Observable(source) {}

    using Observable::inqObserver;
    std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const override {
        if (!path) return {};
        const auto found = near.find(*path);
        return found != near.end() ? found->second : std::weak_ptr<const ObservingObject>{};
    }
    std::optional<std::reference_wrapper<const Observer>> lookupObject() const override {
        ++numLookUps;
        return object;
    }
    std::string getName() const override { return "bell"; }

    void ring() { touch(nullptr, nullptr); }
    void askFirst() { preTouch(nullptr, nullptr); }

    using Observable::checkPar;
    using Observable::notifySequence;
    using Observable::par;
    using Observable::Params;
    using Observable::ParamsEx;
    using Observable::parEx;
    using Observable::rmAllObservers;

    std::uint64_t depth() { return parEx()->notifyDepth.load(); }
    bool hasFlag(std::uint16_t bit) { return (parEx()->flags & bit) != 0; }

    std::map<std::string, std::weak_ptr<ObservingObject>> near;
    std::optional<std::reference_wrapper<const Observer>> object;
    mutable int numLookUps = 0;
};

/// The priorities of a list, from the first entry to the last.
inline std::vector<short> prioritiesOf(const ObserverList& list) {
    std::vector<short> priorities;
    for (std::uint64_t i = 0; i < list.size(); ++i) priorities.push_back(list.get(i).getPriority());
    return priorities;
}

/// A path root that finds by name whom a test has put into `known`, and notes what it is asked.
class Signpost : public Observer {
public:
    Signpost() : Observer(std::nullopt) {}

    using Observer::inqObserver;
    std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const override {
        asked.push_back(path.value_or("(none)"));
        const auto found = known.find(asked.back());
        return found != known.end() ? found->second : std::weak_ptr<const ObservingObject>{};
    }
    std::string getName() const override { return "signpost"; }

    using Observer::currentPathRoot;

    std::map<std::string, std::weak_ptr<ObservingObject>> known;
    mutable std::vector<std::string> asked;
};

/// The path root of this thread for as long as the scope lasts.
class PathRootScope {
public:
    explicit PathRootScope(std::shared_ptr<Observer> root) {
        Signpost::currentPathRoot(std::move(root));
    }
    PathRootScope(const PathRootScope&) = delete;
    PathRootScope& operator=(const PathRootScope&) = delete;
    ~PathRootScope() { Signpost::currentPathRoot(nullptr); }
};

}  // namespace QOR::AttributeContainer::Testing
