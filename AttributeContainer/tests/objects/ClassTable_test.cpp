// What holds for every row of every class. The rows stand in the tests of the classes.
#include "support/ClassTable.h"

#include <AttributeContainer/AttrDefinition.h>

#include <gtest/gtest.h>

namespace QOR::AttributeContainer::Testing {

TEST_P(ClassTable, LeadsFromTheKeyToTheTokenAndBack) {
    const auto object = GetParam().create();

    EXPECT_EQ(object->getAttrToken(GetParam().key), GetParam().token);
    EXPECT_EQ(object->getAttrName(GetParam().token), GetParam().key);
    EXPECT_EQ(object->getAttribute(GetParam().key).lock(),
              object->getAttribute(GetParam().token).lock());
}

TEST_P(ClassTable, HasTypeAndCategory) {
    const auto object = GetParam().create();

    const AttrDefinition* const row = object->getAttrDefinition(GetParam().token);

    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->token, GetParam().token);
    EXPECT_EQ(row->name, GetParam().key);
    EXPECT_EQ(row->category, GetParam().category);
    EXPECT_EQ(getAttrClassName(row->type), GetParam().typeName);
    const auto attribute = object->getAttribute(GetParam().token).lock();
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->getClassName(), GetParam().typeName);
    EXPECT_EQ(attribute->getName(), GetParam().key);
    EXPECT_TRUE(attribute->hasDefinitionFlag());
}

TEST_P(ClassTable, HoldsTheDefaultInANewObject) {
    const auto object = GetParam().create();

    GetParam().expectDefault(*object);
}

TEST_P(ClassTable, HasItsAccessors) {
    const auto object = GetParam().create();

    GetParam().expectAccessors(*object);
}

}  // namespace QOR::AttributeContainer::Testing
