// The side information of a change: how it hangs on an observable and when it goes.
#include <AttributeContainer/Observable.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <thread>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Texts = InfoStringMap;

std::shared_ptr<Texts> someTexts() { return std::make_shared<Texts>(); }

// An info that does something when it ends.
class LastWord : public ObserverInfo {
public:
    explicit LastWord(std::function<void()> deed) : deed(std::move(deed)) {}
    ~LastWord() override { deed(); }

private:
    std::function<void()> deed;
};

}  // namespace

// Adding and looking up -------------------------------------------------------------------------

TEST(ObservableInfos, TakesNoEmptyPointer) {
    const auto bell = std::make_shared<Bell>();
    EXPECT_FALSE(bell->addNotifyInfo(nullptr));
    EXPECT_FALSE(bell->hasFlag(Bell::ParamsEx::postCleanupPending));
}

TEST(ObservableInfos, HangsAnInfoUnderItsTypeAndAsksForACleanUp) {
    const auto bell = std::make_shared<Bell>();
    const Bell& constBell = *bell;
    const auto texts = someTexts();

    EXPECT_TRUE(bell->addNotifyInfo(texts));

    EXPECT_EQ(bell->lookupNotifyInfo(typeid(Texts)), texts);
    EXPECT_EQ(constBell.lookupNotifyInfo(typeid(Texts)), texts);
    EXPECT_EQ(bell->lookupNotifyInfo(typeid(ObserverInfo)), nullptr) << "the dynamic type counts";
    EXPECT_TRUE(bell->hasFlag(Bell::ParamsEx::postCleanupPending));
    EXPECT_FALSE(bell->hasFlag(Bell::ParamsEx::preCleanupPending));
}

TEST(ObservableInfos, ReplacesAnInfoOfTheSameType) {
    const auto bell = std::make_shared<Bell>();
    std::weak_ptr<Texts> first;
    {
        const auto texts = someTexts();
        first = texts;
        bell->addNotifyInfo(texts);
    }
    const auto second = someTexts();
    EXPECT_TRUE(bell->addNotifyInfo(second));
    EXPECT_EQ(bell->lookupNotifyInfo(typeid(Texts)), second);
    EXPECT_TRUE(first.expired());
}

TEST(ObservableInfos, KeepsInfosOfUnlikeTypesSideBySide) {
    const auto bell = std::make_shared<Bell>();
    bell->addNotifyInfo(someTexts());
    bell->addNotifyInfo(std::make_shared<NewValueInfo<int>>(1));
    bell->addNotifyInfo(std::make_shared<NewValueInfo<double>>(2.0));
    const auto value = bell->lookupNotifyInfo(typeid(NewValueInfo<double>));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(static_cast<NewValueInfo<double>&>(*value).getValue(), 2.0);
    EXPECT_EQ(bell->removeNotifyInfos(true), 3);
}

TEST(ObservableInfos, BelongToOneObservableAlone) {
    const auto bell = std::make_shared<Bell>();
    const auto other = std::make_shared<Bell>();
    bell->addNotifyInfo(someTexts());
    EXPECT_EQ(other->lookupNotifyInfo(typeid(Texts)), nullptr);
    EXPECT_EQ(other->removeNotifyInfos(true), 0);
    EXPECT_NE(bell->lookupNotifyInfo(typeid(Texts)), nullptr);
}

TEST(ObservableInfos, AreFoundAmongThoseOfManyObservables) {
    std::vector<std::shared_ptr<Bell>> bells;
    for (int i = 0; i < 50; ++i) {
        bells.push_back(std::make_shared<Bell>());
        const auto kept = someTexts();
        kept->addInfo("number", std::to_string(i));
        kept->setExpire(false);
        bells.back()->addNotifyInfo(kept);
    }
    for (int i = 0; i < 50; ++i)
        bells[static_cast<std::size_t>(i)]->addNotifyInfo(std::make_shared<NewValueInfo<int>>(i));
    bells[3].reset();
    bells[30].reset();

    for (std::size_t i = 0; i < bells.size(); ++i) {
        if (!bells[i]) continue;
        EXPECT_EQ(bells[i]->copyNotifyInfos()->size(), 2u);
        bells[i]->ring();
        EXPECT_EQ(bells[i]->lookupNotifyInfo(typeid(NewValueInfo<int>)), nullptr);
        EXPECT_FALSE(bells[i]->hasNotifyInfo(typeid(NewValueInfo<int>)));
        EXPECT_TRUE(bells[i]->hasNotifyInfo(typeid(Texts)));
        const auto kept =
            std::dynamic_pointer_cast<Texts>(bells[i]->removeNotifyInfo(typeid(Texts), true));
        ASSERT_NE(kept, nullptr);
        EXPECT_EQ(kept->getInfoByKey("number"), std::to_string(i));
        EXPECT_EQ(bells[i]->copyNotifyInfos(), nullptr);
        EXPECT_EQ(bells[i]->removeNotifyInfos(true), 0);
    }
}

TEST(ObservableInfos, AreSeenOnTheThreadThatHungThemOnly) {
    const auto bell = std::make_shared<Bell>();
    bell->addNotifyInfo(someTexts());
    bool isSeen = true;
    std::thread([&] { isSeen = bell->lookupNotifyInfo(typeid(Texts)) != nullptr; }).join();
    EXPECT_FALSE(isSeen);
}

// Removing one ----------------------------------------------------------------------------------

TEST(ObservableInfos, GivesBackTheInfoThatItTakesOut) {
    const auto bell = std::make_shared<Bell>();
    const auto texts = someTexts();
    bell->addNotifyInfo(texts);
    EXPECT_EQ(bell->removeNotifyInfo(typeid(Texts), true), texts);
    EXPECT_EQ(bell->removeNotifyInfo(typeid(Texts), true), nullptr);
    EXPECT_EQ(bell->lookupNotifyInfo(typeid(Texts)), nullptr);
}

TEST(ObservableInfos, HasNoneOnceTheLastIsTakenOut) {
    const auto bell = std::make_shared<Bell>();
    for (const bool dropEmpty : {false, true}) {
        bell->addNotifyInfo(someTexts());
        EXPECT_NE(bell->removeNotifyInfo(typeid(Texts), dropEmpty), nullptr);
        EXPECT_EQ(bell->copyNotifyInfos(), nullptr);
        EXPECT_EQ(bell->removeNotifyInfos(true), 0);
    }
}

TEST(ObservableInfos, RemovesExactlyTheGivenObject) {
    const auto bell = std::make_shared<Bell>();
    const auto texts = someTexts();
    bell->addNotifyInfo(texts);
    EXPECT_FALSE(bell->removeNotifyInfo(std::shared_ptr<const ObserverInfo>{}, true));
    EXPECT_FALSE(bell->removeNotifyInfo(std::shared_ptr<const ObserverInfo>(someTexts()), true));
    EXPECT_FALSE(bell->removeNotifyInfo(
        std::shared_ptr<const ObserverInfo>(std::make_shared<InfoFailed>(nullptr)), true));
    EXPECT_NE(bell->lookupNotifyInfo(typeid(Texts)), nullptr);

    EXPECT_TRUE(bell->removeNotifyInfo(std::shared_ptr<const ObserverInfo>(texts), true));

    EXPECT_EQ(bell->lookupNotifyInfo(typeid(Texts)), nullptr);
    EXPECT_FALSE(bell->removeNotifyInfo(std::shared_ptr<const ObserverInfo>(texts), true));
}

// Removing many ---------------------------------------------------------------------------------

TEST(ObservableInfos, DropsThoseThatExpireAndCountsThem) {
    const auto bell = std::make_shared<Bell>();
    const auto lasting = someTexts();
    lasting->setExpire(false);
    bell->addNotifyInfo(lasting);
    bell->addNotifyInfo(std::make_shared<InfoFailed>(nullptr));
    bell->addNotifyInfo(std::make_shared<NewValueInfo<int>>(1));

    EXPECT_EQ(bell->removeNotifyInfos(false), 2);

    EXPECT_EQ(bell->lookupNotifyInfo(typeid(Texts)), lasting);
    EXPECT_EQ(bell->lookupNotifyInfo(typeid(InfoFailed)), nullptr);
    EXPECT_EQ(bell->removeNotifyInfos(false), 0);
    EXPECT_EQ(bell->removeNotifyInfos(true), 1);
    EXPECT_EQ(bell->removeNotifyInfos(true), 0);
}

TEST(ObservableInfos, RemovesThoseOfAMapThatStillHangThere) {
    const auto bell = std::make_shared<Bell>();
    bell->addNotifyInfo(someTexts());
    bell->addNotifyInfo(std::make_shared<NewValueInfo<int>>(1));
    const auto infos = bell->copyNotifyInfos();
    const auto newer = someTexts();
    bell->addNotifyInfo(newer);
    std::shared_ptr<const ObserverInfoMap> constInfos = infos;

    bell->removeNotifyInfos(constInfos);

    EXPECT_EQ(bell->lookupNotifyInfo(typeid(Texts)), newer) << "another object of that type";
    EXPECT_EQ(bell->lookupNotifyInfo(typeid(NewValueInfo<int>)), nullptr);
    EXPECT_EQ(infos->size(), 2u);
}

TEST(ObservableInfos, HasNoneBehindTheLastInfoOfAMap) {
    const auto bell = std::make_shared<Bell>();
    bell->addNotifyInfo(someTexts());
    std::shared_ptr<const ObserverInfoMap> infos = bell->copyNotifyInfos();
    bell->removeNotifyInfos(infos);
    EXPECT_EQ(bell->copyNotifyInfos(), nullptr);
}

TEST(ObservableInfos, RemovesNothingForAnEmptyMapPointer) {
    const auto bell = std::make_shared<Bell>();
    bell->addNotifyInfo(someTexts());
    std::shared_ptr<const ObserverInfoMap> none;
    bell->removeNotifyInfos(none);
    EXPECT_NE(bell->lookupNotifyInfo(typeid(Texts)), nullptr);
}

// Handing on ------------------------------------------------------------------------------------

TEST(ObservableInfos, CopiesTheSameObjects) {
    const auto bell = std::make_shared<Bell>();
    EXPECT_EQ(bell->copyNotifyInfos(), nullptr);
    const auto texts = someTexts();
    bell->addNotifyInfo(texts);

    const auto infos = bell->copyNotifyInfos();

    ASSERT_NE(infos, nullptr);
    ASSERT_EQ(infos->size(), 1u);
    EXPECT_EQ(infos->at(typeid(Texts)), texts);
    bell->removeNotifyInfos(true);
    EXPECT_EQ(infos->size(), 1u) << "the map is the caller's";
}

TEST(ObservableInfos, CanBeSetOnAnotherThread) {
    const auto bell = std::make_shared<Bell>();
    const auto texts = someTexts();
    bell->addNotifyInfo(texts);
    auto infos = bell->copyNotifyInfos();
    std::shared_ptr<ObserverInfo> found;
    std::thread([&] {
        bell->setNotifyInfos(infos);
        found = bell->lookupNotifyInfo(typeid(Texts));
    }).join();
    EXPECT_EQ(found, texts);
}

TEST(ObservableInfos, SetNothingFromAnEmptyPointer) {
    const auto bell = std::make_shared<Bell>();
    std::shared_ptr<ObserverInfoMap> none;
    bell->setNotifyInfos(none);
    EXPECT_FALSE(bell->hasFlag(Bell::ParamsEx::postCleanupPending));
}

// Ends ------------------------------------------------------------------------------------------

TEST(ObservableInfos, EndWithTheObservable) {
    const auto texts = someTexts();
    texts->setExpire(false);
    std::optional<Bell> place;
    place.emplace();
    place->addNotifyInfo(texts);
    place.reset();
    EXPECT_EQ(texts.use_count(), 1);
    place.emplace();
    EXPECT_EQ(place->lookupNotifyInfo(typeid(Texts)), nullptr)
        << "though it lies at the same place";
}

TEST(ObservableInfos, EndWithTheThread) {
    const auto bell = std::make_shared<Bell>();
    const auto texts = someTexts();
    std::thread([&] { bell->addNotifyInfo(texts); }).join();
    EXPECT_EQ(texts.use_count(), 1);
}

TEST(ObservableInfos, MayHangAnotherOneWhenTheyEnd) {
    const auto bell = std::make_shared<Bell>();
    const auto hangTexts = [&] { bell->addNotifyInfo(someTexts()); };
    bell->addNotifyInfo(std::make_shared<LastWord>(hangTexts));
    EXPECT_EQ(bell->removeNotifyInfos(true), 1);
    EXPECT_NE(bell->lookupNotifyInfo(typeid(Texts)), nullptr);

    bell->addNotifyInfo(std::make_shared<LastWord>(hangTexts));
    bell->addNotifyInfo(std::make_shared<NewValueInfo<int>>(1));
    EXPECT_EQ(bell->removeNotifyInfos(true), 3);
    EXPECT_NE(bell->lookupNotifyInfo(typeid(Texts)), nullptr);

    bell->addNotifyInfo(std::make_shared<LastWord>(hangTexts));
    bell->addNotifyInfo(std::make_shared<LastWord>([] {}));  // takes the place of the former
    EXPECT_NE(bell->lookupNotifyInfo(typeid(LastWord)), nullptr);
    bell->removeNotifyInfos(true);
}

TEST(ObservableInfos, MayEndTheObservableWhenTheyEnd) {
    auto bell = std::make_shared<Bell>();
    const auto listener = std::make_shared<Listener>();
    bell->addObserver(*listener, 1, tellAction, false);
    bell->addNotifyInfo(std::make_shared<LastWord>([&] { bell.reset(); }));
    Bell* const ringing = bell.get();
    ringing->ring();
    EXPECT_EQ(bell, nullptr);
    EXPECT_EQ(listener->told, 1);
}
