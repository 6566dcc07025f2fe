#include <AttributeContainer/XMLSerialization.h>

#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/Version.h>

#include "persistence/Exporting.h"
#include "support/Containers.h"
#include "support/NamelessContainer.h"
#include "support/ObserverActors.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Names its fields by nothing.
class Nameless : public ContainerClass<Nameless, AttrContainer, "Nameless"> {
public:
    using Block::Block;
    std::optional<std::string> getFieldName(std::uint64_t) const override { return std::string{}; }
};

// Has no name for two of its attributes.
class HalfNamed : public ContainerClass<HalfNamed, AttrContainer, "HalfNamed"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, int, First, 1);
    QOR_ATTRIBUTE(2, int, Second, 2);
    QOR_ATTRIBUTE(3, int, Third, 3);

    std::optional<std::string> getAttrName(std::uint64_t token) const override {
        if (token == FirstToken) return std::nullopt;
        if (token == SecondToken) return std::string{};
        return Block::getAttrName(token);
    }
};

}  // namespace

TEST(XMLSerialization, WritesFieldsAheadOfAttributes) {
    const auto scan = named<Object>("scan");
    addCustom(*scan, "Count", 5);
    addCustom<std::string>(*scan, "Label", "a & b");
    const auto part = addNamedField<Object>(*scan, "part");
    ASSERT_EQ(part->setName("part"), nullptr);

    EXPECT_EQ(exported(*scan), R"(<?xml version="1.0" encoding="UTF-8"?>
<Root version="9.1.0.0" format="0">
<scan type="Object"><fields>
<part type="Object" fieldname="part"><fields>
</fields>
<attrs>
<Name type="String">"part"</Name>
<Action type="String">""</Action>
<Event type="String">""</Event>
<MajorVersion type="uint16_t">0</MajorVersion>
<MinorVersion type="uint16_t">0</MinorVersion>
<UUID type="Uuid">00000000-0000-0000-0000-000000000000</UUID>
</attrs>
</part>
</fields>
<attrs>
<Name type="String">"scan"</Name>
<Action type="String">""</Action>
<Event type="String">""</Event>
<MajorVersion type="uint16_t">0</MajorVersion>
<MinorVersion type="uint16_t">0</MinorVersion>
<UUID type="Uuid">00000000-0000-0000-0000-000000000000</UUID>
<Count type="int">5</Count>
<Label type="String">"a &amp; b"</Label>
</attrs>
</scan>
</Root>)");
}

TEST(XMLSerialization, NamesTheFormatVersionOfTheLibrary) {
    const VersionNum before = *version.getFormatVersion();
    version.setFormatVersion(before.maskMinorLevel());

    const std::string document = exported(*plain("x"));
    version.setFormatVersion(before);

    EXPECT_NE(document.find("<Root version=\"9.0.0.0\" format=\"0\">"), std::string::npos);
}

TEST(XMLSerialization, NamesAnElementByTheContainerAndItsFieldByTheKey) {
    const auto owner = plain("owner");
    const auto field = AttrContainer::create();
    field->name("inner");
    ASSERT_TRUE(owner->addField(field, "outer", 0));

    EXPECT_NE(exported(*owner).find("<inner type=\"AttrContainer\" fieldname=\"outer\"><fields>"),
              std::string::npos);
}

TEST(XMLSerialization, LeavesAnEmptyFieldNameOut) {
    const auto owner = Nameless::create();
    addNamedField(*owner, "part")->name("part");

    const std::string document = exported(*owner);

    EXPECT_NE(document.find("<part type=\"AttrContainer\"><fields>"), std::string::npos);
    EXPECT_EQ(document.find("fieldname"), std::string::npos);
}

TEST(XMLSerialization, PassesOverAFieldThatIsGone) {
    const auto pole = Pole::create();
    ASSERT_TRUE(pole->setField(0, nullptr));

    const std::string document = exported(*pole);

    EXPECT_EQ(document.find("fieldname=\"Mark\""), std::string::npos);
    EXPECT_NE(document.find("fieldname=\"Top\""), std::string::npos);
}

TEST(XMLSerialization, PutsTheContextIntoItsFormatForGood) {
    const auto context = std::make_shared<WriteContextBase>(ModelFormat::XmlV2);

    exported(*plain("x"), context);

    EXPECT_EQ(context->getFormat(), 1);
}

TEST(XMLSerialization, WritesTheSameDocumentWhateverTheFormatOfTheContext) {
    const auto container = plain("x");

    for (const int format : {0, 1, 2})
        EXPECT_EQ(exported(*container, std::make_shared<WriteContextBase>(format)),
                  plainDocument("x", ""));
}

TEST(XMLSerialization, WritesEveryValueAlsoWhereItIsADefault) {
    const auto container = plain("x");
    addCustom(*container, "Zero", 0);
    addCustom<std::string>(*container, "Empty", "");
    addCustom(*container, "No", false);
    const auto context = makeContext();

    for (const bool writesDefaults : {false, true}) {
        context->setWriteDefaultValues(writesDefaults);
        EXPECT_EQ(exported(*container, context),
                  plainDocument("x",
                                "<Zero type=\"int\">0</Zero>\n"
                                "<Empty type=\"String\">\"\"</Empty>\n"
                                "<No type=\"bool\">false</No>\n"));
    }
}

TEST(XMLSerialization, EncodesWhatStandsInStrings) {
    const auto container = plain("x");
    addCustom<std::string>(*container, "Label", "<a href='b'>\"c\" & \\\n");

    EXPECT_EQ(exported(*container),
              plainDocument("x",
                            "<Label type=\"String\">\"&lt;a href=&apos;b&apos;&gt;"
                            "\\&quot;c\\&quot; &amp; \\\\\\n\"</Label>\n"));
}

TEST(XMLSerialization, LetsNamesOutAsTheyAre) {
    const auto container = AttrContainer::create();
    {
        const BlockObserver anyName;
        container->name("a b<&");
    }
    addCustom(*container, "2nd", 1);

    EXPECT_EQ(exported(*container),
              head +
                  "<a b<& type=\"AttrContainer\"><fields>\n</fields>\n<attrs>\n"
                  "<Name type=\"String\">\"a b&lt;&amp;\"</Name>\n"
                  "<2nd type=\"int\">1</2nd>\n</attrs>\n</a b<&>\n" +
                  foot);
}

TEST(XMLSerialization, LetsAnEmptyNameOutAsItIs) {
    EXPECT_EQ(exported(*nameless()), head +
                                         "< type=\"AttrContainer\"><fields>\n</fields>\n<attrs>\n"
                                         "<Name type=\"String\">\"\"</Name>\n</attrs>\n</>\n" +
                                         foot);
}

TEST(XMLSerialization, NamesTheClassOfAPlaceholderAndNotTheOneItStandsFor) {
    const auto placeholder = named<FallbackObject>("odd");
    placeholder->setOriginalClassName("Station");

    EXPECT_NE(exported(*placeholder).find("<odd type=\"FallbackObject\"><fields>"),
              std::string::npos);
}

TEST(XMLSerialization, LeavesOutAttributesWithoutAName) {
    const auto container = HalfNamed::create();
    container->name("x");

    EXPECT_EQ(exported(*container),
              head +
                  "<x type=\"HalfNamed\"><fields>\n</fields>\n<attrs>\n"
                  "<Name type=\"String\">\"x\"</Name>\n<Third type=\"int\">3</Third>\n"
                  "</attrs>\n</x>\n" +
                  foot);
}

TEST(XMLSerialization, LeavesOutWhatIsNotPersistent) {
    const std::string document = exported(*TallMark::create());

    EXPECT_NE(document.find("<Lit type=\"bool\">true</Lit>\n"), std::string::npos);
    EXPECT_EQ(document.find("Cached"), std::string::npos);
}

TEST(XMLSerialization, LeavesOutRelationsMarksAndChildren) {
    const auto root = named<Object>("root");
    const auto child = addNamed(*root, "child");
    const auto count = addCustom(*root, "Count", 5);
    const std::string before = exported(*root);
    count->addObserver(*child, 5, tellAction, false);
    count->addPreObserver(*child, 5, askAction, false);
    count->setWriteFlag(true);
    ASSERT_NE(written(*root).find("PostObserver"), std::string::npos);

    EXPECT_EQ(exported(*root), before);
    EXPECT_EQ(before.find("child"), std::string::npos);
}
