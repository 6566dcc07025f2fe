#include <AttributeContainer/Container.h>
#include <AttributeContainer/MarkerBase.h>
#include <AttributeContainer/Object2d.h>
#include <AttributeContainer/Object3d.h>
#include <AttributeContainer/Point3d.h>
#include <AttributeContainer/Transform.h>

#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;
using QOR::Mat4d;
using QOR::Vec3d;
using QOR::uuids::uuid;

namespace {

const Vec3d<double> zero{0, 0, 0};

struct Row {
    std::uint64_t token;
    const char* key;
    AttrType type;
};

constexpr AttrType intType{0};
constexpr AttrType doubleType{9};
constexpr AttrType vec3dType{12};
constexpr AttrType mat4dType{25};
constexpr AttrType uuidType{46};

template <class X>
void expectRows(const std::vector<Row>& rows, std::uint64_t lastToken) {
    const auto object = X::create();
    for (const Row& row : rows) {
        EXPECT_EQ(object->getAttrToken(row.key), row.token) << row.key;
        EXPECT_EQ(object->getAttrName(row.token), row.key);
        const AttrDefinition* const definition = object->getAttrDefinition(row.token);
        ASSERT_NE(definition, nullptr) << row.key;
        EXPECT_EQ(definition->name, row.key);
        EXPECT_EQ(definition->type, row.type) << row.key;
        EXPECT_EQ(definition->category, 18) << row.key;
    }
    EXPECT_EQ(object->getMaxAttrToken(), lastToken);
    EXPECT_EQ(object->getNumAttributes(), lastToken + 1);
    EXPECT_EQ(object->getNumFields(), 0u);
    EXPECT_EQ(object->getAttrToken("UUID"), 5u);
}

template <class X>
void expectNamed(const std::string& name) {
    EXPECT_EQ(X::getStaticClassName(), name);
    EXPECT_EQ(X::create()->getClassName(), name);
    EXPECT_EQ(X::create()->getName(), name);
}

}  // namespace

TEST(SpatialObjects, AreNamedAfterTheirClasses) {
    expectNamed<Object2d>("Object2d");
    expectNamed<Object3d>("Object3d");
    expectNamed<Point3d>("Point3d");
    expectNamed<MarkerBase>("MarkerBase");
    expectNamed<Transform>("Transform");
    expectNamed<Container>("Container");
}

TEST(SpatialObjects, StandInTwoFamilies) {
    EXPECT_TRUE((std::is_base_of_v<Object, Object2d>));
    EXPECT_TRUE((std::is_base_of_v<Object2d, Object3d>));
    EXPECT_TRUE((std::is_base_of_v<Object3d, Point3d>));
    EXPECT_TRUE((std::is_base_of_v<Point3d, MarkerBase>));
    EXPECT_TRUE((std::is_base_of_v<Object, Transform>));
    EXPECT_TRUE((std::is_base_of_v<Transform, Container>));
}

TEST(SpatialObjects, HaveTheRowsOfTheirTables) {
    expectRows<Object2d>({{6, "Position", vec3dType}}, 6);
    expectRows<Object3d>({{6, "Position", vec3dType}}, 6);
    expectRows<Point3d>({{6, "Position", vec3dType}, {7, "PositionDeviation", doubleType}}, 7);
    expectRows<MarkerBase>({{6, "Position", vec3dType},
                            {7, "PositionDeviation", doubleType},
                            {8, "id", uuidType},
                            {9, "scanHalf", intType},
                            {10, "normal", vec3dType},
                            {11, "orientation", vec3dType}},
                           11);
    expectRows<Transform>({{6, "Transformation", mat4dType}}, 6);
    expectRows<Container>({{6, "Transformation", mat4dType},
                           {7, "ContainerType", intType},
                           {8, "Quality", intType}},
                          8);
}

TEST(SpatialObjects, UseTheSameTokenForOneThingInEachFamily) {
    EXPECT_EQ(MarkerBase::create()->getAttrName(6), "Position");
    EXPECT_EQ(Transform::create()->getAttrName(6), "Transformation");
    EXPECT_EQ(Transform::create()->getAttrToken("Position"), AttrContainer::noToken);
}

TEST(SpatialObjects, HaveTheDefaultsOfTheirTables) {
    const auto marker = MarkerBase::create();
    EXPECT_EQ(marker->Position(), zero);
    EXPECT_EQ(marker->PositionDeviation(), 0.0);
    EXPECT_TRUE(marker->id().is_nil());
    EXPECT_EQ(marker->scanHalf(), 0);
    EXPECT_EQ(marker->normal(), zero);
    EXPECT_EQ(marker->orientation(), zero);

    const auto container = Container::create();
    EXPECT_EQ(container->Transformation(), Mat4d<double>::identity());
    EXPECT_EQ(container->ContainerType(), 10);
    EXPECT_EQ(container->Quality(), 2);
    EXPECT_TRUE(container->UUID().is_nil());

    EXPECT_EQ(Transform::create()->Transformation(), Mat4d<double>::identity());
}

TEST(SpatialObjects, HaveAnAccessorForEachRow) {
    const auto marker = MarkerBase::create();
    const uuid id = uuid::generate();
    marker->Position({1, 2, 3});
    marker->PositionDeviation(0.25);
    marker->id(id);
    marker->scanHalf(2);
    marker->normal({0, 0, 1});
    marker->orientation({0, 1, 0});
    EXPECT_EQ(marker->Attr_Position().get(), (Vec3d<double>{1, 2, 3}));
    EXPECT_EQ(marker->Attr_PositionDeviation().get(), 0.25);
    EXPECT_EQ(marker->Attr_id().get(), id);
    EXPECT_EQ(marker->Attr_scanHalf().get(), 2);
    EXPECT_EQ(marker->Attr_normal().get(), (Vec3d<double>{0, 0, 1}));
    EXPECT_EQ(marker->Attr_orientation().get(), (Vec3d<double>{0, 1, 0}));

    const auto container = Container::create();
    container->Transformation(Mat4d<double>{});
    container->ContainerType(3);
    container->Quality(1);
    EXPECT_EQ(container->Attr_Transformation().get(), Mat4d<double>{});
    EXPECT_EQ(container->Attr_ContainerType().get(), 3);
    EXPECT_EQ(container->Attr_Quality().get(), 1);
}

TEST(SpatialObjects, TakeAllValuesFromTheirSource) {
    const auto container = named<Container>("hall");
    container->Quality(7);
    container->Transformation(Mat4d<double>{});

    const auto copy = std::dynamic_pointer_cast<Container>(container->duplicate(CreateDeep));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getName(), "hall");
    EXPECT_EQ(copy->Quality(), 7);
    EXPECT_EQ(copy->ContainerType(), 10);
    EXPECT_EQ(copy->Transformation(), Mat4d<double>{});
}

TEST(SpatialObjects, KeepTheIdOfAMarkerInItsCopy) {
    const auto marker = MarkerBase::create();
    marker->id(uuid::generate());

    const auto copy = std::dynamic_pointer_cast<MarkerBase>(marker->duplicate(CreateDeep));
    const auto fresh = std::dynamic_pointer_cast<MarkerBase>(marker->duplicate(CreateEmpty));

    EXPECT_EQ(copy->id(), marker->id());
    EXPECT_TRUE(fresh->id().is_nil());
}

TEST(SpatialObjects, ComeBackFromAStream) {
    const auto root = Object::create();
    const auto marker = addNamed<MarkerBase>(*root, "marker");
    marker->Position({1.5, -2, 0.25});
    marker->scanHalf(-1);
    const auto container = addNamed<Container>(*root, "hall");
    container->Quality(0);

    const auto copy = Object::create();
    ASSERT_EQ(readText(*copy, written(*root)), std::nullopt);

    const auto sameMarker = std::dynamic_pointer_cast<MarkerBase>(copy->inqChild("marker"));
    ASSERT_NE(sameMarker, nullptr);
    EXPECT_EQ(sameMarker->Position(), (Vec3d<double>{1.5, -2, 0.25}));
    EXPECT_EQ(sameMarker->scanHalf(), -1);
    const auto sameContainer = std::dynamic_pointer_cast<Container>(copy->inqChild("hall"));
    ASSERT_NE(sameContainer, nullptr);
    EXPECT_EQ(sameContainer->Quality(), 0);
    EXPECT_EQ(sameContainer->Transformation(), Mat4d<double>::identity());
    EXPECT_EQ(written(*copy), written(*root));
}
