// One relation in a model stream.
#include <AttributeContainer/ObserverPath.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>

#include "support/ObserverGraph.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Owner = ObserverPath::Owner;
using Target = ObserverPath::OptionalObserver;
using Text = std::optional<const std::string>;

std::shared_ptr<const WriteContextBase> writing(int format) {
    return std::make_shared<const WriteContextBase>(format);
}

std::shared_ptr<const ReadContextBase> reading(int format) {
    auto context = std::make_shared<ReadContextBase>();
    context->setFormat(format);
    return context;
}

ObserverPath byText(const std::string& text, short priority = 5,
                    std::uint64_t action = tellAction) {
    return ObserverPath(Owner{}, Text{text}, priority, action);
}

std::string textOf(const ObserverPath& path, int format = ModelFormat::Text) {
    return written(path, writing(format));
}

// A relation as a reading observable makes it.
ObserverPath blank(Bell& owner) { return ObserverPath(Owner{owner}, Target{}, 1, noAction); }

}  // namespace

// Writing ---------------------------------------------------------------------------------------

TEST(ObserverPathPersistence, WritesItsPathPriorityAndAction) {
    const ObserverPath path = byText("/scan/watcher");
    EXPECT_EQ(textOf(path), R"(
ObserverPath { 
Path "/scan/watcher"
Priority 5
Action "Notify"
})");
}

TEST(ObserverPathPersistence, WritesThePathOfAKnownObserver) {
    const auto listener = listenerAt("/scan/watcher");
    const ObserverPath path(Owner{}, Target{*listener}, -12, 7);
    EXPECT_EQ(textOf(path), R"(
ObserverPath { 
Path "/scan/watcher"
Priority -12
Action "CorespondenceUserConfirmed"
})");
}

TEST(ObserverPathPersistence, WritesNoPathWhereThereIsNone) {
    const auto listener = std::make_shared<Listener>();
    const ObserverPath path(Owner{}, Target{*listener}, 0, askAction);
    EXPECT_EQ(textOf(path), R"(
ObserverPath { 
Path 
Priority 0
Action "PreNotify"
})");
}

TEST(ObserverPathPersistence, WritesAnEmptyPathAndAnEmptyAction) {
    EXPECT_EQ(textOf(byText("", 1, noAction)), R"(
ObserverPath { 
Path ""
Priority 1
Action ""
})");
}

TEST(ObserverPathPersistence, WritesNoPathOfAnObserverThatHasGone) {
    auto listener = listenerAt("/scan/watcher");
    const ObserverPath path(Owner{}, Target{*listener}, 1, tellAction);
    listener.reset();
    EXPECT_EQ(textOf(path), R"(
ObserverPath { 
Path 
Priority 1
Action "Notify"
})");
}

TEST(ObserverPathPersistence, WritesQuotesInAPathSoThatTheyComeBack) {
    const auto bell = std::make_shared<Bell>();
    const std::string name = "a \"b\" \\ c";
    ObserverPath path = blank(*bell);
    readText(path, textOf(byText(name)) + "\n");
    EXPECT_EQ(path.getPath(), name);
}

TEST(ObserverPathPersistence, WritesElementsInBothXmlForms) {
    const ObserverPath path = byText("/a<b");
    EXPECT_EQ(textOf(path, ModelFormat::XmlV2), R"(<ObserverPath>
<Path value="'/a&lt;b'" />
<Priority value="5" />
<Action value="'Notify'" />
</ObserverPath>
)");
    EXPECT_EQ(textOf(path, ModelFormat::XmlV1), R"(<ObserverPath>
<Path value=""/a&lt;b"" />
<Priority value="5" />
<Action value=""Notify"" />
</ObserverPath>
)");
}

TEST(ObserverPathPersistence, LeavesTheStreamAtTheStandingPrecision) {
    std::ostringstream stream;
    stream.precision(3);
    EXPECT_EQ(byText("a").writeTo(stream, writing(ModelFormat::Text)), nullptr);
    EXPECT_EQ(stream.precision(), 8);
}

TEST(ObserverPathPersistence, FailsOnAStreamThatIsNotGood) {
    std::ostringstream stream;
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(codeOf(byText("a").writeTo(stream, writing(ModelFormat::Text))),
              ErrorCode::StreamFailed);
}

TEST(ObserverPathPersistence, NeedsAContext) {
    std::stringstream stream;
    ObserverPath path = byText("a");
    EXPECT_EQ(codeOf(path.writeTo(stream, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(codeOf(path.readFrom(stream, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(stream.str(), "");
}

// Reading ---------------------------------------------------------------------------------------

TEST(ObserverPathPersistence, ReadsWhatItHasWritten) {
    const auto bell = std::make_shared<Bell>();
    ObserverPath path = blank(*bell);

    EXPECT_EQ(readText(path, textOf(byText("/scan/watcher", 17, 12)) + "\n"), std::nullopt);

    EXPECT_EQ(path.getPath(), "/scan/watcher");
    EXPECT_EQ(path.getPriority(), 17);
    EXPECT_EQ(path.getActionToken(), 12u);
    EXPECT_FALSE(path.isTemporary());
    EXPECT_FALSE(path.isResolved());
}

TEST(ObserverPathPersistence, TakesItsWordsInAnyOrderAndWithoutTheBlock) {
    const auto bell = std::make_shared<Bell>();
    ObserverPath path = blank(*bell);
    EXPECT_EQ(readText(path, "Action \"Propagate\" Priority -3 Path \"a\" } "), std::nullopt);
    EXPECT_EQ(path.getPath(), "a");
    EXPECT_EQ(path.getPriority(), -3);
    EXPECT_EQ(path.getActionToken(), propagateAction);
}

TEST(ObserverPathPersistence, KeepsItsDefaultsForWhatIsNotThere) {
    const auto bell = std::make_shared<Bell>();
    ObserverPath path = blank(*bell);
    EXPECT_EQ(readText(path, "ObserverPath { } "), std::nullopt);
    EXPECT_EQ(path.getPath(), std::nullopt);
    EXPECT_EQ(path.getPriority(), 1);
    EXPECT_FALSE(path.getAction().has_value());
}

TEST(ObserverPathPersistence, EndsQuietlyWhereTheStreamEnds) {
    const auto bell = std::make_shared<Bell>();
    ObserverPath path = blank(*bell);
    EXPECT_EQ(readText(path, ""), std::nullopt);
    EXPECT_EQ(readText(path, "ObserverPath { Path \"a\" "), std::nullopt);
    EXPECT_EQ(path.getPath(), "a");
}

TEST(ObserverPathPersistence, HasNoActionForAnUnknownName) {
    const auto bell = std::make_shared<Bell>();
    ObserverPath path = blank(*bell);
    EXPECT_EQ(readText(path, "Action \"Weld\" } "), std::nullopt);
    EXPECT_FALSE(path.getAction().has_value());
}

TEST(ObserverPathPersistence, ResolvesAPathAtOnceButTellsNobody) {
    const auto bell = std::make_shared<Bell>();
    const auto listener = std::make_shared<Listener>();
    bell->near["watcher"] = listener;
    ObserverPath path = blank(*bell);

    readText(path, "Path \"watcher\" Action \"Notify\" } ");

    EXPECT_TRUE(path.isResolved());
    EXPECT_FALSE(path.isActive());
    EXPECT_EQ(&path.getObserver()->get(), listener.get());
    EXPECT_EQ(listener->getNumObservedByMe(), 0u);
}

TEST(ObserverPathPersistence, LetsGoOfTheObserverThatItHadBefore) {
    const auto bell = std::make_shared<Bell>();
    const auto listener = std::make_shared<Listener>();
    bell->addObserver(*listener, 1, tellAction, false);
    readText(bell->getPath(0), "Path \"elsewhere\" } ");
    EXPECT_EQ(bell->getPath(0).getPath(), "elsewhere");
    EXPECT_EQ(listener->getNumObservedByMe(), 0u);
}

TEST(ObserverPathPersistence, FailsOnAnUnknownWord) {
    const auto bell = std::make_shared<Bell>();
    ObserverPath path = blank(*bell);
    EXPECT_EQ(readText(path, "Path \"a\" Colour \"red\" } "), ErrorCode::ParseFailed);
    EXPECT_EQ(path.getPath(), "a") << "what was read stays";
    EXPECT_EQ(readText(path, "Observer } "), ErrorCode::ParseFailed);
}

TEST(ObserverPathPersistence, LeavesTheEndOfItsBlockAsTheCurrentKeyword) {
    ModelInFormat::cleanPropagateKeyword();
    const auto bell = std::make_shared<Bell>();
    std::istringstream stream("ObserverPath { Priority 3 } Next ");
    ModelInFormat outer(stream);
    ASSERT_EQ(outer.getKeyword().value_or(""), "ObserverPath");
    ObserverPath path = blank(*bell);

    EXPECT_EQ(path.readFrom(stream, reading(ModelFormat::Text)), nullptr);

    EXPECT_EQ(outer.getKeyword().value_or(""), "}");
    outer.nextKeyword();
    EXPECT_EQ(outer.getKeyword().value_or(""), "Next") << "the brace is not seen twice";
}

TEST(ObserverPathPersistence, ReadsNoTextsFromXml) {
    const auto bell = std::make_shared<Bell>();
    ObserverPath path = blank(*bell);
    EXPECT_EQ(readText(path, textOf(byText("/watcher", 9), ModelFormat::XmlV2),
                       reading(ModelFormat::XmlV2)),
              std::nullopt);
    EXPECT_EQ(path.getPriority(), 9);
    EXPECT_EQ(path.getPath(), "");
    EXPECT_FALSE(path.getAction().has_value());
}
