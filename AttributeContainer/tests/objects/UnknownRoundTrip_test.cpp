// What a newer program wrote comes through this one: it is read and written back.
#include <AttributeContainer/ActionToken.h>
#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/PictureColorPropertiesField.h>
#include <AttributeContainer/Point3d.h>

#include "objects/NewerStreams.h"
#include "support/Containers.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

void replaceOnce(std::string& text, const std::string& from, const std::string& to) {
    const std::size_t begin = text.find(from);
    ASSERT_NE(begin, std::string::npos) << from;
    text.replace(begin, from.size(), to);
}

// An object of an unknown class with a "Gain" that another object watches.
std::string watchedStation() {
    const auto root = named<Object>("root");
    const auto station = addNamed(*root, "station");
    const auto listener = addNamed(*root, "listener");
    addCustom(*station, "Gain", 2.5)->addObserver(*listener, 3, ActionToken::Notify, false);
    std::string stream = written(*root);
    replaceOnce(stream, "\"Object\" \"station\"", "\"Station\" \"station\"");
    return stream;
}

}  // namespace

TEST(UnknownRoundTrip, KeepsAnUnknownObject) {
    expectComesBack(rootWith(childBlock(
        "Station", "s1", body("s1", attributeBlock("double", "InstrumentHeight", "1.75")))));
}

TEST(UnknownRoundTrip, LetsTheKnownPartsOfAnUnknownObjectTakePart) {
    const Read read(rootWith(childBlock(
        "Station", "s1", body("s1", attributeBlock("double", "InstrumentHeight", "1.75")))));

    const auto station = read.fallback("s1");
    ASSERT_NE(station, nullptr);
    EXPECT_EQ(station->getOriginalClassName(), "Station");
    const auto height = station->getAttribute("InstrumentHeight").lock();
    ASSERT_NE(height, nullptr);
    EXPECT_EQ(height->getValueString(), "1.75");

    height->assignFrom("2.5");

    EXPECT_NE(written(*read.root).find("Name \"InstrumentHeight\"\nValue 2.5\n"),
              std::string::npos);
}

TEST(UnknownRoundTrip, KeepsUnknownObjectsInsideUnknownObjects) {
    const std::string inner =
        childBlock("Prism", "p1", body("p1", attributeBlock("int", "Constant", "-30")));
    const std::string middle = childBlock("Tripod", "t1", body("t1") + inner + child("plain"));
    const std::string stream = rootWith(childBlock("Station", "s1", body("s1") + middle));
    expectComesBack(stream);

    const Read read(stream);
    ASSERT_NE(read.fallback("s1/t1/p1"), nullptr);
    EXPECT_EQ(read.fallback("s1/t1/p1")->getOriginalClassName(), "Prism");
    EXPECT_NE(read.fallback("s1/t1/p1")->getAttrToken("Constant"), AttrContainer::noToken);
    EXPECT_EQ(read.root->inqObject("s1/t1/plain")->getClassName(), "Object");
}

TEST(UnknownRoundTrip, KeepsUnknownTextInsideAnUnknownObjectInsideAKnownOne) {
    // The innermost has no container; its text gains the line feed ahead of it and no other.
    const Read read(rootWith(child("plain", childBlock("Foo", "f", "\nBar 1 { 2 } \"x\""))));

    EXPECT_EQ(read.code, ErrorCode::ObjectNotCreated);
    EXPECT_EQ(written(*read.root),
              rootWith(child("plain", childBlock("Foo", "f", "\nBar 1 { 2 } \"x\"\n"))));
}

TEST(UnknownRoundTrip, AddsALineFeedToUnknownTextWithEachRound) {
    std::string text = "\nBar 1";
    for (int round = 0; round < 3; ++round) {
        const Read read(rootWith(childBlock("Foo", "f", text)));
        text += '\n';  // the one ahead of the brace that ends the block belongs to the text by now
        EXPECT_EQ(written(*read.root), rootWith(childBlock("Foo", "f", text)));
    }
}

TEST(UnknownRoundTrip, KeepsWhatStandsAheadOfTheContainer) {
    const std::string ahead = "\nCalibration { \n\"2031-05-01\" { 1 2 3 }\n}";
    const Read read(rootWith(childBlock("Foo", "f", ahead + body("f", ""))));

    EXPECT_EQ(written(*read.root), rootWith(childBlock("Foo", "f", ahead + "\n" + body("f"))));
}

TEST(UnknownRoundTrip, KeepsBracesAndEscapedQuotesInQuotes) {
    const std::string text = R"(
Remark "a } in \"quotes\" { and \\"
Path "C:\\" { "}" })";
    const Read read(rootWith(childBlock("Foo", "f", text) + child("behind")));

    EXPECT_EQ(written(*read.root), rootWith(childBlock("Foo", "f", text + "\n") + child("behind")));
}

TEST(UnknownRoundTrip, KeepsAQuotedTextThatBeginsTheBlock) {
    const std::string text = "\n\"taken } in { May\" 1";
    const Read read(rootWith(childBlock("Foo", "f", text) + child("behind")));

    EXPECT_EQ(written(*read.root), rootWith(childBlock("Foo", "f", text + "\n") + child("behind")));
}

TEST(UnknownRoundTrip, KeepsBracesAndEscapedQuotesInValues) {
    expectComesBack(rootWith(childBlock(
        "Foo", "f",
        body("f", attributeBlock("String", "Remark", R"("a } in \"quotes\" { and \\")")))));
}

TEST(UnknownRoundTrip, KeepsTheRelationsOfAnUnknownObject) {
    const std::string stream = watchedStation();
    expectComesBack(stream);

    const Read read(stream);
    ASSERT_NE(read.fallback("station"), nullptr);
    const auto gain = read.fallback("station")->getAttribute("Gain").lock();
    ASSERT_EQ(gain->getNumPostObservers(), 1u);
    EXPECT_EQ(gain->getPath(0).getPath(), "/listener");
}

TEST(UnknownRoundTrip, LosesARelationWhoseActionIsUnknownAndNothingElse) {
    std::string stream = watchedStation();
    replaceOnce(stream, "\nAction \"", "\nAction \"Blink");

    const Read read(stream);

    EXPECT_EQ(read.code, ErrorCode::ObjectNotCreated);
    ASSERT_NE(read.fallback("station"), nullptr);
    EXPECT_EQ(written(*read.root),
              rootWith(childBlock("Station", "station",
                                  body("station", attributeBlock("double", "Gain", "2.5"))) +
                       child("listener")));
}

// Fields ------------------------------------------------------------------------------------------

TEST(UnknownRoundTrip, KeepsUnknownFieldsOfKnownObjects) {
    const std::string stream =
        body("root", fieldBlock("Weather", "weather",
                                body("weather", attributeBlock("double", "Celsius", "-4.5"))));
    const Read read(stream);

    EXPECT_EQ(read.code, ErrorCode::ElementSkipped);
    const auto field =
        std::dynamic_pointer_cast<FallbackObject>(read.root->getField("weather").lock());
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->getOriginalClassName(), "Weather");
    EXPECT_EQ(field->getAttribute("Celsius").lock()->getValueString(), "-4.5");
    EXPECT_EQ(written(*read.root), stream);
}

TEST(UnknownRoundTrip, KeepsKnownChildrenOfUnknownFields) {
    const std::string point =
        childBlock("Point3d", "p",
                   body("p", attributeBlock("Vec3dd", "Position", "1 2 3") +
                                 "\nAttr<double> { \nName \"PositionDeviation\"\n}"));
    const std::string stream =
        body("root", fieldBlock("Targets", "targets", body("targets") + point));
    const Read read(stream);

    const auto field = std::dynamic_pointer_cast<Object>(read.root->getField("targets").lock());
    ASSERT_NE(field, nullptr);
    const auto same = std::dynamic_pointer_cast<Point3d>(field->inqChild("p"));
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(same->Position(), (QOR::Vec3d<double>{1, 2, 3}));
    EXPECT_EQ(written(*read.root), stream);
}

TEST(UnknownRoundTrip, KeepsKnownFieldsOfUnknownFields) {
    const std::string inner = "\nAttrContainer { " +
                              ("\nAttr<String> { \nName \"Name\"\nValue \"inner\"\n}" +
                               attributeBlock("int", "Count", "3")) +
                              "\n}";
    const std::string stream = body(
        "root",
        fieldBlock("Outer", "outer", body("outer", fieldBlock("AttrContainer", "inner", inner))));
    const Read read(stream);

    const auto outer = read.root->getField("outer").lock();
    ASSERT_NE(outer, nullptr);
    const auto field = outer->getField("inner").lock();
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->getClassName(), "AttrContainer");
    EXPECT_EQ(written(*read.root), stream);
}

TEST(UnknownRoundTrip, KeepsUnknownTextOfFields) {
    const Read read(body("root", fieldBlock("Weather", "weather", "\nRain { 1 }")));

    EXPECT_EQ(read.code, ErrorCode::ElementSkipped);
    EXPECT_EQ(written(*read.root),
              body("root", fieldBlock("Weather", "weather", "\nRain { 1 }\n")));
}

TEST(UnknownRoundTrip, KeepsAnUnknownToneMappingOfAKnownPicture) {
    const std::string stream = containerBlock(
        attributeBlock("String", "Name", "\"PictureColorPropertiesField\"") +
        attributeBlock("String", "Event", "\"gamma\"") +
        fieldBlock("TMONewerField", "HDRParameterField",
                   body("HDRParameterField", attributeBlock("double", "Bias", "0.75"))));
    const auto colours = PictureColorPropertiesField::create();

    EXPECT_EQ(readText(*colours, stream), ErrorCode::ElementSkipped);

    EXPECT_EQ(colours->getNumFields(), 1u);
    EXPECT_TRUE(colours->HDRParameterField().expired());  // what is there is of no such class
    const auto unknown = std::dynamic_pointer_cast<FallbackObject>(colours->getField(0).lock());
    ASSERT_NE(unknown, nullptr);
    EXPECT_EQ(unknown->getOriginalClassName(), "TMONewerField");
    EXPECT_EQ(unknown->getAttribute("Bias").lock()->getValueString(), "0.75");
    EXPECT_EQ(written(*colours), stream);
}
