// The walk of a notification over the observers of one list.
#include <AttributeContainer/Observable.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Book = Scribe::Book;
using Results = std::vector<Observable::NotificationResult>;

// A bell, a book, and scribes who write into it.
struct Scene {
    Book book;
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::vector<std::shared_ptr<Scribe>> scribes;

    Scribe& scribe(const std::string& name) {
        scribes.push_back(std::make_shared<Scribe>(name, book));
        return *scribes.back();
    }
    Scribe& post(const std::string& name, short priority, std::uint64_t action = tellAction) {
        Scribe& added = scribe(name);
        bell->addObserver(added, priority, action, false);
        return added;
    }
    Scribe& pre(const std::string& name, short priority, std::uint64_t action = askAction) {
        Scribe& added = scribe(name);
        bell->addPreObserver(added, priority, action, false);
        return added;
    }
};

class Thrower : public Counter {
public:
    Action::ExecReturn changedNotify(Observable&, Initiator&) override {
        throw std::runtime_error("enough");
    }
};

}  // namespace

// Order -----------------------------------------------------------------------------------------

TEST(Notification, ReachesStrongerObserversFirst) {
    Scene scene;
    scene.post("weak", -5);
    scene.post("strong", 9);
    scene.post("middle", 2);
    scene.bell->ring();
    EXPECT_EQ(scene.book, (Book{"strong told", "middle told", "weak told"}));
}

TEST(Notification, ReachesTheLatestOfEqualObserversFirst) {
    Scene scene;
    scene.post("first", 1);
    scene.post("second", 1);
    scene.post("third", 1);
    scene.bell->ring();
    EXPECT_EQ(scene.book, (Book{"third told", "second told", "first told"}));
}

TEST(Notification, AsksPreObserversAndTellsPostObservers) {
    Scene scene;
    scene.pre("guard", 1);
    scene.post("reader", 1);
    scene.bell->askFirst();
    EXPECT_EQ(scene.book, Book{"guard asked"});
    scene.bell->ring();
    EXPECT_EQ(scene.book, (Book{"guard asked", "reader told"}));
}

TEST(Notification, GoesByTheActionAndNotByTheList) {
    Scene scene;
    scene.pre("reader", 1, tellAction);
    scene.post("guard", 1, askAction);
    scene.bell->askFirst();
    scene.bell->ring();
    EXPECT_EQ(scene.book, (Book{"reader told", "guard asked"}));
}

TEST(Notification, PassesLabelsAndRelationsWithoutAnActionBy) {
    Scene scene;
    scene.post("linked", 3, linkAction);
    scene.post("idle", 2, noAction);
    scene.post("reader", 1);
    scene.bell->ring();
    EXPECT_EQ(scene.book, Book{"reader told"});
}

TEST(Notification, RunsOncePerRelation) {
    Scene scene;
    Scribe& both = scene.post("both", 1, tellAction);
    scene.bell->addObserver(both, 2, askAction, false);
    scene.bell->ring();
    EXPECT_EQ(scene.book, (Book{"both asked", "both told"}));
}

TEST(Notification, EndsAtTheFirstRelationThatIsNotActive) {
    Scene scene;
    scene.post("below", 1);
    scene.bell->addObserver(std::make_unique<ObserverPath>(
                                ObserverPath::Owner{*scene.bell},
                                std::optional<const std::string>{"nobody"}, short{5}, tellAction),
                            false);  // appended out of order
    scene.bell->ring();
    EXPECT_EQ(scene.book, Book{});
    scene.bell->resortPostObservers();
    scene.bell->ring();
    EXPECT_EQ(scene.book, Book{"below told"});
}

TEST(Notification, DoesNothingWithoutObservers) {
    const auto bell = std::make_shared<Bell>();
    Results results;
    bell->touch(nullptr, &results);
    bell->preTouch(nullptr, &results);
    EXPECT_TRUE(results.empty());
    EXPECT_EQ(bell->depth(), 0u);
}

// Answers ---------------------------------------------------------------------------------------

TEST(Notification, GoesOnAfterARefusal) {
    Scene scene;
    scene.pre("first", 2).answer = Action::ExecRefused;
    scene.pre("second", 1).answer = Action::ExecRefused;
    scene.bell->askFirst();
    EXPECT_EQ(scene.book, (Book{"first asked", "second asked"}));
}

TEST(Notification, EndsWhereAnObserverStopsIt) {
    Scene scene;
    scene.post("first", 3);
    scene.post("stopper", 2).answer = Action::ExecStopNotify;
    scene.post("never", 1);
    Results results;
    scene.bell->touch(nullptr, &results);
    EXPECT_EQ(scene.book, (Book{"first told", "stopper told"}));
    ASSERT_EQ(results.size(), 2u) << "the one that stops has its record too";
    EXPECT_EQ(results[1].result, Action::ExecStopNotify);
    EXPECT_EQ(scene.bell->depth(), 0u);
}

TEST(Notification, RecordsEveryAnswer) {
    Scene scene;
    scene.post("a", 4).answer = Action::ExecRefused;
    scene.post("b", 3).answer = Action::ExecUnchanged;
    scene.post("c", 2, linkAction);
    scene.post("d", 1, noAction);
    Results results;

    scene.bell->touch(nullptr, &results);

    ASSERT_EQ(results.size(), 3u);
    EXPECT_EQ(results[0].observer.lock(), scene.scribes[0]);
    EXPECT_EQ(results[0].result, Action::ExecRefused);
    EXPECT_EQ(results[1].result, Action::ExecUnchanged);
    EXPECT_EQ(results[2].observer.lock(), scene.scribes[2]);
    EXPECT_EQ(results[2].result, Action::ExecDone) << "a label answers too";
}

TEST(Notification, RecordsOnlyWeakly) {
    Scene scene;
    scene.post("a", 1);
    Results results;
    scene.bell->touch(nullptr, &results);
    scene.scribes.clear();
    EXPECT_TRUE(results[0].observer.expired());
}

TEST(Notification, CannotRecordAnObserverThatNobodyOwns) {
    const auto bell = std::make_shared<Bell>();
    Listener unowned;
    bell->addObserver(unowned, 1, tellAction, false);
    Results results;
    bell->ring();
    EXPECT_EQ(unowned.told, 1) << "without results nobody is locked";
    EXPECT_THROW(bell->touch(nullptr, &results), std::bad_weak_ptr);
}

// Initiators ------------------------------------------------------------------------------------

TEST(Notification, PassesTheInitiatorOver) {
    Scene scene;
    scene.post("self", 2);
    scene.post("other", 1);
    scene.pre("careful", 1);
    Results results;

    scene.bell->touch(scene.scribes[0], &results);
    scene.bell->preTouch(scene.scribes[2], nullptr);

    EXPECT_EQ(scene.book, Book{"other told"});
    ASSERT_EQ(results.size(), 2u);
    EXPECT_EQ(results[0].result, Action::ExecUnchanged);
}

TEST(Notification, TellsForWhomItRuns) {
    const auto bell = std::make_shared<Bell>();
    const auto actor = std::make_shared<Actor>();
    std::vector<ObservingObject*> initiators;
    actor->after = [&](Observable&, Actor::Initiator& initiator) {
        initiators.push_back(initiator ? &initiator->get() : nullptr);
    };
    bell->addObserver(*actor, 1, tellAction, false);
    bell->touch(bell, nullptr);
    bell->touch(nullptr, nullptr);
    EXPECT_EQ(initiators, (std::vector<ObservingObject*>{bell.get(), nullptr}));
}

// Depth, flags and clean-up ---------------------------------------------------------------------

TEST(Notification, DoesNotRunWhereItIsSwitchedOff) {
    Scene scene;
    scene.post("reader", 1);
    scene.bell->addNotifyInfo(std::make_shared<InfoStringMap>());
    scene.bell->setNotifyEnabled(false);
    scene.bell->ring();
    EXPECT_EQ(scene.book, Book{});
    EXPECT_NE(scene.bell->lookupNotifyInfo(typeid(InfoStringMap)), nullptr) << "nor a clean-up";
    scene.bell->setNotifyEnabled(true);
    scene.bell->ring();
    EXPECT_EQ(scene.book, Book{"reader told"});
}

TEST(Notification, DropsInfosThatExpireAtTheEndOfAPostWalk) {
    Scene scene;
    scene.post("reader", 1);
    const auto lasting = std::make_shared<InfoFailed>(nullptr);
    lasting->setExpire(false);
    scene.bell->addNotifyInfo(std::make_shared<InfoStringMap>());
    scene.bell->addNotifyInfo(lasting);

    scene.bell->askFirst();
    EXPECT_NE(scene.bell->lookupNotifyInfo(typeid(InfoStringMap)), nullptr);
    scene.bell->ring();

    EXPECT_EQ(scene.bell->lookupNotifyInfo(typeid(InfoStringMap)), nullptr);
    EXPECT_EQ(scene.bell->lookupNotifyInfo(typeid(InfoFailed)), lasting);
    EXPECT_FALSE(scene.bell->hasFlag(Bell::ParamsEx::postCleanupPending));
}

TEST(Notification, CleansUpAlsoBehindAnEmptyList) {
    const auto bell = std::make_shared<Bell>();
    bell->addNotifyInfo(std::make_shared<InfoStringMap>());
    bell->ring();
    EXPECT_EQ(bell->lookupNotifyInfo(typeid(InfoStringMap)), nullptr);
}

TEST(Notification, CompressesEachListAtTheEndOfItsOwnWalk) {
    Scene scene;
    scene.pre("pre", 1, noAction);
    scene.post("post", 1, noAction);
    scene.pre("keeper", 2);
    scene.post("keeper", 2);

    scene.bell->ring();
    EXPECT_EQ(scene.bell->getNumPostObservers(), 2u) << "nothing asked for a clean-up";
    scene.bell->parEx()->setFlag(Bell::ParamsEx::preCleanupPending, true);
    scene.bell->parEx()->setFlag(Bell::ParamsEx::postCleanupPending, true);

    scene.bell->ring();
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
    EXPECT_EQ(scene.bell->getNumPreObservers(), 2u);
    scene.bell->askFirst();
    EXPECT_EQ(scene.bell->getNumPreObservers(), 1u);
    EXPECT_EQ(scene.bell->parEx()->flags, Bell::ParamsEx::notifyEnabled);
}

TEST(Notification, LooksUpTheObjectAtTheEndOfAPostWalkWhereThatIsPending) {
    Scene scene;
    scene.post("reader", 1);
    scene.bell->ring();
    EXPECT_EQ(scene.bell->numLookUps, 0);
    scene.bell->parEx()->setFlag(Bell::ParamsEx::lookupPending, true);
    scene.bell->askFirst();
    EXPECT_EQ(scene.bell->numLookUps, 0);
    scene.bell->ring();
    EXPECT_EQ(scene.bell->numLookUps, 1);
}

TEST(Notification, CleansUpNothingWhileAnOuterWalkRuns) {
    const auto bell = std::make_shared<Bell>();
    const auto actor = std::make_shared<Actor>();
    std::shared_ptr<ObserverInfo> afterInner;
    std::uint64_t innerDepth = 0;
    actor->after = [&](Observable& observable, Actor::Initiator&) {
        innerDepth = std::max(innerDepth, bell->depth());
        if (actor->told > 0 || bell->depth() > 1) return;
        observable.addNotifyInfo(std::make_shared<InfoStringMap>());
        bell->ring();
        bell->askFirst();
        afterInner = observable.lookupNotifyInfo(typeid(InfoStringMap));
    };
    bell->addObserver(*actor, 1, tellAction, false);

    bell->ring();

    EXPECT_EQ(innerDepth, 2u);
    EXPECT_NE(afterInner, nullptr);
    EXPECT_EQ(bell->lookupNotifyInfo(typeid(InfoStringMap)), nullptr);
    EXPECT_EQ(bell->depth(), 0u);
    EXPECT_EQ(actor->told, 2);
}

TEST(Notification, StaysCountedWhereAnObserverThrows) {
    const auto bell = std::make_shared<Bell>();
    const auto thrower = std::make_shared<Thrower>();
    bell->addObserver(*thrower, 1, tellAction, false);
    EXPECT_THROW(bell->ring(), std::runtime_error);
    EXPECT_EQ(bell->depth(), 1u) << "nothing is caught, and nothing put right";
}

TEST(Notification, RunsOverOneListOnly) {
    Scene scene;
    scene.pre("guard", 1);
    scene.post("reader", 1);
    scene.bell->notifySequence(nullptr, &scene.bell->parEx()->preObservers, nullptr);
    EXPECT_EQ(scene.book, Book{"guard asked"});
}
