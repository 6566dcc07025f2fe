#include <AttributeContainer/GenericBinaryObjectV2.h>

#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(GenericBinaryObjectV2, HasTheRowsOfItsTable) {
    struct Row {
        std::uint64_t token;
        const char* key;
        AttrType type;
    };
    constexpr AttrType text{10};
    constexpr AttrType flag{11};
    const Row rows[] = {{6, "Transformation", AttrType{25}},
                        {7, "MimeType", text},
                        {8, "Context", text},
                        {9, "Id", text},
                        {10, "Load", flag},
                        {11, "InScan", flag},
                        {12, "CurrentStream", text},
                        {13, "FileName", text}};
    const auto object = GenericBinaryObjectV2::create();

    for (const Row& row : rows) {
        EXPECT_EQ(object->getAttrToken(row.key), row.token) << row.key;
        EXPECT_EQ(object->getAttrName(row.token), row.key);
        const AttrDefinition* const definition = object->getAttrDefinition(row.token);
        ASSERT_NE(definition, nullptr) << row.key;
        EXPECT_EQ(definition->type, row.type) << row.key;
        EXPECT_EQ(definition->category, 18) << row.key;
    }
    EXPECT_EQ(object->getMaxAttrToken(), 13u);
    EXPECT_EQ(object->getNumAttributes(), 14u);
}

TEST(GenericBinaryObjectV2, HasTheDefaultsOfItsTable) {
    const auto object = GenericBinaryObjectV2::create();

    EXPECT_EQ(object->MimeType(), "");
    EXPECT_EQ(object->Context(), "");
    EXPECT_EQ(object->Id(), "");
    EXPECT_FALSE(object->Load());
    EXPECT_FALSE(object->InScan());
    EXPECT_EQ(object->CurrentStream(), "");
    EXPECT_EQ(object->FileName(), "");
    EXPECT_EQ(object->Transformation(), QOR::Mat4d<double>::identity());
}

TEST(GenericBinaryObjectV2, HasAnAccessorForEachRow) {
    const auto object = GenericBinaryObjectV2::create();

    object->MimeType("image/png");
    object->Context("context");
    object->Id("17");
    object->Load(true);
    object->InScan(true);
    object->CurrentStream("stream");
    object->FileName("file.png");

    EXPECT_EQ(object->Attr_MimeType().get(), "image/png");
    EXPECT_EQ(object->Attr_Context().get(), "context");
    EXPECT_EQ(object->Attr_Id().get(), "17");
    EXPECT_TRUE(object->Attr_Load().get());
    EXPECT_TRUE(object->Attr_InScan().get());
    EXPECT_EQ(object->Attr_CurrentStream().get(), "stream");
    EXPECT_EQ(object->Attr_FileName().get(), "file.png");
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
