// W1: the model, least code with our duties: relations with actions, initiators, walks that survive
// changes, infos of the running change by type, a refusal as such an info.
#include "notify/Notify.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <typeindex>
#include <utility>
#include <vector>

namespace {

enum class Answer { Done, Unchanged, Refused, Stop };

struct Observing : std::enable_shared_from_this<Observing> {
    virtual ~Observing() = default;
};
using Initiator = std::optional<std::reference_wrapper<Observing>>;

class Observable;

struct Observer : Observing {
    virtual Answer changed(Observable&, Initiator&) { return Answer::Unchanged; }
    virtual Answer toChange(Observable&, Initiator&) { return Answer::Unchanged; }
};

struct Action {
    virtual ~Action() = default;
    virtual Answer execute(Observable&, Observer&, Initiator) = 0;
};

bool isOwn(const Initiator& initiator, const Observer& observer) {
    return initiator && &initiator->get() == &observer;
}

struct NotifyAction : Action {
    Answer execute(Observable& observable, Observer& observer, Initiator initiator) override {
        if (isOwn(initiator, observer)) return Answer::Unchanged;
        return observer.changed(observable, initiator);
    }
} notifyAction;

struct PreNotifyAction : Action {
    Answer execute(Observable& observable, Observer& observer, Initiator initiator) override {
        if (isOwn(initiator, observer)) return Answer::Unchanged;
        return observer.toChange(observable, initiator);
    }
} preNotifyAction;

struct Relation {
    Action* action;
    Observer* observer;
    bool isActive = true;
};
using Relations = std::vector<std::unique_ptr<Relation>>;

struct Info {
    virtual ~Info() = default;
    bool expires = true;
};
struct NewValue : Info {
    explicit NewValue(double newValue) : value(newValue) {}
    double value;
};
struct Refusal : Info {};

struct InfoEntry {
    const Observable* observable;
    std::type_index type;
    std::shared_ptr<Info> info;
};
// Few changes run at a time in a thread, so a flat vector will do.
thread_local std::vector<InfoEntry> infos;
thread_local unsigned blocked = 0;

class Observable : public Observing {
public:
    ~Observable() override { removeInfos(true); }

    void addInfo(std::shared_ptr<Info> info) {
        hasInfos = true;
        const std::type_index type(typeid(*info));
        for (InfoEntry& entry : infos)
            if (entry.observable == this && entry.type == type) {
                entry.info = std::move(info);
                return;
            }
        infos.push_back({this, type, std::move(info)});
    }
    Info* findInfo(std::type_index type) const {
        for (const InfoEntry& entry : infos)
            if (entry.observable == this && entry.type == type) return entry.info.get();
        return nullptr;
    }
    void removeInfos(bool all) {
        std::erase_if(infos, [&](const InfoEntry& entry) {
            return entry.observable == this && (all || entry.info->expires);
        });
    }

    Relations post, pre;

protected:
    void runThrough(Relations& relations, const std::shared_ptr<Observing>& initiator) {
        depth.store(depth.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        for (std::size_t i = relations.size(); i > 0; i = std::min(i - 1, relations.size())) {
            Relation& relation = *relations[i - 1];
            if (!relation.isActive || !relation.observer) break;
            const auto answer = relation.action->execute(
                *this, *relation.observer, initiator ? Initiator(*initiator) : Initiator());
            if (answer == Answer::Stop) break;
        }
        const auto remaining = depth.load(std::memory_order_relaxed) - 1;
        depth.store(remaining, std::memory_order_relaxed);
        if (remaining > 0 || &relations != &post || !hasInfos) return;
        removeInfos(false);
        hasInfos = false;
    }

private:
    std::atomic<std::uint64_t> depth{0};
    bool hasInfos = false;
};

struct Value {
    virtual ~Value() = default;
    double number = 0;
};

class Attribute : public Observable {
public:
    double get() const { return value->number; }
    [[gnu::noinline]] void set(double wanted, const std::shared_ptr<Observing>& initiator = {}) {
        if (blocked == 0 && !pre.empty()) {
            addInfo(std::make_shared<NewValue>(wanted));
            runThrough(pre, initiator);
            if (findInfo(typeid(Refusal))) {
                removeInfos(false);
                return;
            }
        }
        value->number = wanted;
        if (blocked == 0) runThrough(post, initiator);
    }

private:
    std::unique_ptr<Value> value = std::make_unique<Value>();
};

struct Summer : Observer {
    Answer changed(Observable& observable, Initiator&) override {
        sum += static_cast<Attribute&>(observable).get();
        return Answer::Done;
    }
    double sum = 0;
};

struct RefusesNegative : Observer {
    Answer toChange(Observable& observable, Initiator&) override {
        const auto* const wanted = static_cast<NewValue*>(observable.findInfo(typeid(NewValue)));
        if (!wanted || wanted->value >= 0) return Answer::Done;
        observable.addInfo(std::make_shared<Refusal>());
        return Answer::Refused;
    }
};

class Model {
public:
    Model(int numPost, bool hasVeto) {
        for (int i = 0; i < numPost; ++i) {
            summers.push_back(std::make_shared<Summer>());
            attribute->post.push_back(
                std::make_unique<Relation>(Relation{&notifyAction, summers.back().get()}));
        }
        if (!hasVeto) return;
        veto = std::make_shared<RefusesNegative>();
        attribute->pre.push_back(
            std::make_unique<Relation>(Relation{&preNotifyAction, veto.get()}));
    }
    void set(double wanted) { attribute->set(wanted); }
    double get() const { return attribute->get(); }
    double sum() const {
        double total = 0;
        for (const auto& summer : summers) total += summer->sum;
        return total;
    }

private:
    std::shared_ptr<Attribute> attribute = std::make_shared<Attribute>();
    std::vector<std::shared_ptr<Summer>> summers;
    std::shared_ptr<RefusesNegative> veto;
};

BENCH_PEER("W1", "model", Model, [](bench::Run& run) { bench::notify::runAll<Model>(run); });

}  // namespace
