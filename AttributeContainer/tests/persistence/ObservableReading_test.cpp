// What an observable reads of its relations.
#include <AttributeContainer/Observable.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>

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

std::shared_ptr<const ReadContextBase> reading(int format) {
    auto context = std::make_shared<ReadContextBase>();
    context->setFormat(format);
    return context;
}

struct Scene {
    std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::shared_ptr<Listener> listener = listenerAt("/watcher");
};

}  // namespace

TEST(ObservableReading, ReadsTheRelationsThatItHasWritten) {
    Scene scene;
    scene.bell->addObserver("a", 7, tellAction, false);
    scene.bell->addObserver("b", 2, linkAction, false);
    scene.bell->addPreObserver("c", 0, askAction, false);
    const std::string text = written(*scene.bell);
    const auto back = std::make_shared<Bell>();

    EXPECT_EQ(readText(*back, text + "\n"), std::nullopt);

    ASSERT_EQ(back->getNumPreObservers(), 1u);
    ASSERT_EQ(back->getNumPostObservers(), 2u);
    EXPECT_EQ(back->getPath(0).getPath(), "c");
    EXPECT_EQ(back->getPath(1).getPath(), "b");
    EXPECT_EQ(back->getPath(1).getPriority(), 2);
    EXPECT_EQ(back->getPath(2).getActionToken(), tellAction);
    EXPECT_EQ(written(*back), text);
}

TEST(ObservableReading, ReadsRelationsThatWaitForTheirObserver) {
    Scene scene;
    readText(*scene.bell, R"(
PostObserver 
ObserverPath { 
Path "watcher"
Priority 4
Action "Notify"
}
)");
    EXPECT_FALSE(scene.bell->updateObserverLists(false));
    scene.bell->near["watcher"] = scene.listener;
    EXPECT_TRUE(scene.bell->updateObserverLists(false));
    scene.bell->ring();
    EXPECT_EQ(scene.listener->told, 1);
}

TEST(ObservableReading, LeavesARelationThatIsResolvedAtOnceInactive) {
    Scene scene;
    scene.bell->near["watcher"] = scene.listener;
    readText(*scene.bell, "PostObserver ObserverPath { Path \"watcher\" Action \"Notify\" } ");
    ASSERT_EQ(scene.bell->getNumPostObservers(), 1u);
    EXPECT_TRUE(scene.bell->getPath(0).isResolved());
    EXPECT_FALSE(scene.bell->getPath(0).isActive());
    EXPECT_FALSE(scene.bell->getPath(0).isTemporary());
    EXPECT_EQ(scene.bell->getPath(0).getPriority(), 1);
}

TEST(ObservableReading, TakesARelationWithoutAHeadingForAPostObserver) {
    Scene scene;
    readText(*scene.bell, "ObserverPath { Path \"a\" Action \"Notify\" } ");
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservableReading, GoesByTheLastHeading) {
    Scene scene;
    readText(*scene.bell, R"(PreObserver
ObserverPath { Path "a" Action "Notify" }
ObserverPath { Path "b" Action "Notify" }
PostObserver
ObserverPath { Path "c" Action "Notify" }
PostObserver PreObserver
ObserverPath { Path "d" Action "Notify" }
)");
    EXPECT_EQ(scene.bell->getNumPreObservers(), 3u);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservableReading, SortsWhatItReads) {
    Scene scene;
    readText(*scene.bell, R"(
ObserverPath { Path "a" Priority 9 Action "Notify" }
ObserverPath { Path "b" Priority -2 Action "Notify" }
ObserverPath { Path "c" Priority 4 Action "Notify" }
)");
    EXPECT_EQ(prioritiesOf(scene.bell->parEx()->postObservers), (std::vector<short>{-2, 4, 9}));
}

TEST(ObservableReading, TakesEqualRelationsOnce) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, R"(
ObserverPath { Path "a" Action "Notify" }
ObserverPath { Path "a" Action "Notify" }
)"),
              std::nullopt);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservableReading, DropsARelationWithAnUnknownActionAndNoMore) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, R"(
PostObserver 
ObserverPath { 
Path "a"
Priority 4
Action "Weld"
}
ObserverPath { 
Path "b"
Priority 4
Action "Rivet"
}
PostObserver 
ObserverPath { 
Path "c"
Priority 4
Action "Notify"
}
)"),
              ErrorCode::ObserverEntryDropped);
    ASSERT_EQ(scene.bell->getNumPostObservers(), 1u);
    EXPECT_EQ(scene.bell->getPath(0).getPath(), "c");
}

TEST(ObservableReading, FailsOnAWordThatIsNoRelation) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, "Colour \"red\" "), ErrorCode::ParseFailed);
    EXPECT_EQ(readText(*scene.bell, "Observer "), ErrorCode::ParseFailed)
        << "that word is in the table, and no more";
}

TEST(ObservableReading, FailsWithARelationThatFailsAndKeepsWhatItRead) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, R"(
ObserverPath { Path "a" Action "Notify" }
ObserverPath { Path "b" Colour "red" }
ObserverPath { Path "c" Action "Notify" }
)"),
              ErrorCode::ParseFailed);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservableReading, LetsAnErrorWinOverAWarning) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, "ObserverPath { Action \"Weld\" } Colour "),
              ErrorCode::ParseFailed);
}

TEST(ObservableReading, EndsQuietlyWhereTheStreamEnds) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, ""), std::nullopt);
    EXPECT_EQ(readText(*scene.bell, "PostObserver ObserverPath { Action \"Notify\" "),
              std::nullopt);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservableReading, ShowsTheEndOfItsBlockToTheCallerAgain) {
    ModelInFormat::cleanPropagateKeyword();
    Scene scene;
    std::istringstream stream("PostObserver ObserverPath { Path \"a\" Action \"Notify\" } } Next ");
    ModelInFormat outer(stream);
    ASSERT_EQ(outer.getKeyword().value_or(""), "PostObserver");

    EXPECT_EQ(scene.bell->readFrom(stream, reading(ModelFormat::Text)), nullptr);

    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
    outer.nextKeyword();
    EXPECT_EQ(outer.getKeyword().value_or(""), "}");
    outer.nextKeyword();
    EXPECT_EQ(outer.getKeyword().value_or(""), "Next");
}

TEST(ObservableReading, DropsWhatComesFromXmlSinceTextsDoNotComeBack) {
    Scene scene;
    scene.bell->addObserver("a", 3, tellAction, false);
    scene.bell->addObserver("b", 4, tellAction, false);
    const auto back = std::make_shared<Bell>();
    EXPECT_EQ(readText(*back, written(*scene.bell, writing(ModelFormat::XmlV2)),
                       reading(ModelFormat::XmlV2)),
              ErrorCode::ObserverEntryDropped);
    EXPECT_TRUE(back->par()->empty());
}
