#include <AttributeContainer/ReadFromScope.h>

#include <AttributeContainer/ModelFormat.h>

#include "support/StreamContexts.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <type_traits>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(ReadFromScope, BuildsADefaultContextWhereNoneIsGiven) {
    std::istringstream in("");
    ReadFromScope bare(in);
    ReadFromScope null(in, nullptr);

    for (auto* scope : {&bare, &null}) {
        const auto context = scope->getReadContext();
        ASSERT_NE(context, nullptr);
        EXPECT_EQ(context->getFormat(), ModelFormat::Text);
        EXPECT_TRUE(context->areUnknownContainersAccepted());
        EXPECT_EQ(scope->getImf().getFormat(), ModelFormat::Text);
    }
    EXPECT_NE(bare.getReadContext(), null.getReadContext());
}

TEST(ReadFromScope, SharesTheContextThatItIsGiven) {
    std::istringstream in("");
    const auto context = std::make_shared<const ReadContextBase>();
    {
        const ReadFromScope scope(in, context);
        EXPECT_EQ(scope.getReadContext(), context);
        EXPECT_EQ(context.use_count(), 2);
    }
    EXPECT_EQ(context.use_count(), 1);
}

TEST(ReadFromScope, GivesItsReaderTheFormOfTheContext) {
    std::istringstream in("<Name>");
    const auto context = std::make_shared<ReadContextBase>();
    context->setFormat(ModelFormat::XmlV2);
    ReadFromScope scope(in, context);
    EXPECT_EQ(scope.getImf().getKeyword(), "Name");

    context->setFormat(ModelFormat::Text);

    EXPECT_EQ(scope.getImf().getFormat(), ModelFormat::Text);
}

TEST(ReadFromScope, HandsTheLookaheadOnToANestedScope) {
    std::istringstream in("one two ");
    ReadFromScope outer(in);
    EXPECT_EQ(outer.getImf().getKeyword(), "one");
    {
        ReadFromScope inner(in);
        EXPECT_EQ(inner.getImf().getKeyword(), "one");
        inner.getImf().nextKeyword();
    }
    EXPECT_EQ(outer.getImf().getKeyword(), "two");
}

TEST(ReadFromScope, LeavesNoPropagateKeywordBehindAHardError) {
    ModelInFormat::setPropagateKeyword("}");

    const auto error = ReadFromScope::fail(QOR_ERROR(ParseFailed, "ReadFromScope_test"));

    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getCode(), ErrorCode::ParseFailed);
    EXPECT_EQ(keywordOfNextRead(), "clean");
}

TEST(ReadFromScope, KeepsThePropagateKeywordWithAWarning) {
    ModelInFormat::setPropagateKeyword("}");

    const auto warning = ReadFromScope::fail(QOR_ERROR(ElementSkipped, "ReadFromScope_test"));

    ASSERT_NE(warning, nullptr);
    EXPECT_EQ(warning->getCode(), ErrorCode::ElementSkipped);
    EXPECT_EQ(keywordOfNextRead(), "}");
}

TEST(ReadFromScope, KeepsThePropagateKeywordWithoutAnError) {
    ModelInFormat::setPropagateKeyword("}");
    EXPECT_EQ(ReadFromScope::fail(nullptr), nullptr);
    EXPECT_EQ(keywordOfNextRead(), "}");
}

TEST(ReadFromScope, LeavesNoPropagateKeywordBehindAnException) {
    std::istringstream in("");
    try {
        ReadFromScope outer(in);
        ReadFromScope inner(in);
        inner.getImf().setPropagateKeyword("}");
        throw std::invalid_argument("Invalid number format");
    } catch (const std::invalid_argument&) {
        EXPECT_EQ(keywordOfNextRead(), "clean");
    }
}

TEST(ReadFromScope, HasAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<ReadFromScope>);
}
