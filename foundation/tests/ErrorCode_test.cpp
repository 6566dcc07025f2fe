#include <QOR/ErrorCode.h>

#include "CapturedLog.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string_view>
#include <type_traits>

namespace QOR::AttributeContainer {

namespace {

struct Row {
    ErrorCode code;
    std::uint32_t value;
    bool warning;
    std::string_view name;
};

const Row rows[] = {
    {ErrorCode::ParseFailed, 0, false, "ParseFailed"},
    {ErrorCode::StreamFailed, 1, false, "StreamFailed"},
    {ErrorCode::ContextMissing, 2, false, "ContextMissing"},
    {ErrorCode::ObserverEntryDropped, 3, true, "ObserverEntryDropped"},
    {ErrorCode::ElementUnresolved, 4, false, "ElementUnresolved"},
    {ErrorCode::ElementSkipped, 5, true, "ElementSkipped"},
    {ErrorCode::AttributeNotMarked, 6, true, "AttributeNotMarked"},
    {ErrorCode::AttributeNotCreated, 7, false, "AttributeNotCreated"},
    {ErrorCode::UnknownAttributeType, 8, true, "UnknownAttributeType"},
    {ErrorCode::InvalidName, 9, false, "InvalidName"},
    {ErrorCode::WriteProtected, 10, false, "WriteProtected"},
    {ErrorCode::ReadNotSupported, 11, false, "ReadNotSupported"},
    {ErrorCode::ObjectNotCreated, 12, true, "ObjectNotCreated"},
    {ErrorCode::ChildNotCreated, 13, false, "ChildNotCreated"},
    {ErrorCode::ObjectBlockBroken, 14, false, "ObjectBlockBroken"},
};

TEST(ErrorCode, HasTheFifteenValuesFromZeroToFourteen) {
    EXPECT_EQ(std::size(rows), 15u);
    EXPECT_EQ(sizeof(ErrorCode), 4u);
    for (const auto& row : rows) EXPECT_EQ(static_cast<std::uint32_t>(row.code), row.value);
}

TEST(ErrorCode, IsAWarningForThreeFiveSixEightAndTwelveOnly) {
    for (const auto& row : rows)
        EXPECT_EQ(isWarning(row.code), row.warning) << "code " << row.value;
}

TEST(ErrorCode, IsNoWarningBeyondTheLastValue) {
    EXPECT_FALSE(isWarning(static_cast<ErrorCode>(15)));
}

TEST(ErrorCode, HasTheNameOfItsEnumerator) {
    for (const auto& row : rows) EXPECT_EQ(getErrorCodeName(row.code), row.name);
}

TEST(ErrorCode, HasNoNameBeyondTheLastValue) {
    EXPECT_EQ(getErrorCodeName(static_cast<ErrorCode>(15)), "");
    EXPECT_EQ(getErrorCodeName(static_cast<ErrorCode>(~0u)), "");
}

TEST(ErrorCode, AnErrorAnswersForItsCode) {
    for (const auto& row : rows) {
        const auto error = makeError("file.cpp", 1, row.code, "function");
        EXPECT_EQ(error->getCode(), row.code);
        EXPECT_EQ(error->isWarning(), row.warning) << "code " << row.value;
    }
}

TEST(ErrorCode, ErrorPtrOwnsItsError) {
    EXPECT_TRUE(
        (std::is_same_v<ErrorPtr, std::unique_ptr<ErrorHandling::ErrorWithCode<ErrorCode>>>));
}

TEST(MakeError, LogsUuidAndLocationAndEndsThereWithoutADescription) {
    Testing::CapturedLog log;

    const auto error = makeError("names.cpp", 12, ErrorCode::InvalidName,
                                 "QOR::AttributeContainer::AttrContainer::checkName");

    ASSERT_EQ(log.records.size(), 1u);
    EXPECT_EQ(log.records[0].message, "Error " + error->getUuid() + ": names.cpp:12");
    EXPECT_EQ(log.records[0].level, 1);
    EXPECT_STREQ(log.records[0].file, "names.cpp");
    EXPECT_EQ(log.records[0].line, 12);
    EXPECT_STREQ(log.records[0].function, "QOR::AttributeContainer::AttrContainer::checkName");
}

TEST(MakeError, LogsAtCreationSoThatALaterDescriptionStaysOutOfTheLog) {
    Testing::CapturedLog log;

    const auto error = makeError("names.cpp", 12, ErrorCode::InvalidName, "function");
    error->setDescription("a blank in the name");

    ASSERT_EQ(log.records.size(), 1u);
    EXPECT_EQ(log.records[0].message.find("Description"), std::string::npos);
    EXPECT_EQ(error->getDescription(), "a blank in the name");
}

TEST(MakeError, StartsWithNoDescriptionNoInfosAndNoReasons) {
    const auto error = makeError("a.cpp", 1, ErrorCode::ParseFailed, "function");

    EXPECT_FALSE(error->getDescription().has_value());
    EXPECT_TRUE(error->getInfos().empty());
    EXPECT_TRUE(error->getReasons().empty());
}

TEST(MakeError, MacroFillsInThePlaceAndTheNamespace) {
    Testing::CapturedLog log;

    const auto error = QOR_ERROR(WriteProtected, "Attribute::set");
    const int line = __LINE__ - 1;

    EXPECT_EQ(error->getCode(), ErrorCode::WriteProtected);
    EXPECT_EQ(error->getLocation(), std::string(__FILE__) + ":" + std::to_string(line));
    ASSERT_EQ(log.records.size(), 1u);
    EXPECT_STREQ(log.records[0].function, "QOR::AttributeContainer::Attribute::set");
    EXPECT_EQ(log.records[0].line, line);
}

TEST(AddErrorInfo, AddsATextAndChains) {
    auto error = addErrorInfo(
        addErrorInfo(QOR_ERROR(InvalidName, "AttrContainer::checkName"), {"CurrentName", "scan"}),
        {"NewName", "my scan"});

    ASSERT_TRUE(error);
    EXPECT_EQ(error->getInfos().size(), 2u);
    EXPECT_EQ(std::any_cast<std::string>(error->getInfos().at("CurrentName")), "scan");
    EXPECT_EQ(std::any_cast<std::string>(error->getInfos().at("NewName")), "my scan");
}

TEST(AddErrorInfo, HandsTheSameErrorOn) {
    auto error = QOR_ERROR(InvalidName, "AttrContainer::checkName");
    const auto* made = error.get();

    const auto handedOn = addErrorInfo(std::move(error), {"CheckedName", ""});

    EXPECT_EQ(handedOn.get(), made);
}

TEST(AddErrorInfo, LeavesSuccessAlone) {
    EXPECT_FALSE(addErrorInfo(nullptr, {"CheckedName", "scan"}));
}

TEST(MakeError, ACloneOfALibraryErrorKeepsCodeDescriptionInfosAndReasons) {
    auto error = addErrorInfo(QOR_ERROR(ParseFailed, "Observable::readFrom"), {"Key", "value"});
    error->setDescription("broken");
    error->addReason(*QOR_ERROR(ElementSkipped, "AttrContainer::readField"));
    ErrorPtr copy;

    error->clone(copy);

    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->getCode(), ErrorCode::ParseFailed);
    EXPECT_EQ(copy->getDescription(), "broken");
    EXPECT_EQ(std::any_cast<std::string>(copy->getInfos().at("Key")), "value");
    ASSERT_EQ(copy->getReasons().size(), 1u);
    const auto* reason = dynamic_cast<const ErrorHandling::ErrorWithCode<ErrorCode>*>(
        copy->getReasons().front().get());
    ASSERT_NE(reason, nullptr);
    EXPECT_EQ(reason->getCode(), ErrorCode::ElementSkipped);
    EXPECT_TRUE(reason->isWarning());
}

}  // namespace

}  // namespace QOR::AttributeContainer
