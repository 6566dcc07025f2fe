// What an observable writes of its relations.
#include <AttributeContainer/Observable.h>

#include <AttributeContainer/ModelFormat.h>

#include "support/LogCapture.h"
#include "support/ObserverGraph.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

std::shared_ptr<WriteContextBase> writing(int format) {
    return std::make_shared<WriteContextBase>(format);
}

struct Scene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Listener> listener = listenerAt("/watcher");
};

}  // namespace

TEST(ObservablePersistence, WritesItsPostObserversFromTheWeakestToTheStrongest) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 2, linkAction, false);
    scene.bell->addObserver("elsewhere", 7, tellAction, false);
    scene.bell->addObserver(*scene.listener, 1, tellAction, false);
    EXPECT_EQ(written(*scene.bell), R"(
PostObserver 
ObserverPath { 
Path "elsewhere"
Priority 7
Action "Notify"
}
PostObserver 
ObserverPath { 
Path "/watcher"
Priority 1
Action "Notify"
}
PostObserver 
ObserverPath { 
Path "/watcher"
Priority 2
Action "Correspondence"
})") << "texts come first, since live relations are the strongest";
}

TEST(ObservablePersistence, WritesNoPostObserverThatCouldNotBeFoundAgain) {
    Scene scene;
    const auto pathless = std::make_shared<Listener>();
    const auto empty = listenerAt("");
    scene.bell->addObserver(*scene.listener, 0, tellAction, false);
    scene.bell->addObserver(*scene.listener, 5, noAction, false);
    scene.bell->addObserver(*scene.listener, 5, linkAction, true);
    scene.bell->addObserver(*pathless, 5, tellAction, false);
    scene.bell->addObserver(*empty, 5, tellAction, false);
    EXPECT_EQ(written(*scene.bell), "");
}

TEST(ObservablePersistence, WritesThePreObserversThatCouldNotBeFoundAgain) {
    Scene scene;
    const auto pathless = std::make_shared<Listener>();
    scene.bell->addPreObserver(*scene.listener, 0, askAction, false);
    scene.bell->addPreObserver(*scene.listener, 5, noAction, false);
    scene.bell->addPreObserver(*pathless, 6, askAction, false);
    EXPECT_EQ(written(*scene.bell), R"(
PreObserver 
ObserverPath { 
Path "/watcher"
Priority 0
Action "PreNotify"
}
PreObserver 
ObserverPath { 
Path "/watcher"
Priority 5
Action ""
}
PreObserver 
ObserverPath { 
Path 
Priority 6
Action "PreNotify"
})");
}

TEST(ObservablePersistence, WritesNoPreObserverThatCouldBeFoundAgain) {
    Scene scene;
    scene.bell->addPreObserver(*scene.listener, 1, askAction, false);
    scene.bell->addPreObserver("elsewhere", 9, askAction, false);
    EXPECT_EQ(written(*scene.bell), "");
}

TEST(ObservablePersistence, WritesNoTemporaryPreObserver) {
    Scene scene;
    scene.bell->addPreObserver(*scene.listener, 0, askAction, true);
    EXPECT_EQ(written(*scene.bell), "");
}

TEST(ObservablePersistence, WritesNoRelationWhoseObserverHasGone) {
    Scene scene;
    for (const short priority : {0, 5}) {
        scene.bell->informAddPreObservedBy(
            std::make_unique<ObserverPath>(
                std::nullopt, ObserverPath::OptionalObserver{*scene.listener}, priority, askAction),
            true);
        scene.bell->informAddPostObservedBy(
            std::make_unique<ObserverPath>(std::nullopt,
                                           ObserverPath::OptionalObserver{*scene.listener},
                                           priority, tellAction),
            true);
    }
    scene.listener.reset();
    EXPECT_EQ(written(*scene.bell), "");
}

TEST(ObservablePersistence, WritesPreObserversBeforePostObservers) {
    Scene scene;
    scene.bell->addObserver("b", 1, tellAction, false);
    scene.bell->addPreObserver("a", 0, askAction, false);
    const std::string text = written(*scene.bell);
    EXPECT_LT(text.find("PreObserver"), text.find("PostObserver"));
    EXPECT_NE(text.find("PostObserver"), std::string::npos);
}

TEST(ObservablePersistence, WritesBlocksInTheSecondXmlForm) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 3, tellAction, false);
    scene.bell->addPreObserver("a", 0, askAction, false);
    EXPECT_EQ(written(*scene.bell, writing(ModelFormat::XmlV2)), R"(<PreObserver>
<ObserverPath>
<Path value="'a'" />
<Priority value="0" />
<Action value="'PreNotify'" />
</ObserverPath>
</PreObserver>
<PostObserver>
<ObserverPath>
<Path value="'/watcher'" />
<Priority value="3" />
<Action value="'Notify'" />
</ObserverPath>
</PostObserver>
)");
}

TEST(ObservablePersistence, WritesNothingInTheFirstXmlForm) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 3, tellAction, false);
    EXPECT_EQ(written(*scene.bell, writing(ModelFormat::XmlV1)), "");
}

TEST(ObservablePersistence, WritesNothingWhereOnlyMarkedValuesAreWanted) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 3, tellAction, false);
    const auto context = writing(ModelFormat::Text);
    context->setWriteOnlyMarked(true);
    EXPECT_EQ(written(*scene.bell, context), "");
}

TEST(ObservablePersistence, EndsAtTheFirstFailure) {
    Scene scene;
    scene.bell->addObserver(*scene.listener, 3, tellAction, false);
    std::ostringstream stream;
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(codeOf(scene.bell->writeTo(stream, writing(ModelFormat::Text))),
              ErrorCode::StreamFailed);
}

TEST(ObservablePersistence, NeedsAContext) {
    Scene scene;
    LogCapture log;
    std::stringstream stream;
    EXPECT_EQ(codeOf(scene.bell->writeTo(stream, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(codeOf(scene.bell->readFrom(stream, nullptr)), ErrorCode::ContextMissing);
    ASSERT_EQ(log.records.size(), 2u);
    EXPECT_STREQ(log.records[1].function, "QOR::AttributeContainer::Observable::readFrom");
}
