// The relations of an observable in a model stream.
#include <AttributeContainer/Observable.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>

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

// Writing ----------------------------------------------------------------------------------------------

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
            std::make_unique<ObserverPath>(std::nullopt,
                                           ObserverPath::OptionalObserver{*scene.listener},
                                           priority, askAction),
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

// Reading ----------------------------------------------------------------------------------------------

TEST(ObservablePersistence, ReadsTheRelationsThatItHasWritten) {
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

TEST(ObservablePersistence, ReadsRelationsThatWaitForTheirObserver) {
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

TEST(ObservablePersistence, LeavesARelationThatIsResolvedAtOnceInactive) {
    Scene scene;
    scene.bell->near["watcher"] = scene.listener;
    readText(*scene.bell, "PostObserver ObserverPath { Path \"watcher\" Action \"Notify\" } ");
    ASSERT_EQ(scene.bell->getNumPostObservers(), 1u);
    EXPECT_TRUE(scene.bell->getPath(0).isResolved());
    EXPECT_FALSE(scene.bell->getPath(0).isActive());
    EXPECT_FALSE(scene.bell->getPath(0).isTemporary());
    EXPECT_EQ(scene.bell->getPath(0).getPriority(), 1);
}

TEST(ObservablePersistence, TakesARelationWithoutAHeadingForAPostObserver) {
    Scene scene;
    readText(*scene.bell, "ObserverPath { Path \"a\" Action \"Notify\" } ");
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservablePersistence, GoesByTheLastHeading) {
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

TEST(ObservablePersistence, SortsWhatItReads) {
    Scene scene;
    readText(*scene.bell, R"(
ObserverPath { Path "a" Priority 9 Action "Notify" }
ObserverPath { Path "b" Priority -2 Action "Notify" }
ObserverPath { Path "c" Priority 4 Action "Notify" }
)");
    EXPECT_EQ(prioritiesOf(scene.bell->parEx()->postObservers), (std::vector<short>{-2, 4, 9}));
}

TEST(ObservablePersistence, TakesEqualRelationsOnce) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, R"(
ObserverPath { Path "a" Action "Notify" }
ObserverPath { Path "a" Action "Notify" }
)"),
              std::nullopt);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservablePersistence, DropsARelationWithAnUnknownActionAndNoMore) {
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

TEST(ObservablePersistence, FailsOnAWordThatIsNoRelation) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, "Colour \"red\" "), ErrorCode::ParseFailed);
    EXPECT_EQ(readText(*scene.bell, "Observer "), ErrorCode::ParseFailed)
        << "that word is in the table, and no more";
}

TEST(ObservablePersistence, FailsWithARelationThatFailsAndKeepsWhatItRead) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, R"(
ObserverPath { Path "a" Action "Notify" }
ObserverPath { Path "b" Colour "red" }
ObserverPath { Path "c" Action "Notify" }
)"),
              ErrorCode::ParseFailed);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservablePersistence, LetsAnErrorWinOverAWarning) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, "ObserverPath { Action \"Weld\" } Colour "),
              ErrorCode::ParseFailed);
}

TEST(ObservablePersistence, EndsQuietlyWhereTheStreamEnds) {
    Scene scene;
    EXPECT_EQ(readText(*scene.bell, ""), std::nullopt);
    EXPECT_EQ(readText(*scene.bell, "PostObserver ObserverPath { Action \"Notify\" "),
              std::nullopt);
    EXPECT_EQ(scene.bell->getNumPostObservers(), 1u);
}

TEST(ObservablePersistence, ShowsTheEndOfItsBlockToTheCallerAgain) {
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

TEST(ObservablePersistence, DropsWhatComesFromXmlSinceTextsDoNotComeBack) {
    Scene scene;
    scene.bell->addObserver("a", 3, tellAction, false);
    scene.bell->addObserver("b", 4, tellAction, false);
    const auto back = std::make_shared<Bell>();
    EXPECT_EQ(readText(*back, written(*scene.bell, writing(ModelFormat::XmlV2)),
                       reading(ModelFormat::XmlV2)),
              ErrorCode::ObserverEntryDropped);
    EXPECT_TRUE(back->par()->empty());
}
