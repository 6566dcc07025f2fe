#include <AttributeContainer/FieldFactory.h>

#include <AttributeContainer/Object.h>

#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

const char* const ownClasses[] = {
    "ArrayContainer",
    "AttrContainer",
    "Container",
    "GenericBinaryObjectV2",
    "HDRParameterField",
    "MarkerBase",
    "Object",
    "Object2d",
    "Object3d",
    "PanoramaPicture",
    "Picture",
    "PictureColorPropertiesField",
    "Point3d",
    "ScanProperties",
    "TMOEasyHDRField",
    "TMOLinearField",
    "TMOReinhard02Field",
    "Transform",
    "UnknownAttrContainer",
};

// Asked for while the static objects of this file are made.
const std::shared_ptr<AttrContainer> madeBeforeMain =
    FieldFactory::the()->createField("MarkerBase");

class Registrations : public testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(Registrations, GiveTheFactoryAClassUnderItsName) {
    const auto made = FieldFactory::the()->createField(GetParam());

    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getClassName(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Classes, Registrations,
                         testing::ValuesIn(ownClasses),
                         [](const auto& name) { return std::string(name.param); });

TEST(FactoryRegistrations, AreNineteenAndStandAheadOfAllOthers) {
    const auto names = FieldFactory::the()->getAllRegisteredFields();

    ASSERT_EQ(std::size(ownClasses), 19u);
    ASSERT_GE(names.size(), 19u);
    EXPECT_TRUE(std::equal(std::begin(ownClasses), std::end(ownClasses), names.begin()));
}

TEST(FactoryRegistrations, MakeObjectsOfObjectClassesOnly) {
    const auto factory = FieldFactory::the();

    EXPECT_NE(factory->createObject("Point3d"), nullptr);
    EXPECT_NE(factory->createObject("PanoramaPicture"), nullptr);
    EXPECT_EQ(factory->createObject("ArrayContainer"), nullptr);
    EXPECT_EQ(factory->createObject("ScanProperties"), nullptr);
    EXPECT_EQ(factory->createObject("TMOLinearField"), nullptr);
    EXPECT_EQ(factory->createObject("UnknownAttrContainer"), nullptr);
}

TEST(FactoryRegistrations, LetObjectsOfAllClassesComeBackFromAStream) {
    const auto root = named<Object>("root");
    for (const char* const name : ownClasses) {
        const auto object = FieldFactory::the()->createObject(name);
        if (object) root->addChild(object, AddFlags::SkipNameTest);
    }
    ASSERT_EQ(root->getNumChildren(), 10u);

    const auto copy = Object::create();
    ASSERT_EQ(readText(*copy, written(*root)), std::nullopt);

    ASSERT_EQ(copy->getNumChildren(), 10u);
    for (std::uint64_t i = 0; i < 10; ++i)
        EXPECT_EQ(copy->getChild(i)->getClassName(), root->getChild(i)->getClassName());
}

TEST(FactoryRegistrations, LetFieldsOfAllClassesComeBackFromAStream) {
    const auto owner = AttrContainer::create();
    for (const char* const name : ownClasses) {
        if (name == std::string("UnknownAttrContainer")) continue;  // goes out as another class
        ASSERT_TRUE(owner->addField(FieldFactory::the()->createField(name), name, 0)) << name;
    }

    const auto copy = AttrContainer::create();
    ASSERT_EQ(readText(*copy, written(*owner)), std::nullopt);

    ASSERT_EQ(copy->getNumFields(), 18u);
    for (std::uint64_t token = 0; token < 18; ++token)
        EXPECT_EQ(copy->getField(token).lock()->getClassName(), copy->getFieldName(token));
}

TEST(FactoryRegistrations, LeaveOutTheFallbackObject) {
    EXPECT_EQ(FieldFactory::the()->createField("FallbackObject"), nullptr);
    EXPECT_EQ(FieldFactory::the()->createField("GenericBinaryObject"), nullptr);
}

TEST(FactoryRegistrations, StandBeforeMain) {
    ASSERT_NE(madeBeforeMain, nullptr);
    EXPECT_EQ(madeBeforeMain->getClassName(), "MarkerBase");
    EXPECT_EQ(madeBeforeMain->getAttrToken("scanHalf"), 9u);
}

TEST(FactoryRegistrations, KeepTheirNamesFromOthers) {
    EXPECT_EQ(FieldFactory::addField<Object>("Transform"), nullptr);
    EXPECT_EQ(FieldFactory::the()->createField("Transform")->getClassName(), "Transform");
}
