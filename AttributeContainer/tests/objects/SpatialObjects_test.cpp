#include <AttributeContainer/Container.h>
#include <AttributeContainer/MarkerBase.h>
#include <AttributeContainer/Object2d.h>
#include <AttributeContainer/Object3d.h>
#include <AttributeContainer/Point3d.h>
#include <AttributeContainer/Transform.h>

#include "support/BlockText.h"
#include "support/ClassTable.h"
#include "support/ObjectText.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace QOR::AttributeContainer::Testing {

namespace {
#define ROW(...) QOR_CLASS_ROW(Object2d, __VA_ARGS__)
const ClassRow object2dRows[] = {
    ROW(6, Position, "Attr<Vec3dd>", 18, {0, 0, 0}),
};
#undef ROW

#define ROW(...) QOR_CLASS_ROW(Point3d, __VA_ARGS__)
const ClassRow point3dRows[] = {
    ROW(7, PositionDeviation, "Attr<double>", 18, {0.0}),
};
#undef ROW

#define ROW(...) QOR_CLASS_ROW(MarkerBase, __VA_ARGS__)
const ClassRow markerRows[] = {
    ROW(8, id, "Attr<Uuid>", 18, {}),
    ROW(9, scanHalf, "Attr<int>", 18, {0}),
    ROW(10, normal, "Attr<Vec3dd>", 18, {0, 0, 0}),
    ROW(11, orientation, "Attr<Vec3dd>", 18, {0, 0, 0}),
};
#undef ROW

#define ROW(...) QOR_CLASS_ROW(Transform, __VA_ARGS__)
const ClassRow transformRows[] = {
    ROW(6, Transformation, "Attr<Mat4dd>", 18, {QOR::Mat4d<double>::identity()}),
};
#undef ROW

#define ROW(...) QOR_CLASS_ROW(Container, __VA_ARGS__)
const ClassRow containerRows[] = {
    ROW(7, ContainerType, "Attr<int>", 18, {10}),
    ROW(8, Quality, "Attr<int>", 18, {2}),
};
#undef ROW
}  // namespace

QOR_CLASS_TABLE(Object2d, object2dRows);
QOR_CLASS_TABLE(Point3d, point3dRows);
QOR_CLASS_TABLE(MarkerBase, markerRows);
QOR_CLASS_TABLE(Transform, transformRows);
QOR_CLASS_TABLE(Container, containerRows);

TEST(SpatialObjects, ContinueTheTokensOfTheirBases) {
    expectClass<Object2d, Object>("Object2d", 6, 6);
    expectClass<Object3d, Object2d>("Object3d", 7, 6);  // no rows of its own
    expectClass<Point3d, Object3d>("Point3d", 7, 7);
    expectClass<MarkerBase, Point3d>("MarkerBase", 8, 11);
    expectClass<Transform, Object>("Transform", 6, 6);
    expectClass<Container, Transform>("Container", 7, 8);
}

TEST(SpatialObjects, AreNamedAfterTheirClasses) {
    EXPECT_EQ(Object2d::create()->getName(), "Object2d");
    EXPECT_EQ(Object3d::create()->getName(), "Object3d");
    EXPECT_EQ(Point3d::create()->getName(), "Point3d");
    EXPECT_EQ(MarkerBase::create()->getName(), "MarkerBase");
    EXPECT_EQ(Transform::create()->getName(), "Transform");
    EXPECT_EQ(Container::create()->getName(), "Container");
}

TEST(SpatialObjects, HaveNoFields) {
    EXPECT_EQ(MarkerBase::create()->getNumFields(), 0u);
    EXPECT_EQ(Container::create()->getNumFields(), 0u);
}

TEST(SpatialObjects, LendTheirRowsToTheClassesBelowThem) {
    const auto marker = MarkerBase::create();
    const auto plain = Object3d::create();
    marker->Position({1, 2, 3});
    plain->Position({4, 5, 6});

    EXPECT_EQ(marker->getAttrToken("Position"), 6u);
    EXPECT_EQ(marker->getAttrToken("scanHalf"), 9u);
    EXPECT_EQ(marker->Attr_Position().get(), (Vec3d<double>{1, 2, 3}));
    EXPECT_EQ(plain->getAttrToken("Position"), 6u);
    EXPECT_EQ(plain->Attr_Position().get(), (Vec3d<double>{4, 5, 6}));
}

TEST(SpatialObjects, UseTheSameTokenForOneThingInEachFamily) {
    EXPECT_EQ(MarkerBase::create()->getAttrName(6), "Position");
    EXPECT_EQ(Transform::create()->getAttrName(6), "Transformation");
    EXPECT_EQ(Transform::create()->getAttrToken("Position"), AttrContainer::noToken);
}

TEST(SpatialObjects, BeginAsTheirTablesSay) {
    const auto container = Container::create();

    EXPECT_EQ(container->getName(), "Container");
    EXPECT_EQ(container->ContainerType(), 10);
    EXPECT_EQ(container->Quality(), 2);
    EXPECT_EQ(container->Transformation(), Mat4d<double>::identity());
    EXPECT_TRUE(container->UUID().is_nil());
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
    marker->id(uuids::uuid::generate());

    const auto copy = std::dynamic_pointer_cast<MarkerBase>(marker->duplicate(CreateDeep));
    const auto fresh = std::dynamic_pointer_cast<MarkerBase>(marker->duplicate(CreateEmpty));

    EXPECT_EQ(copy->id(), marker->id());
    EXPECT_TRUE(fresh->id().is_nil());
}

TEST(SpatialObjects, BearTheirOwnClassNamesInAStream) {
    const auto root = named<Object>("root");
    addNamed<Object3d>(*root, "o");

    EXPECT_EQ(written(*root),
              body("root") + childBlock("Object3d", "o",
                                        body("o", "\nAttr<Vec3dd> { \nName \"Position\"\n}")));
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

}  // namespace QOR::AttributeContainer::Testing
