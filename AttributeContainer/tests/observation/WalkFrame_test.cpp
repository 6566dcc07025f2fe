// Observables that end while operations run on them.
#include <AttributeContainer/Attr.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/FreeAttribute.h"
#include "support/RelationScenes.h"

#include <gtest/gtest.h>

#include <functional>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Scene = RankScene;

using Results = std::vector<Observable::NotificationResult>;

}  // namespace

TEST(WalkFrame, ObservableMayEndInItsOwnWalk) {
    Scene scene;
    scene.strongDoes([&] { scene.bell.reset(); });
    Results results;
    scene.bell->touch(nullptr, &results);
    EXPECT_EQ(scene.bell, nullptr);
    EXPECT_EQ(scene.middle->told, 0);
    EXPECT_EQ(results.size(), 1u);
}

TEST(WalkFrame, ObservableMayEndInANestedWalk) {
    Scene scene;
    int depth = 0;
    scene.strongDoes([&] {
        if (++depth < 3) {
            scene.bell->ring();
        } else {
            scene.bell.reset();
        }
    });
    scene.bell->ring();
    EXPECT_EQ(depth, 3);
    EXPECT_EQ(scene.middle->told, 0);
}

TEST(WalkFrame, ObservableMayEndInTheWalkOfAnother) {
    Scene scene;
    const auto other = std::make_shared<Bell>();
    const auto ender = std::make_shared<Actor>();
    other->addObserver(*ender, 1, tellAction, false);
    ender->after = [&](Observable&, Actor::Initiator&) { scene.bell.reset(); };
    scene.strongDoes([&] { other->ring(); });
    scene.bell->ring();
    EXPECT_EQ(ender->told, 1);
    EXPECT_EQ(scene.middle->told, 0);
    EXPECT_EQ(other->depth(), 0u);
}

TEST(WalkFrame, ObserverOutlivesItsObservables) {
    Scene scene;
    scene.bell.reset();
    EXPECT_EQ(scene.strong->getNumObservedByMe(), 1u);
    scene.strong.reset();
    scene.middle->rmAllObservers(true);
    EXPECT_EQ(scene.middle->getNumObservedByMe(), 0u);
}

TEST(WalkFrame, AttributeMayEndWhileItIsAskedAbout) {
    auto number = attributeOf<int>(1);
    const std::weak_ptr<Attribute> watched = number;
    const auto ender = std::make_shared<Actor>();
    ender->before = [&](Observable&, Actor::Initiator&) { number.reset(); };
    number->addPreObserver(*ender, 1, askAction, false);
    number->addObserver(*ender, 1, tellAction, false);
    number->set(2);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(ender->told, 0);
}

TEST(WalkFrame, AttributeMayEndWhileItTells) {
    auto text = attributeOf<std::string>("a");
    const auto ender = std::make_shared<Actor>();
    ender->after = [&](Observable&, Actor::Initiator&) { text.reset(); };
    text->addObserver(*ender, 1, tellAction, false);
    text->set("b");
    EXPECT_EQ(text, nullptr);

    auto number = attributeOf<int>(1);
    ender->after = [&](Observable&, Actor::Initiator&) { number.reset(); };
    number->addObserver(*ender, 1, tellAction, false);
    number->assignFrom("2");
    EXPECT_EQ(number, nullptr);
}

TEST(WalkFrame, ContainerMayEndWhileItsNameChanges) {
    auto container = AttrContainer::create();
    const auto ender = std::make_shared<Actor>();
    ender->after = [&](Observable&, Actor::Initiator&) { container.reset(); };
    container->Attr_Name().addObserver(*ender, 1, tellAction, false);
    container->name("new");
    EXPECT_EQ(container, nullptr);
    EXPECT_EQ(ender->told, 1);
}
