// Trees on several threads at once: one thread uses one tree, and nothing else is shared.
#include <AttributeContainer/ActionContainer.h>
#include <AttributeContainer/Object.h>

#include <QOR/Logger.h>

#include "support/Containers.h"
#include "support/ObserverGraph.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <set>
#include <thread>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr int numScans = 20;
constexpr std::size_t lastLink = 4;  // a short chain: each link of one tells its target twice

// Runs `work(i)` on several threads, all at once.
void runOnThreads(int numThreads, const std::function<void(int)>& work) {
    ActionContainer::the();  // its first call must not race
    std::atomic<int> numReady{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < numThreads; ++i) {
        threads.emplace_back([&, i] {
            ++numReady;
            while (numReady < numThreads) std::this_thread::yield();
            work(i);
        });
    }
    for (std::thread& thread : threads) thread.join();
}

// What one thread does to a tree of its own, and what it heard.
struct Work {
    std::shared_ptr<Object> project = named("project");
    std::vector<std::shared_ptr<Attr<double>>> gains;
    std::vector<std::shared_ptr<Listener>> listeners;
    int told = 0;
    std::string text;
    std::string textReadBack;

    void build(int seed) {
        for (int i = 0; i < numScans; ++i) {
            const auto scan = addNamed(*project, "scan" + std::to_string(i));
            gains.push_back(addCustom<double>(*scan, "Gain", seed + i));
            addCustom<std::string>(*scan, "Note", "a \"note\" of " + std::to_string(seed));
            addNamedField<Mark>(*scan, "mark");
        }
    }

    // Relations by observer and by a path that the root of this thread resolves.
    void observe() {
        const auto root = std::make_shared<Signpost>();
        const PathRootScope scope(root);
        for (const auto& gain : gains) {
            listeners.push_back(listenerAt("watcher" + std::to_string(listeners.size())));
            root->known[*listeners.back()->path] = listeners.back();
            gain->addPreObserver(*listeners.back(), 2, askAction, true);
            gain->addObserver(*listeners.back()->path, 3, tellAction, false);
        }
        for (std::size_t i = 1; i <= lastLink; ++i)
            gains[i - 1]->addObserver(*gains[i]->getObserver().lock(), 1, propagateAction, true);
    }

    void change(int seed) {
        for (const auto& gain : gains) gain->set(gain->get() + 1);
        gains.front()->set(seed);  // and so, one by one, those of the chain
        const auto refuser = watch<Refuser>(*gains[lastLink]);
        gains[lastLink]->set(-1);
        {
            const BlockObserver block;
            gains.front()->set(seed + 1);
        }
        gains.front()->addNotifyInfo(std::make_shared<InfoStringMap>());
        gains.front()->touch(nullptr, nullptr);
        [[maybe_unused]] const auto refused = project->setName("no name, this");
        for (const auto& listener : listeners) told += listener->told;
    }

    void writeAndRead() {
        text = written(*project);
        const auto back = Object::create();
        readText(*back, text + "\n");
        textReadBack = written(*back);
        const auto copy = project->duplicate(CreateDeep);
        listeners.front().reset();
    }

    void run(int seed) {
        build(seed);
        observe();
        change(seed);
        writeAndRead();
    }
};

}  // namespace

TEST(Threads, UseTreesOfTheirOwnAtOnce) {
    constexpr int numThreads = 4;
    std::vector<std::unique_ptr<Work>> works;
    for (int i = 0; i < numThreads; ++i) works.push_back(nullptr);

    runOnThreads(numThreads, [&](int i) {
        works[static_cast<std::size_t>(i)] = std::make_unique<Work>();
        works[static_cast<std::size_t>(i)]->run(100 * i);
    });

    for (int i = 0; i < numThreads; ++i) {
        const auto& work = *works[static_cast<std::size_t>(i)];
        Work alone;
        alone.run(100 * i);
        EXPECT_EQ(work.text, alone.text);
        EXPECT_EQ(work.textReadBack, work.text);
        EXPECT_EQ(work.told, alone.told);
        EXPECT_GT(work.told, numScans);
        EXPECT_EQ(work.gains[lastLink]->get(), 100 * i);
    }
}

TEST(Threads, HandATreeFromOneToTheOther) {
    Work work;
    runOnThreads(1, [&](int) { work.build(1); });
    runOnThreads(1, [&](int) { work.observe(); });
    runOnThreads(1, [&](int) { work.change(1); });
    runOnThreads(1, [&](int) { work.writeAndRead(); });
    EXPECT_EQ(work.textReadBack, work.text);
    EXPECT_EQ(work.gains[lastLink]->get(), 1);
}

TEST(Threads, HaveInfosOfTheirOwn) {
    std::atomic<int> numSeen{0};
    runOnThreads(4, [&](int) {
        const auto bell = std::make_shared<Bell>();
        for (int i = 0; i < 200; ++i) {
            bell->addNotifyInfo(std::make_shared<NewValueInfo<int>>(i));
            if (bell->copyNotifyInfos()->size() == 1) ++numSeen;
            bell->ring();
        }
    });
    EXPECT_EQ(numSeen, 800);
}

TEST(Threads, BlockForThemselvesAlone) {
    std::atomic<int> numTold{0};
    runOnThreads(4, [&](int i) {
        const auto container = AttrContainer::create();
        const auto gain = addCustom<double>(*container, "Gain", 0.0);
        const auto counter = watch(*gain);
        std::optional<BlockObserver> block;
        if (i % 2 == 0) block.emplace();
        for (int k = 0; k < 100; ++k) gain->set(k);
        numTold += counter->told;
    });
    EXPECT_EQ(numTold, 200);
}

TEST(Threads, HavePathRootsOfTheirOwn) {
    std::atomic<int> numFound{0};
    runOnThreads(4, [&](int) {
        const auto root = std::make_shared<Signpost>();
        const auto listener = std::make_shared<Listener>();
        root->known["watcher"] = listener;
        const PathRootScope scope(root);
        for (int i = 0; i < 200; ++i)
            if (listener->inqObserver("/watcher").lock() == listener) ++numFound;
    });
    EXPECT_EQ(numFound, 800);
}

TEST(Threads, LogAtOnce) {
    std::mutex mutex;
    std::multiset<std::string> messages;
    const auto former = QOR::Logger::setSink([&](const QOR::LogRecord& record) {
        const std::lock_guard lock(mutex);
        messages.insert(record.message);
    });
    runOnThreads(4, [&](int) {
        const auto container = AttrContainer::create();
        container->name("scan");
        for (int i = 0; i < 50; ++i) {
            QOR::Logger::appendLogMsgExt("by hand", 8, __FILE__, __LINE__, "Threads");
            container->name("no name, this");
        }
    });
    QOR::Logger::setSink(former);
    EXPECT_EQ(messages.count("by hand"), 200u);
    EXPECT_EQ(messages.size(), 400u) << "an error for each refused name besides";
}
