// Values that go from one attribute to another of another type, or come from a stream.
#include <AttributeContainer/Attr.h>

#include <AttributeContainer/ReadContext.h>

#include "support/FreeAttribute.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(AttrConversion, GoesThroughText) {
    const auto number = attributeOf(12);
    const auto real = attributeOf(0.0);
    const auto counter = watch<Refuser>(*real);

    *real = static_cast<const Attribute&>(*number);

    EXPECT_EQ(real->get(), 12.0);
    EXPECT_EQ(counter->asked, 1);  // a refusal is not looked at on the road through text
}

TEST(AttrConversion, LosesTheDigitsBehindTheDefaultPrecision) {
    const auto text = attributeOf<std::string>("");
    *text = static_cast<const Attribute&>(*attributeOf(3.14159265));
    EXPECT_EQ(text->get(), "3.14159");
}

TEST(AttrConversion, TakesANumberFromAString) {
    const auto number = attributeOf(0);
    *number = static_cast<const Attribute&>(*attributeOf<std::string>(" 12"));
    EXPECT_EQ(number->get(), 12);
}

TEST(AttrConversion, ClampsWhatDoesNotFit) {
    const auto small = attributeOf<short>(0);
    *small = static_cast<const Attribute&>(*attributeOf(100000));
    EXPECT_EQ(small->get(), 32767);
}

TEST(AttrConversion, DoesNotGoThroughTextBetweenThePrecisionsOfAPoint) {
    const auto wide = attributeOf(Vec3d<double>());
    const auto narrow = attributeOf(Vec3d<float>(0.1f, -2.5f, 1234567.0f));
    const auto refuser = watch<Refuser>(*wide);

    *wide = static_cast<const Attribute&>(*narrow);
    EXPECT_EQ(wide->get(), Vec3d<double>());  // a typed change, and so refused

    wide->rmObserver(*refuser);
    *wide = static_cast<const Attribute&>(*narrow);
    EXPECT_EQ(wide->get(), (Vec3d<double>(static_cast<double>(0.1f), -2.5, 1234567.0)));
}

TEST(AttrConversion, NarrowsAPointByPlainConversion) {
    const auto narrow = attributeOf(Vec3d<float>());
    *narrow = static_cast<const Attribute&>(*attributeOf(Vec3d<double>(0.1, -2.5, 0)));
    EXPECT_EQ(narrow->get(), (Vec3d<float>(0.1f, -2.5f, 0)));
}

TEST(AttrConversion, ClampsTheFloatsThatGoThroughText) {
    const auto narrow = attributeOf(SVec2d<float>());
    *narrow = static_cast<const Attribute&>(*attributeOf(SVec2d<double>(-1.5, 2)));
    EXPECT_EQ(narrow->get(), (SVec2d<float>(std::numeric_limits<float>::min(), 2)));
}

// Values from a stream ----------------------------------------------------------------------------

TEST(AttrReadValue, ReadsOneValueAndSetsIt) {
    const auto attribute = attributeOf(1);
    const auto counter = watch(*attribute);
    std::istringstream in(" 12 13");

    attribute->readValueFrom(in, std::make_shared<const ReadContextBase>());

    EXPECT_EQ(attribute->get(), 12);
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
    int next = 0;
    in >> next;
    EXPECT_EQ(next, 13);
}

TEST(AttrReadValue, TakesNoContextForTheDefaultOne) {
    const auto attribute = attributeOf<std::string>("");
    std::istringstream in("\"a b\"");

    attribute->readValueFrom(in, nullptr);

    EXPECT_EQ(attribute->get(), "a b");
}

TEST(AttrReadValue, ReadsInTheFormOfTheContext) {
    const auto attribute = attributeOf<std::string>("former");
    const auto context = std::make_shared<ReadContextBase>();
    context->setFormat(2);
    std::istringstream in("'a b' ");

    attribute->readValueFrom(in, context);

    EXPECT_EQ(attribute->get(), "");  // the XML form is read over and not delivered
}
