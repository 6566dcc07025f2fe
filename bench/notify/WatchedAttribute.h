// An attribute of ours with its observers, for the benchmarks of notification.
#pragma once

#include <AttributeContainer/AttributeContainer.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bench::notify {

namespace ac = QOR::AttributeContainer;

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

/// A number of ours. Each post-observer adds the value that it reads to a sum of its own; the veto
/// refuses negative values.
class WatchedAttribute {
public:
    WatchedAttribute(int numPost, bool hasVeto)
        : attribute(std::make_shared<ac::CustAttr<double>>(std::nullopt)) {
        for (int i = 0; i < numPost; ++i) {
            summers.push_back(std::make_shared<Summer>());
            attribute->addObserver(*summers.back(), 1, 0, false);
        }
        if (!hasVeto) return;
        veto = std::make_shared<RefusesNegative>();
        attribute->addPreObserver(*veto, 1, 1, false);
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

}  // namespace bench::notify
