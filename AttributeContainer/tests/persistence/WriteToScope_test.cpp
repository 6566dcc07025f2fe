#include <AttributeContainer/WriteToScope.h>

#include <AttributeContainer/ModelFormat.h>

#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>

using namespace QOR::AttributeContainer;

TEST(WriteToScope, BuildsADefaultContextWhereNoneIsGiven) {
    std::ostringstream out;
    WriteToScope scope(out, nullptr);
    ASSERT_NE(scope.getWriteContext(), nullptr);
    EXPECT_EQ(scope.getWriteContext()->getFormat(), ModelFormat::Text);
    EXPECT_TRUE(scope.getWriteContext()->writeFields());
    EXPECT_EQ(scope.getMof().getFormat(), ModelFormat::Text);
    EXPECT_EQ(&scope.getMof().output(), &out);
}

TEST(WriteToScope, SharesTheContextThatItIsGiven) {
    std::ostringstream out;
    const auto context = std::make_shared<const WriteContextBase>();
    {
        const WriteToScope scope(out, context);
        EXPECT_EQ(scope.getWriteContext(), context);
        EXPECT_EQ(context.use_count(), 2);
    }
    EXPECT_EQ(context.use_count(), 1);
}

TEST(WriteToScope, TakesAChangedFormAtTheNextAccess) {
    std::ostringstream out;
    const auto context = std::make_shared<WriteContextBase>(ModelFormat::XmlV2);
    WriteToScope scope(out, context);
    scope.getMof().startBlock("A");
    context->setFormat(ModelFormat::Text);
    scope.getMof().startBlock("B");
    EXPECT_EQ(out.str(), "<A>\n\nB { ");
}

TEST(WriteToScope, HasAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<WriteToScope>);
}
