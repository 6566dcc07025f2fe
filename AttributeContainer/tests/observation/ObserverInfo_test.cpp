#include <AttributeContainer/ObserverInfo.h>

#include <gtest/gtest.h>

#include <type_traits>

using namespace QOR::AttributeContainer;

namespace {

ErrorPtr someError() {
    return makeError(__FILE__, __LINE__, ErrorCode::WriteProtected, "someError");
}

}  // namespace

TEST(ObserverInfo, ExpiresUntilItIsToldOtherwise) {
    ObserverInfo info;
    EXPECT_TRUE(info.willExpire());
    info.setExpire(false);
    EXPECT_FALSE(info.willExpire());
    info.setExpire(true);
    EXPECT_TRUE(info.willExpire());
}

TEST(ObserverInfo, HasTheNameOfItsClass) {
    EXPECT_EQ(ObserverInfo::getStaticClassName(), "ObserverInfo");
    EXPECT_EQ(InfoFailed::getStaticClassName(), "InfoFailed");
    EXPECT_EQ(InfoStringMap::getStaticClassName(), "InfoStringMap");
    EXPECT_EQ(ObserverInfo().getClassName(), "ObserverInfo");
    EXPECT_EQ(InfoFailed(nullptr).getClassName(), "InfoFailed");
    EXPECT_EQ(InfoStringMap().getClassName(), "InfoStringMap");
}

TEST(ObserverInfo, NamesItsDerivedClassThroughTheBase) {
    const std::unique_ptr<ObserverInfo> info = std::make_unique<InfoStringMap>();
    EXPECT_EQ(info->getClassName(), "InfoStringMap");
}

TEST(NewValueInfo, KeepsACopyOfTheValueAndTheNameOfItsBase) {
    std::string value = "new";
    const NewValueInfo<std::string> info(value);
    value = "changed";
    EXPECT_EQ(info.getValue(), "new");
    EXPECT_EQ(info.getClassName(), "ObserverInfo");
    EXPECT_TRUE(info.willExpire());
}

TEST(InfoFailed, OwnsItsError) {
    const InfoFailed info(someError());
    ASSERT_NE(info.getError(), nullptr);
    EXPECT_EQ(info.getError()->getCode(), ErrorCode::WriteProtected);
    EXPECT_TRUE(info.willExpire());
    EXPECT_FALSE(std::is_copy_constructible_v<InfoFailed>);
}

TEST(InfoFailed, CanBeAVetoWithoutAnError) { EXPECT_EQ(InfoFailed(nullptr).getError(), nullptr); }

TEST(InfoStringMap, StartsEmpty) {
    const InfoStringMap info;
    EXPECT_EQ(info.getNumberInfos(), 0u);
    EXPECT_TRUE(info.getInfos().empty());
    EXPECT_TRUE(info.willExpire());
}

TEST(InfoStringMap, TakesTextsAndFindsThemByKey) {
    InfoStringMap info;
    info.addInfo<std::string>("reason", "too high");
    info.addInfo<std::string>("limit", "20");
    EXPECT_EQ(info.getNumberInfos(), 2u);
    EXPECT_EQ(info.getInfoByKey("reason"), "too high");
    EXPECT_EQ(info.getInfoByKey("limit"), "20");
}

TEST(InfoStringMap, OverwritesTheTextOfAKnownKey) {
    InfoStringMap info;
    info.addInfo<std::string>("limit", "20");
    info.addInfo<std::string>("limit", "30");
    EXPECT_EQ(info.getNumberInfos(), 1u);
    EXPECT_EQ(info.getInfoByKey("limit"), "30");
}

TEST(InfoStringMap, GivesAnEmptyTextForAnUnknownKey) {
    const auto found = InfoStringMap().getInfoByKey("reason");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(*found, "");
}

TEST(InfoStringMap, CanBeMadeFromAMapAndFromACopy) {
    const std::map<std::string, std::string> texts{{"a", "1"}, {"b", "2"}};
    const InfoStringMap info(texts);
    const InfoStringMap copy(info);
    EXPECT_EQ(info.getInfos(), texts);
    EXPECT_EQ(copy.getInfos(), texts);
}

TEST(InfoStringMap, ReplacesAllTextsAtOnce) {
    InfoStringMap info(std::map<std::string, std::string>{{"a", "1"}});
    info.setInfos({{"b", "2"}, {"c", "3"}});
    EXPECT_EQ(info.getInfoByKey("a"), "");
    EXPECT_EQ(info.getNumberInfos(), 2u);
}
