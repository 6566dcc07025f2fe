// Stands for a container where an observable is wanted.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <memory>
#include <utility>

namespace QOR::AttributeContainer {

/// Holds the container's own relations. Its answers are those of the container; once that has gone
/// they are empty.
class AttrContainer::ObserverObservable : public Observable {
public:
    explicit ObserverObservable(std::weak_ptr<Observer> observer) : observer(std::move(observer)) {}

    std::weak_ptr<ObservingObject> inqObserver(
        const std::optional<const std::string>& path) override {
        const auto living = observer.lock();
        return living ? living->inqObserver(path) : std::weak_ptr<ObservingObject>{};
    }
    std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const override {
        return Observable::inqObserver(path);
    }
    std::optional<std::reference_wrapper<const Observer>> lookupObject() const override {
        const auto living = observer.lock();
        return living ? living->lookupObject() : std::nullopt;
    }
    std::string getName() const override {
        const auto living = observer.lock();
        return living ? living->getName() : std::string{};
    }
    std::optional<std::string> inqObjPath() const override {
        const auto living = observer.lock();
        return living ? living->inqObjPath() : std::nullopt;
    }

private:
    std::weak_ptr<Observer> observer;
};

}  // namespace QOR::AttributeContainer
