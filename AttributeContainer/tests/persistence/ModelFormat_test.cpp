#include <AttributeContainer/ModelFormat.h>

#include <gtest/gtest.h>

#include <type_traits>

using namespace QOR::AttributeContainer;

namespace {

// Built while the static objects of the program are made.
const std::string headerBeforeMain = ModelFormat::XML_HEADER + "\n" + ModelFormat::XML_V2_COMMENT;

}  // namespace

TEST(ModelFormat, NumbersItsForms) {
    EXPECT_EQ(static_cast<int>(ModelFormat::Text), 0);
    EXPECT_EQ(static_cast<int>(ModelFormat::XmlV1), 1);
    EXPECT_EQ(static_cast<int>(ModelFormat::Format::XmlV2), 2);
}

TEST(ModelFormat, HasBracesAsWideCharactersAndAsTexts) {
    EXPECT_TRUE((std::is_same_v<decltype(ModelFormat::START_OF_BLOCK), const wchar_t>));
    EXPECT_TRUE((std::is_same_v<decltype(ModelFormat::END_OF_BLOCK), const wchar_t>));
    EXPECT_EQ(ModelFormat::START_OF_BLOCK, wchar_t{0x7B});
    EXPECT_EQ(ModelFormat::END_OF_BLOCK, wchar_t{0x7D});
    EXPECT_EQ(ModelFormat::START_OF_BLOCK_STR, "{");
    EXPECT_EQ(ModelFormat::END_OF_BLOCK_STR, "}");
}

TEST(ModelFormat, HasTheTextsOfTheXmlHeader) {
    EXPECT_EQ(ModelFormat::XML_HEADER, R"(<?xml version="1.0" encoding="UTF-8"?>)");
    EXPECT_EQ(ModelFormat::XML_V2_COMMENT, "<!-- XML v. 2 -->");
    EXPECT_EQ(ModelFormat::XML_START_COMMENT, "<!-- ");
    EXPECT_EQ(ModelFormat::XML_END_COMMENT, " -->");
    EXPECT_EQ(ModelFormat::XML_NEXT_ROOT, "<!-- NEXT: XML Root Element -->");
    EXPECT_EQ(ModelFormat::XML_NEXT_ROOT.size(), 31U);
    EXPECT_EQ(ModelFormat::XML_NEXT_VERSION, "<!-- NEXT: Version Information -->");
    EXPECT_EQ(ModelFormat::XML_NEXT_ROOT_MODEL, "<!-- NEXT: Root Model Information -->");
    EXPECT_EQ(ModelFormat::XML_ROOT_START_TAG, "<ZELK>");
    EXPECT_EQ(ModelFormat::XML_ROOT_END_TAG, "</ZELK>");
    EXPECT_EQ(ModelFormat::XML_FOOTER, "</ZELK>");
}

TEST(ModelFormat, IsThereForTheStaticObjectsOfOtherFiles) {
    EXPECT_EQ(headerBeforeMain, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- XML v. 2 -->");
}
