#include <AttributeContainer/ArrayContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(ArrayContainer, IsNamedAfterItsClassAndEmptyAtFirst) {
    const auto array = ArrayContainer::create();
    EXPECT_EQ(ArrayContainer::getStaticClassName(), "ArrayContainer");
    EXPECT_EQ(array->getClassName(), "ArrayContainer");
    EXPECT_EQ(array->getName(), "ArrayContainer");
    EXPECT_EQ(array->contentType(), "");
    EXPECT_EQ(array->selectedElement(), "");
}

TEST(ArrayContainer, DeclaresTwoTexts) {
    const auto array = ArrayContainer::create();

    EXPECT_EQ(array->getMaxAttrToken(), 2u);
    EXPECT_EQ(array->getNumHardCodedAttributes(), 3u);
    const std::vector<std::string> keys{"contentType", "selectedElement"};
    for (std::uint64_t token = 1; token <= 2; ++token) {
        const AttrDefinition* const row = array->getAttrDefinition(token);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->token, token);
        EXPECT_EQ(row->name, keys[token - 1]);
        EXPECT_EQ(row->type, AttrType{10});
        EXPECT_EQ(row->category, 18);
    }
    EXPECT_EQ(array->getAttrDefinition(3), nullptr);
}

TEST(ArrayContainer, HasAccessorsForThem) {
    const auto array = ArrayContainer::create();
    array->contentType("Mark");
    array->selectedElement("second");
    EXPECT_EQ(array->contentType(), "Mark");
    EXPECT_EQ(array->selectedElement(), "second");
    EXPECT_EQ(array->getAttribute("contentType").lock()->getValueString(), "Mark");
}

TEST(ArrayContainer, HoldsItsElementsAsFields) {
    const auto array = ArrayContainer::create();
    addNamedField<Mark>(*array, "first");
    addNamedField<Mark>(*array, "second");

    const auto copy = std::dynamic_pointer_cast<ArrayContainer>(array->duplicate(CreateDeep));

    EXPECT_EQ(array->getNumFields(), 2u);
    EXPECT_EQ(copy->getNumFields(), 2u);
    EXPECT_EQ(copy->getField("second").lock()->getClassName(), "Mark");
}
