// A host watches values: who is asked and who is told, in which order, and what an observer can do.
#include <AttributeContainer/Attr.h>
#include <AttributeContainer/AttributeWriteProtection.h>
#include <AttributeContainer/ContainerClass.h>
#include <AttributeContainer/Observer.h>

#include <cstdint>
#include <exception>
#include <future>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace survey {

using namespace QOR::AttributeContainer;

// Tokens of the actions: what a relation does when its attribute changes.
constexpr std::uint64_t tell = 0;       // "Notify", behind a change
constexpr std::uint64_t ask = 1;        // "PreNotify", ahead of it
constexpr std::uint64_t propagate = 2;  // "Propagate", into another attribute

/// What is watched here.
class Camera : public ContainerClass<Camera, AttrContainer, "Camera"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, double, Exposure, 1.0);
    QOR_ATTRIBUTE(2, double, Gain, 1.0);
    QOR_ATTRIBUTE(3, std::string, Label, "-");
};

/// Prints whatever it hears.
class Reporter : public Observer {
public:
    explicit Reporter(std::string name) : Observer(std::nullopt), name(std::move(name)) {}

    std::string getName() const override { return name; }
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator&) override {
        std::cout << "    " << name << " is asked: " << observable.getName() << " is "
                  << static_cast<Attribute&>(observable).getValueString() << '\n';
        return Action::ExecDone;
    }
    Action::ExecReturn changedNotify(Observable& observable, Initiator& initiator) override {
        std::cout << "    " << name << " is told: " << observable.getName() << " is "
                  << static_cast<Attribute&>(observable).getValueString()
                  << (initiator ? " (on somebody's behalf)" : "") << '\n';
        return Action::ExecDone;
    }

private:
    std::string name;
};

/// Refuses an exposure of more than ten.
class Limit : public Observer {
public:
    Limit() : Observer(std::nullopt) {}

    std::string getName() const override { return "limit"; }
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator&) override {
        // The value to come hangs on the attribute for as long as the change runs.
        const auto info = std::dynamic_pointer_cast<NewValueInfo<double>>(
            observable.lookupNotifyInfo(typeid(NewValueInfo<double>)));
        if (!info || info->getValue() <= 10) return Action::ExecDone;
        std::cout << "    limit refuses " << info->getValue() << '\n';
        // This is the veto; the answer below is for those who want to know how it went.
        observable.addNotifyInfo(std::make_shared<InfoFailed>(nullptr));
        return Action::ExecRefused;
    }
};

// A relation ends with its observer, so each part below lets go of whom it made.

void showPriorities(Camera& camera) {
    std::cout << "priorities: the greater is reached first, ahead of the change and behind it\n";
    const auto low = std::make_shared<Reporter>("low");
    const auto high = std::make_shared<Reporter>("high");
    Attr<double>& exposure = camera.Attr_Exposure();
    exposure.addPreObserver(*low, 1, ask, true);
    exposure.addPreObserver(*high, 9, ask, true);
    exposure.addObserver(*low, 1, tell, true);
    exposure.addObserver(*high, 9, tell, true);
    exposure.set(2);
}

void showVeto(Camera& camera) {
    std::cout << "veto: those behind are asked all the same, and nobody is told\n";
    const auto limit = std::make_shared<Limit>();
    const auto reporter = std::make_shared<Reporter>("reporter");
    Attr<double>& exposure = camera.Attr_Exposure();
    exposure.addPreObserver(*limit, 9, ask, true);
    exposure.addPreObserver(*reporter, 1, ask, true);
    exposure.addObserver(*reporter, 1, tell, true);

    auto answered = std::make_unique<std::promise<std::vector<Observable::NotificationResult>>>();
    auto answers = answered->get_future();
    ResultPromise noPost;
    exposure.set(20, nullptr, answered, noPost);
    int numRefusals = 0;
    for (const auto& answer : answers.get())
        if (answer.result == Action::ExecRefused) ++numRefusals;
    std::cout << "    refusals: " << numRefusals << ", Exposure stays " << exposure.get() << '\n';
}

void showPropagation(Camera& camera) {
    std::cout << "propagation: the target is a change of its own, and tells of it twice\n";
    const auto reporter = std::make_shared<Reporter>("reporter");
    const auto companion = camera.Attr_Gain().getObserver().lock();
    camera.Attr_Gain().addObserver(*reporter, 1, tell, true);
    camera.Attr_Exposure().addObserver(*companion, 1, propagate, true);
    camera.Exposure(3);
    camera.Attr_Exposure().rmObserver(*companion);  // it lives as long as its attribute
    camera.Exposure(4);
    std::cout << "    Gain stays " << camera.Gain() << '\n';
}

void showProtection(Camera& camera) {
    std::cout << "write protection: refused ahead of the change, put back behind it\n";
    const auto gain = std::dynamic_pointer_cast<Attr<double>>(camera.getAttribute("Gain").lock());
    const auto first = std::make_shared<Reporter>("first");
    bool refuses = true;
    const auto protection = AttributeWriteProtection::create(
        gain, [&](Attribute&) { return refuses ? std::optional("another") : std::nullopt; });
    gain->addObserver(*first, 200, tell, true);  // ahead of the protection, which has 100
    gain->set(8);
    std::cout << "    Gain is " << gain->get() << '\n';
    refuses = false;
    gain->set(9);
    std::cout << "    Gain is " << gain->get() << '\n';
}

void showBlocking(Camera& camera) {
    std::cout << "blocking: the value changes, and nobody is asked or told\n";
    const auto limit = std::make_shared<Limit>();
    const auto reporter = std::make_shared<Reporter>("reporter");
    camera.Attr_Exposure().addPreObserver(*limit, 9, ask, true);
    camera.Attr_Exposure().addObserver(*reporter, 1, tell, true);
    const BlockObserver silence;
    camera.Exposure(50);
    std::cout << "    Exposure is " << camera.Exposure() << '\n';
}

void showBatch(Camera& camera) {
    std::cout << "batch: several values in silence, then one word about each\n";
    const auto reporter = std::make_shared<Reporter>("reporter");
    camera.Attr_Exposure().addObserver(*reporter, 1, tell, true);
    camera.Attr_Gain().addObserver(*reporter, 1, tell, true);
    camera.Attr_Label().addObserver(*reporter, 1, tell, true);
    {
        const BlockObserver silence;
        for (int step = 1; step <= 3; ++step) {
            camera.Exposure(step);
            camera.Gain(step * 10);
        }
        camera.Label("third");
    }
    camera.Attr_Exposure().touch(nullptr, nullptr);
    camera.Attr_Gain().touch(nullptr, nullptr);
    camera.Attr_Label().touch(camera.shared_from_this(), nullptr);
}

void run() {
    const auto camera = Camera::create();
    showPriorities(*camera);
    showVeto(*camera);
    showPropagation(*camera);
    showProtection(*camera);
    showBlocking(*camera);
    showBatch(*camera);
}

}  // namespace survey

int main() {
    try {
        survey::run();
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "watch: " << failure.what() << '\n';
        return 1;
    }
}
