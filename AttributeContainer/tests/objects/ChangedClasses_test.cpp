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
    const std::string stream = rootWith(childBlock(
        "Object", "plain", body("plain", attributeBlock("StringArray", "Tags", R"(2 "a" "b")"))));
    const Read read(stream);

    EXPECT_EQ(read.code, std::nullopt);
    EXPECT_EQ(written(*read.root), stream);
}

TEST(ChangedClasses, KeepsAttributesThatCannotBeMadeAsTextOfAnUnknownObject) {
    for (const std::string type : {"ScanPt", "ScanPtVector"}) {
        const std::string content = body("f", attributeBlock("int", "Count", "3") +
                                                  attributeBlock(type, "Points", "{ 1 } ") +
                                                  attributeBlock("int", "Behind", "4"));
        const Read read(rootWith(childBlock("Foo", "f", content) + child("behind")));

        EXPECT_EQ(read.code, ErrorCode::ObjectNotCreated);
        ASSERT_NE(read.fallback("f"), nullptr);
        EXPECT_EQ(read.fallback("f")->getAttrToken("Count"), AttrContainer::noToken);
        EXPECT_EQ(written(*read.root),
                  rootWith(childBlock("Foo", "f", content + "\n") + child("behind")));
    }
}

TEST(ChangedClasses, EndsWhereAKnownObjectHasAnAttributeThatCannotBeMade) {
    for (const std::string type : {"ScanPt", "ScanPtVector"}) {
        const Read read(
            rootWith(child("ahead") +
                     childBlock("Object", "odd",
                                body("odd", attributeBlock("int", "Count", "3") +
                                                attributeBlock(type, "Points", "{ 1 } "))) +
                     child("behind")));

        EXPECT_EQ(read.code, ErrorCode::AttributeNotCreated) << type;
        EXPECT_EQ(childNames(*read.root), (Names{"ahead", "odd"}));  // what was read so far stays
        EXPECT_NE(read.root->inqChild("odd")->getAttrToken("Count"), AttrContainer::noToken);
    }
}

TEST(ChangedClasses, KeepsAttributesOfUnknownTypesAsTextOfAnUnknownObject) {
    const std::string content = body("f", attributeBlock("Quaternion", "Pose", "1 0 0 0") +
                                              attributeBlock("int", "Behind", "4"));
    const Read read(rootWith(childBlock("Foo", "f", content) + child("behind")));

    EXPECT_EQ(read.code, ErrorCode::ObjectNotCreated);
    EXPECT_EQ(written(*read.root),
              rootWith(childBlock("Foo", "f", content + "\n") + child("behind")));
}

TEST(ChangedClasses, GivesUpAKnownObjectWithAnAttributeOfAnUnknownType) {
    const Read read(rootWith(
        child("ahead") +
        childBlock("Object", "odd", body("odd", attributeBlock("Quaternion", "Pose", "1 0 0 0"))) +
        child("behind")));

    EXPECT_EQ(read.code, ErrorCode::AttributeNotCreated);
    EXPECT_EQ(childNames(*read.root), (Names{"ahead", "odd"}));
}

TEST(ChangedClasses, KeepsTheAttributesOfABaseThatAClassHasNoMore) {
    // A point that was a transform when it was written.
    const std::string former =
        attributeBlock("Mat4dd", "Transformation", "1 0 0 0  0 1 0 0  0 0 1 0  0 0 0 1  ");
    const Read read(rootWith(childBlock(
        "Point3d", "p", body("p", former + attributeBlock("Vec3dd", "Position", "1 2 3")))));

    EXPECT_EQ(read.code, std::nullopt);
    const auto point = std::dynamic_pointer_cast<Point3d>(read.root->inqChild("p"));
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->Position(), (QOR::Vec3d<double>{1, 2, 3}));
    EXPECT_EQ(point->getAttrToken("Transformation"), 8u);  // behind those of the class

    EXPECT_EQ(written(*read.root),
              rootWith(childBlock(
                  "Point3d", "p",
                  body("p", attributeBlock("Vec3dd", "Position", "1 2 3") +
                                "\nAttr<double> { \nName \"PositionDeviation\"\n}" + former))));
}

TEST(ChangedClasses, KeepsAFieldClassThatWasAnObjectWhenItWasWritten) {
    const std::string content = body("stats", attributeBlock("bool", "HasNormals", "true"));
    expectComesBack(rootWith(childBlock("ScanProperties", "stats", content)));

    const Read read(rootWith(childBlock("ScanProperties", "stats", content)));
    ASSERT_NE(read.fallback("stats"), nullptr);
    EXPECT_EQ(read.fallback("stats")->getOriginalClassName(), "ScanProperties");
}

TEST(ChangedClasses, TakesAnObjectClassAsAFieldWhereItWasOneWhenItWasWritten) {
    const std::string stream =
        body("root", fieldBlock("Object", "inner", body("inner", attributeBlock("int", "N", "1"))));
    const Read read(stream);

    EXPECT_EQ(read.code, std::nullopt);
    EXPECT_EQ(read.root->getField("inner").lock()->getClassName(), "Object");
    EXPECT_EQ(written(*read.root), stream);
}

TEST(ChangedClasses, ConvertsAValueWhoseAttributeChangedItsType) {
    const Read read(rootWith(childBlock(
        "Point3d", "p", body("p", attributeBlock("String", "PositionDeviation", "\"0.5\"")))));

    EXPECT_EQ(read.code, std::nullopt);
    EXPECT_EQ(std::dynamic_pointer_cast<Point3d>(read.root->inqChild("p"))->PositionDeviation(),
              0.5);
}
