#include <AttributeContainer/GenericBinaryObjectV2.h>

#include "support/ClassTable.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace QOR::AttributeContainer::Testing {

namespace {
#define ROW(...) QOR_CLASS_ROW(GenericBinaryObjectV2, __VA_ARGS__)
const ClassRow rows[] = {
    ROW(7, MimeType, "Attr<String>", 18, {""}),  ROW(8, Context, "Attr<String>", 18, {""}),
    ROW(9, Id, "Attr<String>", 18, {""}),        ROW(10, Load, "Attr<bool>", 18, {false}),
    ROW(11, InScan, "Attr<bool>", 18, {false}),  ROW(12, CurrentStream, "Attr<String>", 18, {""}),
    ROW(13, FileName, "Attr<String>", 18, {""}),
};
#undef ROW
}  // namespace

QOR_CLASS_TABLE(GenericBinaryObjectV2, rows);

TEST(GenericBinaryObjectV2, ContinuesTheTokensOfATransform) {
    expectClass<GenericBinaryObjectV2, Transform>("GenericBinaryObjectV2", 7, 13);
    EXPECT_EQ(GenericBinaryObjectV2::create()->getAttrToken("Transformation"), 6u);
    EXPECT_EQ(GenericBinaryObjectV2::create()->Transformation(), Mat4d<double>::identity());
}

TEST(GenericBinaryObjectV2, IsNamedFolderAtFirst) {
    const auto object = GenericBinaryObjectV2::create();

    EXPECT_EQ(object->getName(), "Folder");
    EXPECT_EQ(object->getClassName(), "GenericBinaryObjectV2");
    EXPECT_EQ(GenericBinaryObjectV2::getStaticClassName(), "GenericBinaryObjectV2");
}

TEST(GenericBinaryObjectV2, IsNamedFolderAlsoAsACopy) {
    const auto object = named<GenericBinaryObjectV2>("thumbnail");
    object->FileName("file.png");

    const auto copy =
        std::dynamic_pointer_cast<GenericBinaryObjectV2>(object->duplicate(CreateDeep));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getName(), "Folder");
    EXPECT_EQ(copy->FileName(), "file.png");
    EXPECT_EQ(object->getName(), "thumbnail");
}

TEST(GenericBinaryObjectV2, StoresItsPayloadUnderTheNameOfItsStream) {
    const auto object = GenericBinaryObjectV2::create();
    EXPECT_EQ(object->getSaveBinaryDataStreamName(), "");

    object->CurrentStream("Data/17");

    EXPECT_EQ(object->getSaveBinaryDataStreamName(), "Data/17");
}

TEST(GenericBinaryObjectV2, BearsTheNameThatTheStreamGives) {
    const auto root = Object::create();
    addNamed<GenericBinaryObjectV2>(*root, "thumbnail")->Load(true);

    const auto copy = Object::create();
    ASSERT_EQ(readText(*copy, written(*root)), std::nullopt);

    const auto same = std::dynamic_pointer_cast<GenericBinaryObjectV2>(copy->inqChild("thumbnail"));
    ASSERT_NE(same, nullptr);
    EXPECT_TRUE(same->Load());
}

}  // namespace QOR::AttributeContainer::Testing
