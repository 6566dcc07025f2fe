// Changes, adds and removes for a long time and fails if memory grows with it: soak [operations]
#include <AttributeContainer/AttributeContainer.h>

#include <malloc.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "support/AllocationCount.h"

namespace ac = QOR::AttributeContainer;

namespace {

constexpr std::uint64_t numObjects = 50;  // enough for a parent that looks names up by an index

class Listener : public ac::Observer {
public:
    Listener() : Observer(std::nullopt) {}
    std::string getName() const override { return "Listener"; }
    ac::Action::ExecReturn changedNotify(ac::Observable&, Initiator&) override {
        ++numHeard;
        return ac::Action::ExecDone;
    }
    ac::Action::ExecReturn toChangeNotify(ac::Observable& observable, Initiator&) override {
        const auto info = observable.lookupNotifyInfo(typeid(ac::NewValueInfo<std::string>));
        if (!info || static_cast<ac::NewValueInfo<std::string>&>(*info).getValue() != "refused")
            return ac::Action::ExecDone;
        observable.addNotifyInfo(std::make_shared<ac::InfoFailed>(nullptr));
        ++numRefused;
        return ac::Action::ExecRefused;
    }
    std::uint64_t numHeard = 0, numRefused = 0;
};

/// A tree that every operation leaves as large as it was.
class Scene {
public:
    Scene() {
        for (std::uint64_t i = 0; i < numObjects; ++i) addChild("object" + std::to_string(i));
    }

    void change(std::uint64_t i) { object(i).Event(i % 2 ? "measured" : "measured once more"); }
    void changeInVain(std::uint64_t i) { object(i).Event("refused"); }
    void changeNumber(std::uint64_t i) {
        object(i).MajorVersion(static_cast<unsigned short>(i % 1000));
    }
    void rename(std::uint64_t i) {
        const std::string name = object(i).getName();
        succeed(!object(i).setName("another_name"));
        succeed(!object(i).setName(name));
    }
    void replaceChild(std::uint64_t) {
        const std::string name = object(0).getName();
        // A relation that ends with its object leaves an entry with the observer, so it ends first.
        object(0).Attr_Event().rmObserver(*listener);
        succeed(root->rmChild(std::uint64_t{0}, 0));
        addChild(name);
    }
    void watch(std::uint64_t i) {
        Listener other;
        object(i).Attr_Action().addObserver(other, 1, 0, true);
        object(i).Action(i % 3 ? "scan" : "register");
        object(i).Attr_Action().rmObserver(other);
        object(i).Attr_Action().addObserver("/nowhere/Comment", 1, 0, true);
        object(i).Attr_Action().removePath(0);
    }
    void addAttribute(std::uint64_t i) {
        succeed(!object(i)
                     .addAttribute(std::make_shared<ac::CustAttr<double>>(std::nullopt), "Depth")
                     .expired());
        succeed(object(i).rmAttribute("Depth"));
    }
    void addField(std::uint64_t i) {
        succeed(object(i).addField(ac::AttrContainer::create(), "part", 0));
        succeed(object(i).rmField("part"));
    }
    void copy(std::uint64_t i) { succeed(object(i).duplicate(ac::CreateDeep) != nullptr); }
    void writeAndRead(std::uint64_t i) {
        std::stringstream stream;
        succeed(!object(i).writeTo(stream, std::make_shared<ac::WriteContextBase>()));
        succeed(!ac::Object::create()->readFrom(stream, std::make_shared<ac::ReadContextBase>()));
    }
    void find(std::uint64_t i) {
        succeed(root->inqObject("/object" + std::to_string(i)) != nullptr);
    }

    bool isWell() const {
        return hasSucceeded && root->getNumChildren() == numObjects && listener->numHeard > 0 &&
               listener->numRefused > 0;
    }

private:
    ac::Object& object(std::uint64_t index) const { return *root->getChild(index); }
    void addChild(const std::string& name) {
        auto child = ac::Object::create();
        child->name(name);
        child->Attr_Event().addObserver(*listener, 1, 0, false);
        child->Attr_Event().addPreObserver(*listener, 1, 1, false);
        succeed(root->addChild(std::move(child), 0));
    }
    void succeed(bool isDone) { hasSucceeded = hasSucceeded && isDone; }

    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    std::shared_ptr<ac::Object> root = ac::Object::create();
    bool hasSucceeded = true;
};

using Operation = void (Scene::*)(std::uint64_t);
// Changes are the most frequent ones.
constexpr Operation operations[] = {
    &Scene::change,       &Scene::changeNumber, &Scene::changeInVain, &Scene::change,
    &Scene::changeNumber, &Scene::find,         &Scene::watch,        &Scene::change,
    &Scene::replaceChild, &Scene::changeNumber, &Scene::addAttribute, &Scene::change,
    &Scene::rename,       &Scene::addField,     &Scene::changeNumber, &Scene::change};

void run(Scene& scene, std::uint64_t numOperations) {
    for (std::uint64_t i = 0; i < numOperations; ++i)
        (scene.*operations[i % std::size(operations)])(i / std::size(operations) % numObjects);
    for (std::uint64_t i = 0; i < numOperations / 1000; ++i) {
        scene.copy(i % numObjects);
        scene.writeAndRead(i % numObjects);
    }
    for (std::uint64_t i = 0; i < numObjects; ++i) {  // every text in the state that it begins in
        scene.change(i);
        scene.changeNumber(i);
        scene.watch(i);
    }
}

struct Memory {
    std::uint64_t blocks = bench::liveAllocationCount();
    std::size_t bytes = mallinfo2().uordblks + mallinfo2().hblkhd;
};

}  // namespace

int main(int argc, char** argv) {
    const std::uint64_t numOperations = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 10'000'000;
    Scene scene;
    run(scene, 20'000);  // what is made once is there from here on

    const auto start = std::chrono::steady_clock::now();
    const Memory before;
    run(scene, numOperations);
    const Memory after;
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;

    const auto moreBlocks = static_cast<std::int64_t>(after.blocks - before.blocks);
    const auto moreBytes = static_cast<std::int64_t>(after.bytes - before.bytes);
    std::printf("%llu operations in %.1f s: %lld blocks and %lld bytes more than before\n",
                static_cast<unsigned long long>(numOperations), seconds.count(),
                static_cast<long long>(moreBlocks), static_cast<long long>(moreBytes));
    if (!scene.isWell()) {
        std::printf("an operation did not do what it should\n");
        return 1;
    }
    // The allocator keeps some freed blocks for itself, so bytes are not exact; blocks are.
    constexpr std::int64_t bytesOfAllocator = 100'000;
    return moreBlocks == 0 && moreBytes <= bytesOfAllocator ? 0 : 1;
}
