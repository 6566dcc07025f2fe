#include <AttributeContainer/UnknownAttrContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(UnknownAttrContainer, HasItsClassNameAndNoRows) {
    const auto unknown = UnknownAttrContainer::create();
    EXPECT_EQ(UnknownAttrContainer::getStaticClassName(), "UnknownAttrContainer");
    EXPECT_EQ(unknown->getClassName(), "UnknownAttrContainer");
    EXPECT_EQ(unknown->getName(), "UnknownAttrContainer");
    EXPECT_EQ(unknown->getMaxAttrToken(), 0u);
    EXPECT_EQ(unknown->getUnknownTypeName(), "");
}

TEST(UnknownAttrContainer, MakesItsFieldsUnknownAsWell) {
    const auto unknown = UnknownAttrContainer::create();
    std::uint64_t token = 3;

    // Also for a class that the factory knows.
    const auto field = std::dynamic_pointer_cast<UnknownAttrContainer>(
        unknown->checkCreateChildField("Mark", "inner", &token));

    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->getClassName(), "UnknownAttrContainer");
    EXPECT_EQ(field->getName(), "inner");
    EXPECT_EQ(field->getUnknownTypeName(), "Mark");
    EXPECT_EQ(token, 3u);
    EXPECT_EQ(unknown->getNumFields(), 0u);
}

TEST(UnknownAttrContainer, LeavesTheClassNameToAFieldWhoseNameIsInvalid) {
    const auto field = UnknownAttrContainer::create()->checkCreateChildField("T", "a b", nullptr);
    EXPECT_EQ(field->getName(), "UnknownAttrContainer");
}

TEST(UnknownAttrContainer, KeepsItsTypeNameInADuplicate) {
    const auto unknown = UnknownAttrContainer::create();
    unknown->setUnknownTypeName("survey::Prism");
    addCustom(*unknown, "Depth", 3);

    const auto copy =
        std::dynamic_pointer_cast<UnknownAttrContainer>(unknown->duplicate(CreateDeep));
    const auto empty =
        std::dynamic_pointer_cast<UnknownAttrContainer>(unknown->duplicate(CreateEmpty));

    EXPECT_EQ(copy->getUnknownTypeName(), "survey::Prism");
    EXPECT_EQ(copy->getNumAttributes(), 2u);
    EXPECT_EQ(empty->getUnknownTypeName(), "");
}
