#include <QOR/FirstWarning.h>

#include <gtest/gtest.h>

namespace QOR::AttributeContainer {

namespace {

TEST(FirstWarning, ReleasesNothingWhenNothingHappened) {
    FirstWarning firstWarning;

    EXPECT_FALSE(firstWarning.take(nullptr));
    EXPECT_FALSE(firstWarning.release());
}

TEST(FirstWarning, HandsAHardErrorBack) {
    FirstWarning firstWarning;
    auto error = QOR_ERROR(ParseFailed, "Test::read");
    const auto* made = error.get();

    const auto result = firstWarning.take(std::move(error));

    EXPECT_EQ(result.get(), made);
    EXPECT_FALSE(firstWarning.release());
}

TEST(FirstWarning, KeepsTheFirstOfSeveralWarnings) {
    FirstWarning firstWarning;

    EXPECT_FALSE(firstWarning.take(QOR_ERROR(ElementSkipped, "Test::read")));
    EXPECT_FALSE(firstWarning.take(nullptr));
    EXPECT_FALSE(firstWarning.take(QOR_ERROR(UnknownAttributeType, "Test::read")));

    const auto kept = firstWarning.release();
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->getCode(), ErrorCode::ElementSkipped);
}

TEST(FirstWarning, HandsAHardErrorBackAfterAWarningToo) {
    FirstWarning firstWarning;
    EXPECT_FALSE(firstWarning.take(QOR_ERROR(ObjectNotCreated, "Test::read")));

    const auto error = firstWarning.take(QOR_ERROR(StreamFailed, "Test::read"));

    ASSERT_TRUE(error);
    EXPECT_EQ(error->getCode(), ErrorCode::StreamFailed);
}

TEST(FirstWarning, GivesItsWarningAwayOnce) {
    FirstWarning firstWarning;
    EXPECT_FALSE(firstWarning.take(QOR_ERROR(AttributeNotMarked, "Test::write")));

    EXPECT_TRUE(firstWarning.release());
    EXPECT_FALSE(firstWarning.release());
}

}  // namespace

}  // namespace QOR::AttributeContainer
