#include <AttributeContainer/Picture.h>

#include "support/BlockText.h"
#include "support/ClassTable.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <QOR/Time.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>

namespace QOR::AttributeContainer::Testing {

namespace {
#define ROW(...) QOR_CLASS_ROW(Picture, __VA_ARGS__)
#define MADE_ANEW(...) QOR_CLASS_ROW_MADE_ANEW(Picture, __VA_ARGS__)
const ClassRow rows[] = {
    ROW(7, DataSize, "Attr<int>", 18, {0}),
    ROW(8, Extension, "Attr<String>", 18, {""}),
    ROW(9, InScan, "Attr<int>", 18, {0}),
    ROW(10, InitialLoadData, "Attr<int>", 18, {0}),
    ROW(11, PortraitMode, "Attr<int>", 18, {0}),
    ROW(12, Orientation, "Attr<int>", 18, {0}),
    ROW(13, Spherical, "Attr<int>", 18, {0}),
    ROW(14, HorizontalFOV, "Attr<double>", 18, {0.0}),
    ROW(15, VerticalFOV, "Attr<double>", 18, {0.0}),
    ROW(16, CameraInfo, "Attr<String>", 18, {""}),
    ROW(17, LensInfo, "Attr<String>", 18, {""}),
    ROW(18, FocalLength, "Attr<double>", 18, {0.0}),
    ROW(19, CameraMount, "Attr<String>", 18, {""}),
    ROW(20, CameraMatrix, "Attr<Mat4dd>", 18, {QOR::Mat4d<double>::identity()}),
    ROW(21, HorizontalAngle, "Attr<double>", 18, {0.0}),
    ROW(22, VerticalAngle, "Attr<double>", 18, {0.0}),
    ROW(23, HorizontalEncoder, "Attr<int>", 18, {0}),
    ROW(24, VerticalEncoder, "Attr<int>", 18, {0}),
    ROW(25, LensCalibration, "Attr<String>", 18, {""}),
    ROW(26, LensDistortion, "Attr<String>", 18, {""}),
    ROW(27, WBFactor, "Attr<Vec4dd>", 18, {0, 0, 0, 0}),
    ROW(28, Cols, "Attr<int>", 18, {0}),
    ROW(29, Rows, "Attr<int>", 18, {0}),
    ROW(30, ExposureTime, "Attr<double>", 18, {0.0}),
    ROW(31, Gain, "Attr<double>", 18, {0.0}),
    MADE_ANEW(32, TimeStamp, "Attr<double>", 18),
};
#undef ROW
#undef MADE_ANEW
}  // namespace

QOR_CLASS_TABLE(Picture, rows);

TEST(Picture, ContinuesTheTokensOfATransform) {
    expectClass<Picture, Transform>("Picture", 7, 32);
    EXPECT_EQ(Picture::create()->getAttrToken("Transformation"), 6u);
    EXPECT_EQ(Picture::create()->getName(), "Picture");
}

TEST(Picture, IsMadeWithItsColourSettings) {
    const auto picture = Picture::create();
    const Picture& constPicture = *picture;

    const auto colours = picture->PictureColorPropertiesField().lock();

    ASSERT_NE(colours, nullptr);
    EXPECT_EQ(colours->getClassName(), "PictureColorPropertiesField");
    EXPECT_EQ(picture->getField(0).lock(), colours);
    EXPECT_EQ(constPicture.PictureColorPropertiesField().lock(), colours);
    EXPECT_EQ(picture->getFieldToken("PictureColorPropertiesField"), 0u);
    EXPECT_EQ(picture->getNumFields(), 1u);
    EXPECT_FALSE(colours->HDRParameterField().expired());
}

TEST(Picture, TakesItsColourSettingsFromItsSource) {
    const auto picture = named<Picture>("P1");
    picture->PictureColorPropertiesField().lock()->Event("gamma");

    const auto copy = std::dynamic_pointer_cast<Picture>(picture->duplicate(CreateDeep));
    const auto shared = std::dynamic_pointer_cast<Picture>(picture->duplicate(CreateShareFields));

    ASSERT_NE(copy, nullptr);
    ASSERT_EQ(copy->getNumFields(), 1u);
    EXPECT_NE(copy->PictureColorPropertiesField().lock(),
              picture->PictureColorPropertiesField().lock());
    EXPECT_EQ(copy->PictureColorPropertiesField().lock()->Event(), "gamma");
    ASSERT_NE(shared, nullptr);
    EXPECT_EQ(shared->PictureColorPropertiesField().lock(),
              picture->PictureColorPropertiesField().lock());
}

TEST(Picture, KnowsWhenItWasMade) {
    const double before = QOR::Time{}.getCurrentTime();
    const auto first = Picture::create();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    const auto second = Picture::create();
    const double after = QOR::Time{}.getCurrentTime();

    EXPECT_LE(before, first->TimeStamp());
    EXPECT_LT(first->TimeStamp(), second->TimeStamp());
    EXPECT_LE(second->TimeStamp(), after);
    EXPECT_NEAR(second->TimeStamp() - first->TimeStamp(), 0.002, 1.0);  // seconds
}

TEST(Picture, CountsItsTimeFromTheStartOf1970) {
    const double now =
        std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();

    EXPECT_NEAR(Picture::create()->TimeStamp(), now, 60);
}

TEST(Picture, GivesItsTimeToACopy) {
    const auto picture = Picture::create();
    picture->TimeStamp(1234.5);

    const auto copy = std::dynamic_pointer_cast<Picture>(picture->duplicate(CreateDeep));
    const auto fresh = std::dynamic_pointer_cast<Picture>(picture->duplicate(CreateEmpty));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->TimeStamp(), 1234.5);
    ASSERT_NE(fresh, nullptr);
    EXPECT_GT(fresh->TimeStamp(), 1234.5);
}

TEST(Picture, HasNoFolderOfItsOwn) {
    EXPECT_EQ(Picture::create()->getStorageSubdirectoryInScan(), std::nullopt);
}

TEST(Picture, StoresItsPixelsUnderItsName) {
    const auto root = Object::create();
    const auto scan = addNamed(*root, "scan");
    const auto picture = addNamed<Picture>(*scan, "a");
    EXPECT_EQ(picture->getSaveBinaryDataStreamName(), "Pictures/a");

    picture->name("P1");

    EXPECT_EQ(picture->getSaveBinaryDataStreamName(), "Pictures/P1");
}

TEST(Picture, IsItsOwnRootWhereItHasNoParent) {
    EXPECT_EQ(named<Picture>("alone")->getSaveBinaryDataStreamName(), "Pictures/alone");
}

TEST(Picture, IsReadAsItStands) {
    // Only panoramas are turned and made spherical.
    const auto picture = Picture::create();
    const std::string matrix = "1 2 3 4  5 6 7 8  9 10 11 12  0 0 0 1  ";

    ASSERT_EQ(readText(*picture, containerBlock(attributeBlock("Mat4dd", "Transformation", matrix) +
                                                attributeBlock("int", "Spherical", "0")) +
                                     "\n"),
              std::nullopt);

    EXPECT_EQ(picture->Transformation(),
              Mat4d<double>({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0, 0, 0, 1}));
    EXPECT_EQ(picture->Spherical(), 0);
}

TEST(Picture, ComesBackFromAStream) {
    const auto root = Object::create();
    const auto picture = addNamed<Picture>(*root, "P1");
    picture->Cols(4096);
    picture->Spherical(2);
    picture->WBFactor({1.5, 1, 1, 2});
    picture->TimeStamp(1700000000.25);
    const auto colours = picture->PictureColorPropertiesField().lock();
    colours->HDRParameterField().lock()->ToneMappingType(3);

    const auto copy = Object::create();
    ASSERT_EQ(readText(*copy, written(*root)), std::nullopt);

    const auto same = std::dynamic_pointer_cast<Picture>(copy->inqChild("P1"));
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(same->Cols(), 4096);
    EXPECT_EQ(same->Spherical(), 2);
    EXPECT_EQ(same->WBFactor(), (Vec4d<double>{1.5, 1, 1, 2}));
    EXPECT_EQ(same->CameraMatrix(), Mat4d<double>::identity());
    EXPECT_EQ(same->TimeStamp(), 1700000000.25);
    ASSERT_EQ(same->getNumFields(), 1u);
    EXPECT_EQ(
        same->PictureColorPropertiesField().lock()->HDRParameterField().lock()->ToneMappingType(),
        3);
}

}  // namespace QOR::AttributeContainer::Testing
