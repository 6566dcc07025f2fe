// W1: an attribute of ours, watched through relations with the actions Notify and PreNotify.
#include "notify/Notify.h"

#include <AttributeContainer/AttributeContainer.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ac = QOR::AttributeContainer;

namespace {

class Summer : public ac::Observer {
public:
    Summer() : Observer(std::nullopt) {}
    std::string getName() const override { return "Summer"; }
    ac::Action::ExecReturn changedNotify(ac::Observable& observable, Initiator&) override {
        sum += static_cast<ac::Attr<double>&>(observable).get();
        return ac::Action::ExecDone;
    }
    double sum = 0;
};

class RefusesNegative : public ac::Observer {
public:
    RefusesNegative() : Observer(std::nullopt) {}
    std::string getName() const override { return "RefusesNegative"; }
    ac::Action::ExecReturn toChangeNotify(ac::Observable& observable, Initiator&) override {
        const auto info = observable.lookupNotifyInfo(typeid(ac::NewValueInfo<double>));
        if (!info || static_cast<ac::NewValueInfo<double>&>(*info).getValue() >= 0)
            return ac::Action::ExecDone;
        observable.addNotifyInfo(std::make_shared<ac::InfoFailed>(nullptr));
        return ac::Action::ExecRefused;
    }
};

class Watched {
public:
    Watched(int numPost, bool hasVeto)
        : attribute(std::make_shared<ac::CustAttr<double>>(std::nullopt)) {
        constexpr std::int16_t priority = 1;
        constexpr int notify = 0, preNotify = 1;
        for (int i = 0; i < numPost; ++i) {
            summers.push_back(std::make_shared<Summer>());
            attribute->addObserver(*summers.back(), priority, notify, false);
        }
        if (!hasVeto) return;
        veto = std::make_shared<RefusesNegative>();
        attribute->addPreObserver(*veto, priority, preNotify, false);
    }
    void set(double wanted) { attribute->set(wanted); }
    double get() const { return attribute->get(); }
    double sum() const {
        double total = 0;
        for (const auto& summer : summers) total += summer->sum;
        return total;
    }

private:
    std::shared_ptr<ac::CustAttr<double>> attribute;
    std::vector<std::shared_ptr<Summer>> summers;
    std::shared_ptr<RefusesNegative> veto;
};

BENCH_PEER("W1", "ours", Ours, [](bench::Run& run) { bench::notify::runAll<Watched>(run); });

}  // namespace
