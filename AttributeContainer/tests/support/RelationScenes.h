// Small scenes of observables, observers and relations that several tests play in.
#pragma once

#include "support/ObserverGraph.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace QOR::AttributeContainer::Testing {

using PathOwner = ObserverPath::Owner;
using PathTarget = ObserverPath::OptionalObserver;
using PathText = std::optional<const std::string>;

/// A bell and a listener, and single relations between them, in no list.
struct RelationScene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();

    ObserverPath toListener() const {
        return ObserverPath(PathOwner{*bell}, PathTarget{*listener}, 4, tellAction);
    }
    ObserverPath byText(const std::string& text) const {
        return ObserverPath(PathOwner{*bell}, PathText{text}, 4, tellAction);
    }
};

/// A bell and three observers of falling priority, of which the first one acts.
struct RankScene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Actor> strong = std::make_shared<Actor>();
    std::shared_ptr<Listener> middle = std::make_shared<Listener>();
    std::shared_ptr<Listener> weak = std::make_shared<Listener>();

    RankScene() {
        bell->addObserver(*strong, 3, tellAction, false);
        bell->addObserver(*middle, 2, tellAction, false);
        bell->addObserver(*weak, 1, tellAction, false);
    }
    void strongDoes(std::function<void()> deed) {
        strong->after = [deed = std::move(deed)](Observable&, Actor::Initiator&) { deed(); };
    }
};

/// The known target of a relation; null where there is none.
inline Observer* targetOf(const ObserverPath& path) {
    const auto target = path.getObserver();
    return target ? &target->get() : nullptr;
}

inline Observer* targetOf(const Observable& observable, std::uint64_t index = 0) {
    return targetOf(observable.getPath(index));
}

/// A ready relation of `owner`, to be added.
inline std::unique_ptr<ObserverPath> relation(Observable& owner, Observer& observer,
                                              std::uint64_t action = tellAction) {
    return std::make_unique<ObserverPath>(PathOwner{owner}, PathTarget{observer}, short{2}, action);
}

/// Adds a relation that is not active, as a copy has it.
inline void addPending(Observable& observable, Observer& observer) {
    const ObserverPath active(std::nullopt, PathTarget{observer}, short{1}, tellAction);
    observable.addObserver(std::make_unique<ObserverPath>(active), true);
}

}  // namespace QOR::AttributeContainer::Testing
