// Attributes and classes of a newer program that this one has otherwise, or not at all.
#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/Point3d.h>

#include "objects/NewerStreams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(ChangedClasses, KeepsUnknownAttributesOfKnownObjects) {
    const std::string stream = rootWith(childOf(
        "Object", "plain", bodyWith("plain", attribute("StringArray", "Tags", R"(2 "a" "b")"))));
    const Read read(stream);

    EXPECT_EQ(read.code, std::nullopt);
    EXPECT_EQ(written(*read.root), stream);
}

TEST(ChangedClasses, KeepsAttributesThatCannotBeMadeAsTextOfAnUnknownObject) {
    for (const std::string type : {"ScanPt", "ScanPtVector"}) {
        const std::string content =
            bodyWith("f", attribute("int", "Count", "3") + attribute(type, "Points", "{ 1 } ") +
                              attribute("int", "Behind", "4"));
        const Read read(rootWith(childOf("Foo", "f", content) + child("behind")));

        EXPECT_EQ(read.code, ErrorCode::ObjectNotCreated);
        ASSERT_NE(read.fallback("f"), nullptr);
        EXPECT_EQ(read.fallback("f")->getAttrToken("Count"), AttrContainer::noToken);
        EXPECT_EQ(written(*read.root),
                  rootWith(childOf("Foo", "f", content + "\n") + child("behind")));
    }
}

TEST(ChangedClasses, EndsWhereAKnownObjectHasAnAttributeThatCannotBeMade) {
    for (const std::string type : {"ScanPt", "ScanPtVector"}) {
        const Read read(rootWith(child("ahead") +
                                 childOf("Object", "odd",
                                         bodyWith("odd", attribute("int", "Count", "3") +
                                                             attribute(type, "Points", "{ 1 } "))) +
                                 child("behind")));

        EXPECT_EQ(read.code, ErrorCode::AttributeNotCreated) << type;
        EXPECT_EQ(childNames(*read.root), (Names{"ahead", "odd"}));  // what was read so far stays
        EXPECT_NE(read.root->inqChild("odd")->getAttrToken("Count"), AttrContainer::noToken);
    }
}

TEST(ChangedClasses, KeepsAttributesOfUnknownTypesAsTextOfAnUnknownObject) {
    const std::string content =
        bodyWith("f", attribute("Quaternion", "Pose", "1 0 0 0") + attribute("int", "Behind", "4"));
    const Read read(rootWith(childOf("Foo", "f", content) + child("behind")));

    EXPECT_EQ(read.code, ErrorCode::ObjectNotCreated);
    EXPECT_EQ(written(*read.root), rootWith(childOf("Foo", "f", content + "\n") + child("behind")));
}

TEST(ChangedClasses, GivesUpAKnownObjectWithAnAttributeOfAnUnknownType) {
    const Read read(rootWith(
        child("ahead") +
        childOf("Object", "odd", bodyWith("odd", attribute("Quaternion", "Pose", "1 0 0 0"))) +
        child("behind")));

    EXPECT_EQ(read.code, ErrorCode::AttributeNotCreated);
    EXPECT_EQ(childNames(*read.root), (Names{"ahead", "odd"}));
}

TEST(ChangedClasses, KeepsTheAttributesOfABaseThatAClassHasNoMore) {
    // A point that was a transform when it was written.
    const std::string former =
        attribute("Mat4dd", "Transformation", "1 0 0 0  0 1 0 0  0 0 1 0  0 0 0 1  ");
    const Read read(rootWith(
        childOf("Point3d", "p", bodyWith("p", former + attribute("Vec3dd", "Position", "1 2 3")))));

    EXPECT_EQ(read.code, std::nullopt);
    const auto point = std::dynamic_pointer_cast<Point3d>(read.root->inqChild("p"));
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->Position(), (QOR::Vec3d<double>{1, 2, 3}));
    EXPECT_EQ(point->getAttrToken("Transformation"), 8u);  // behind those of the class

    EXPECT_EQ(written(*read.root),
              rootWith(childOf(
                  "Point3d", "p",
                  bodyWith("p", attribute("Vec3dd", "Position", "1 2 3") +
                                    "\nAttr<double> { \nName \"PositionDeviation\"\n}" + former))));
}

TEST(ChangedClasses, KeepsAFieldClassThatWasAnObjectWhenItWasWritten) {
    const std::string content = bodyWith("stats", attribute("bool", "HasNormals", "true"));
    expectComesBack(rootWith(childOf("ScanProperties", "stats", content)));

    const Read read(rootWith(childOf("ScanProperties", "stats", content)));
    ASSERT_NE(read.fallback("stats"), nullptr);
    EXPECT_EQ(read.fallback("stats")->getOriginalClassName(), "ScanProperties");
}

TEST(ChangedClasses, TakesAnObjectClassAsAFieldWhereItWasOneWhenItWasWritten) {
    const std::string stream =
        bodyWith("root", fieldOf("Object", "inner", bodyWith("inner", attribute("int", "N", "1"))));
    const Read read(stream);

    EXPECT_EQ(read.code, std::nullopt);
    EXPECT_EQ(read.root->getField("inner").lock()->getClassName(), "Object");
    EXPECT_EQ(written(*read.root), stream);
}

TEST(ChangedClasses, ConvertsAValueWhoseAttributeChangedItsType) {
    const Read read(rootWith(childOf(
        "Point3d", "p", bodyWith("p", attribute("String", "PositionDeviation", "\"0.5\"")))));

    EXPECT_EQ(read.code, std::nullopt);
    EXPECT_EQ(std::dynamic_pointer_cast<Point3d>(read.root->inqChild("p"))->PositionDeviation(),
              0.5);
}
