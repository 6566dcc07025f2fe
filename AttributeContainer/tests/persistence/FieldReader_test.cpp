// What a container takes out of the block of a field.
#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/LogCapture.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

std::string count(int value) { return attributeBlock("int", "Count", std::to_string(value)); }

// A stream of one field.
std::string field(const std::string& type, const std::string& name,
                  const std::string& content = containerBlock()) {
    return containerBlock(fieldBlock(type, name, content));
}
std::string countField(const std::string& type, const std::string& name, int value,
                       const std::string& ahead = {}) {
    return field(type, name, ahead + containerBlock(count(value)));
}

/// Maps old tokens and handles, and may make fields itself, as the test says. Notes when a read
/// asks for a field, which is when there is a place for the token.
class Mapped : public ContainerClass<Mapped, Pole, "Mapped"> {
public:
    using Block::Block;
    using Block::readField;

    std::uint64_t convertToNewFieldToken(std::uint64_t old) const override {
        return old == 9 ? tokenOf9 : Pole::convertToNewFieldToken(old);
    }
    std::weak_ptr<AttrContainer> lookupField(const SVec2d<int>& handle) const override {
        return handle.x == -3 && handle.y == 4 ? behindHandle : nullptr;
    }
    std::shared_ptr<AttrContainer> checkCreateChildField(const std::string& typeName,
                                                         const std::string& name,
                                                         std::uint64_t* token) override {
        if (token) asked.push_back("first " + typeName + " " + name + " " + std::to_string(*token));
        return first;
    }
    std::shared_ptr<AttrContainer> checkCreateDefaultChildField(const std::string& typeName,
                                                                const std::string& name,
                                                                std::uint64_t* token) override {
        if (token) asked.push_back("last " + typeName + " " + name + " " + std::to_string(*token));
        return last;
    }

    std::uint64_t tokenOf9 = 1;
    std::shared_ptr<AttrContainer> behindHandle, first, last;
    std::vector<std::string> asked;
};

/// Counts as not marked when it was read.
class Unmarked : public ContainerClass<Unmarked, AttrContainer, "Unmarked"> {
public:
    using Block::Block;
    ErrorPtr readFrom(std::istream& stream,
                      std::shared_ptr<const ReadContextBase> context) override {
        auto error = Block::readFrom(stream, std::move(context));
        return error ? std::move(error) : QOR_ERROR(AttributeNotMarked, "Unmarked::readFrom");
    }
};
const auto unmarkedRegistered = FieldFactory::addField<Unmarked>("Unmarked");

}  // namespace

TEST(FieldReading, MakesAFieldOfTheClassThatTheStreamNames) {
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root, countField("Mark", "inner", 5)), std::nullopt);
    const auto inner = std::dynamic_pointer_cast<Mark>(root->getField("inner").lock());
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->getName(), "inner");
    EXPECT_EQ(inner->Count(), 5);
}

TEST(FieldReading, ReadsIntoAFieldOfTheSameClassThatIsThere) {
    const auto pole = Pole::create();
    const auto mark = pole->Mark().lock();
    EXPECT_EQ(readText(*pole, countField("Mark", "Mark", 5)), std::nullopt);
    EXPECT_EQ(pole->Mark().lock(), mark);
    EXPECT_EQ(mark->Count(), 5);
}

TEST(FieldReading, ReplacesAFieldWhoseClassHasChanged) {
    const auto pole = Pole::create();
    const auto mark = pole->Mark().lock();
    EXPECT_EQ(readText(*pole, countField("TallMark", "Mark", 5)), std::nullopt);
    EXPECT_NE(pole->Mark().lock(), mark);
    EXPECT_EQ(pole->getField(std::uint64_t{0}).lock()->getClassName(), "TallMark");
    EXPECT_EQ(pole->getNumFields(), 2u);
}

TEST(FieldReading, KeepsAnUnknownClassInAPlaceholder) {
    const LogCapture log;
    const auto root = AttrContainer::create();
    readText(*root, containerBlock(fieldBlock("Nobody", "inner", containerBlock(count(5))) +
                                   fieldBlock("Mark", "next")));
    const auto inner = std::dynamic_pointer_cast<FallbackObject>(root->getField("inner").lock());
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->getOriginalClassName(), "Nobody");
    EXPECT_FALSE(root->getField("next").expired());
    EXPECT_EQ(log.messages(3),
              std::vector<std::string>{"Error creating container with typeName Nobody"});
}

TEST(FieldReading, EndsAtAnUnknownClassWhereNoneIsAccepted) {
    const LogCapture log;
    const auto root = AttrContainer::create();
    const auto context = std::make_shared<ReadContextBase>();
    context->setAreUnknownContainersAccepted(false);
    std::istringstream in(field("Nobody", "inner"));

    const auto error = root->readFrom(in, context);

    ASSERT_EQ(codeOf(error), ErrorCode::ParseFailed);
    EXPECT_EQ(error->getDescription(), "Unknown Key: AttrContainer Unknown type: Nobody");
    EXPECT_EQ(root->getNumFields(), 0u);
    EXPECT_EQ(log.messages(3),
              (std::vector<std::string>{"Error creating container with typeName Nobody",
                                        "Failed to create container of type Nobody. Using "
                                        "UnknownAttrContainer instead."}));
}

TEST(FieldReading, TakesTheFirstOfThreeMakersThatGivesAField) {
    const auto mapped = Mapped::create();
    mapped->first = TallMark::create();
    EXPECT_EQ(readText(*mapped, countField("Mark", "new", 5)), std::nullopt);
    EXPECT_EQ(mapped->getField("new").lock(), mapped->first);
    EXPECT_EQ(std::dynamic_pointer_cast<TallMark>(mapped->first)->Count(), 5);

    mapped->first = nullptr;
    mapped->last = TallMark::create();
    EXPECT_EQ(readText(*mapped, field("Mark", "known")), std::nullopt);
    EXPECT_EQ(mapped->getField("known").lock()->getClassName(), "Mark");

    EXPECT_EQ(readText(*mapped, field("Nobody", "other")), std::nullopt);
    EXPECT_EQ(mapped->getField("other").lock(), mapped->last);
    const std::string none = std::to_string(AttrContainer::noToken);
    EXPECT_EQ(mapped->asked, (std::vector<std::string>{
                                 "first Mark new " + none, "first Mark known " + none,
                                 "first Nobody other " + none, "last Nobody other " + none}));
}

TEST(FieldReading, LogsNothingOfAnUnknownClassThatTheLastMakerKnows) {
    const LogCapture log;
    const auto mapped = Mapped::create();
    mapped->last = AttributeContainer::Testing::Mark::create();
    EXPECT_EQ(readText(*mapped, field("Nobody", "new")), std::nullopt);
    EXPECT_EQ(mapped->getField("new").lock(), mapped->last);
    EXPECT_TRUE(log.messages(3).empty());
}

TEST(FieldReading, ReadsIntoTheFieldOfATokenThatTheClassMaps) {
    const auto mapped = Mapped::create();
    const auto top = mapped->Top().lock();
    EXPECT_EQ(readText(*mapped, countField("TallMark", "Gone", 5, "\nFieldToken 9")), std::nullopt);
    EXPECT_EQ(mapped->Top().lock(), top);
    EXPECT_EQ(top->Count(), 5);
    EXPECT_EQ(mapped->getNumFields(), 2u);
}

TEST(FieldReading, FindsAFieldByItsNameWhereItsTokenHasMoved) {
    const auto mapped = Mapped::create();
    const auto mark = mapped->Mark().lock();
    const auto top = mapped->Top().lock();
    EXPECT_EQ(readText(*mapped, countField("Mark", "Mark", 5, "\nFieldToken 9")), std::nullopt);
    EXPECT_EQ(mapped->Mark().lock(), mark);
    EXPECT_EQ(mark->Count(), 5);
    EXPECT_EQ(mapped->Top().lock(), top);
    EXPECT_EQ(mapped->getNumFields(), 2u);
}

TEST(FieldReading, ReplacesTheFieldOfATokenThatHasAnotherClassByNowHereAndThere) {
    const auto mapped = Mapped::create();
    const std::string block = "\nFieldToken 9" + containerBlock();
    EXPECT_EQ(readText(*mapped, field("AttrContainer", "Mark", block)), std::nullopt);
    EXPECT_EQ(mapped->getField(std::uint64_t{1}).lock()->getClassName(), "AttrContainer");
    EXPECT_EQ(mapped->getField(std::uint64_t{0}).lock()->getClassName(), "Mark");
}

TEST(FieldReading, TakesATokenThatNobodyMapsForNone) {
    const auto pole = Pole::create();
    const auto mark = pole->Mark().lock();
    EXPECT_EQ(readText(*pole, field("TallMark", "Mark", "\nFieldToken 0" + containerBlock())),
              std::nullopt);
    EXPECT_EQ(pole->Mark().lock(), mark);
    ASSERT_EQ(pole->getNumFields(), 3u);
    EXPECT_EQ(pole->getField(std::uint64_t{2}).lock()->getClassName(), "TallMark");
    EXPECT_NE(pole->getFieldName(2), "Mark");
}

TEST(FieldReading, AddsAFieldWhoseTokenLiesOutsideOfTheList) {
    const auto mapped = Mapped::create();
    mapped->tokenOf9 = 50;
    EXPECT_EQ(readText(*mapped, field("AttrContainer", "new", "\nFieldToken 9" + containerBlock())),
              std::nullopt);
    EXPECT_EQ(mapped->getFieldToken("new"), 2u);
}

TEST(FieldReading, AttachesTheFieldBehindAHandle) {
    const auto mapped = Mapped::create();
    const auto mark = AttributeContainer::Testing::Mark::create();
    mapped->behindHandle = mark;
    EXPECT_EQ(readText(*mapped, field("Mark", "Mark", "\nFieldHandle -3 4 ")), std::nullopt);
    EXPECT_EQ(mapped->Mark().lock(), mark);
    EXPECT_EQ(mapped->getNumFields(), 2u);

    EXPECT_EQ(readText(*mapped, field("Mark", "new", "\nFieldHandle -3 4 ")), std::nullopt);
    EXPECT_EQ(mapped->getField("new").lock(), mark);
    EXPECT_EQ(mapped->getNumFields(), 3u);
}

TEST(FieldReading, LeavesTheFieldWhereNothingIsBehindAHandle) {
    const auto mapped = Mapped::create();
    const auto mark = mapped->Mark().lock();
    EXPECT_EQ(readText(*mapped, field("Mark", "Mark", "\nFieldHandle 3 4 ")), std::nullopt);
    EXPECT_EQ(mapped->Mark().lock(), mark);
    EXPECT_EQ(readText(*AttrContainer::create(), field("Mark", "a", "\nFieldHandle 3 4 ")),
              std::nullopt);
}

TEST(FieldReading, MakesOneFieldForEachBodyWithoutAName) {
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root, field("Mark", "", containerBlock(count(5)) + containerBlock())),
              std::nullopt);
    ASSERT_EQ(root->getNumFields(), 2u);
    EXPECT_EQ(root->getFieldName(0), "Mark");
    EXPECT_NE(root->getFieldName(1), "Mark");
    const auto first = std::dynamic_pointer_cast<Mark>(root->getField(std::uint64_t{0}).lock());
    EXPECT_EQ(first->Count(), 5);
}

TEST(FieldReading, LeavesNoTraceOfAFieldThatIsNotMarked) {
    const auto root = Pole::create();
    const auto mark = root->Mark().lock();
    const auto context = resolving({7});
    EXPECT_EQ(
        readText(*root,
                 containerBlock(fieldBlock("Unmarked", "Mark", instanceLine(7) + containerBlock()) +
                                fieldBlock("Mark", "next")),
                 context),
        std::nullopt);
    EXPECT_EQ(root->Mark().lock(), mark);
    EXPECT_EQ(root->getNumFields(), 3u);
    EXPECT_EQ(context->getReferenceDictionary()->resolveReference(7), nullptr);
}

TEST(FieldReading, GoesOnBehindAWarningAndTellsOfItAtTheEnd) {
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root, containerBlock(fieldBlock("Mark", "a", containerBlock("\nOdd ")) +
                                             fieldBlock("Mark", "b"))),
              ErrorCode::UnknownAttributeType);
    EXPECT_FALSE(root->getField("a").expired());
    EXPECT_FALSE(root->getField("b").expired());
}

TEST(FieldReading, EndsAtAHardErrorInAFieldAndKeepsWhatWasRead) {
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root, containerBlock(
                                  fieldBlock("Mark", "a",
                                             containerBlock(count(5) + "\nName \"without type\"")) +
                                  fieldBlock("Mark", "b"))),
              ErrorCode::AttributeNotCreated);
    const auto a = std::dynamic_pointer_cast<Mark>(root->getField("a").lock());
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->Count(), 5);
    EXPECT_TRUE(root->getField("b").expired());
}

TEST(FieldReading, NeedsAContext) {
    std::istringstream in("\"Mark\" \"a\" AttrContainer { } }");
    EXPECT_EQ(codeOf(Mapped::create()->readField(in, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(in.tellg(), std::streampos(0));
}

// Depth
// --------------------------------------------------------------------------------------------

TEST(FieldReading, RefusesFieldsBelowTheDeepestLevel) {
    const auto context = std::make_shared<ReadContextBase>();
    context->setMaxDepth(2);
    const std::string two =
        fieldBlock("AttrContainer", "a", containerBlock(fieldBlock("AttrContainer", "b")));
    const std::string three = fieldBlock("AttrContainer", "c", containerBlock(two));
    EXPECT_EQ(readText(*AttrContainer::create(), containerBlock(two), context), std::nullopt);
    EXPECT_EQ(readText(*AttrContainer::create(), containerBlock(three), context),
              ErrorCode::ParseFailed);
}

TEST(FieldReading, RefusesAHundredThousandLevels) {
    std::string text = "\nAttrContainer { \n";
    for (int i = 0; i < 100000; ++i)
        text += "SubContainer { \n\"AttrContainer\" \"a\"\nAttrContainer { \n";
    const auto root = AttrContainer::create();
    EXPECT_EQ(readText(*root, text), ErrorCode::ParseFailed);

    int depth = 0;
    for (auto at = root; (at = at->getField("a").lock());) ++depth;
    EXPECT_EQ(depth, 1000);
}
