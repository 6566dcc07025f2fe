#include <AttributeContainer/FieldFactory.h>

#include <AttributeContainer/Object.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;

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
