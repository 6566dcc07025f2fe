#include <AttributeContainer/PanoramaPicture.h>

#include "support/ClassTable.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>

namespace QOR::AttributeContainer::Testing {

namespace {
#define ROW(...) QOR_CLASS_ROW(PanoramaPicture, __VA_ARGS__)
const ClassRow rows[] = {
    ROW(33, ThumbnailSize, "Attr<uint64_t>", 18, {0}),
    ROW(34, ImageRole, "Attr<String>", 18, {"UnknownRole"}),
    ROW(35, ImageRoleName, "Attr<String>", 18, {"Standard"}),
    ROW(36, ShowsIn3DViews, "Attr<bool>", 18, {true}),
    ROW(37, TrafoFixedFlags, "Attr<uint32_t>", 18, {1}),
};
#undef ROW
}  // namespace

QOR_CLASS_TABLE(PanoramaPicture, rows);

TEST(PanoramaPicture, ContinuesTheTokensOfAPicture) {
    expectClass<PanoramaPicture, Picture>("PanoramaPicture", 33, 37);
    EXPECT_EQ(PanoramaPicture::create()->getName(), "PanoramaPicture");
    EXPECT_EQ(PanoramaPicture::create()->getFieldToken("PictureColorPropertiesField"), 0u);
    EXPECT_EQ(PanoramaPicture::create()->getNumFields(), 1u);
}

TEST(PanoramaPicture, IsSphericalAndTheRightWayRoundAtFirst) {
    const auto panorama = PanoramaPicture::create();

    EXPECT_EQ(panorama->Spherical(), 1);
    EXPECT_EQ(panorama->TrafoFixedFlags(), 1u);
    EXPECT_EQ(panorama->Transformation(), Mat4d<double>::identity());
}

TEST(PanoramaPicture, IsSphericalAndTheRightWayRoundWhateverItsSourceSays) {
    const auto panorama = named<PanoramaPicture>("P1");
    panorama->Spherical(0);
    panorama->TrafoFixedFlags(6);
    panorama->ImageRole("Color");

    const auto copy = std::dynamic_pointer_cast<PanoramaPicture>(panorama->duplicate(CreateDeep));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Spherical(), 1);
    EXPECT_EQ(copy->TrafoFixedFlags(), 1u);
    EXPECT_EQ(copy->ImageRole(), "Color");
    EXPECT_EQ(copy->getName(), "P1");
    EXPECT_EQ(panorama->Spherical(), 0);
}

TEST(PanoramaPicture, StoresItsPixelsInTheFolderOfItsRole) {
    const auto root = Object::create();
    const auto panorama = addNamed<PanoramaPicture>(*root, "P1");
    panorama->ImageRole("Color");

    EXPECT_EQ(panorama->getStorageSubdirectoryInScan(), "Color");
    EXPECT_EQ(panorama->getSaveBinaryDataStreamName(), "Pictures/Color/P1");
}

TEST(PanoramaPicture, HasAFolderForTheUnknownRoleToo) {
    const auto panorama = PanoramaPicture::create();

    EXPECT_EQ(panorama->getStorageSubdirectoryInScan(), "UnknownRole");
    EXPECT_EQ(panorama->getSaveBinaryDataStreamName(), "Pictures/UnknownRole/PanoramaPicture");
}

TEST(PanoramaPicture, HasNoFolderWithoutARole) {
    const auto panorama = named<PanoramaPicture>("P1");
    panorama->ImageRole("");

    EXPECT_EQ(panorama->getStorageSubdirectoryInScan(), std::nullopt);
    EXPECT_EQ(panorama->getSaveBinaryDataStreamName(), "Pictures/P1");
}

}  // namespace QOR::AttributeContainer::Testing
