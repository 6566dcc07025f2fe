#include <AttributeContainer/ModelOutFormat.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/Version.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;

namespace {

// A writer on a stream of its own.
struct Sheet {
    std::ostringstream out;
    ModelOutFormat mof{out};

    explicit Sheet(int format) { mof.setFormat(format); }
    std::string text() const { return out.str(); }
};

// Counts how often a stream is flushed.
class CountingBuffer : public std::stringbuf {
public:
    int flushes = 0;

protected:
    int sync() override {
        ++flushes;
        return std::stringbuf::sync();
    }
};

// A record with numbers of its own, so that the texts do not depend on those of the library.
Version someVersion() {
    return Version(VersionNum("app", 1, 1, 1, 1, 0, ""), VersionNum("fmt", 9, 1, 0, 0, 3, "rev"),
                   VersionNum("socket", 2, 2, 2, 2, 0, ""), VersionNum("api", 3, 3, 3, 3, 0, ""),
                   VersionNum("RootModel", 4, 5, 6, 7, 0, ""), "");
}

}  // namespace

TEST(ModelOutFormat, BeginsInTheTextForm) {
    std::ostringstream out;
    ModelOutFormat mof(out);

    EXPECT_EQ(mof.getFormat(), ModelFormat::Text);
    EXPECT_EQ(&mof.output(), &out);
}

TEST(ModelOutFormat, ReturnsItselfFromEveryWritingOperation) {
    for (const int format : {0, 1, 2}) {
        Sheet sheet(format);
        auto& mof = sheet.mof;
        EXPECT_EQ(&mof.startBlock("a"), &mof);
        EXPECT_EQ(&mof.startBlock("a", "b=\"c\""), &mof);
        EXPECT_EQ(&mof.startAttributeBlock("Attr<int>"), &mof);
        EXPECT_EQ(&mof.startBlockWithSize("a", 1, true), &mof);
        EXPECT_EQ(&mof.startValue("a"), &mof);
        EXPECT_EQ(&mof.startValue("a", "b=\"c\""), &mof);
        EXPECT_EQ(&mof.startValueAsString("a"), &mof);
        EXPECT_EQ(&mof.endValue(), &mof);
        EXPECT_EQ(&mof.endBlock(), &mof);
        EXPECT_EQ(&mof.writeFooter(), &mof);
        EXPECT_EQ(&mof.writeHeader("a"), &mof);
        EXPECT_EQ(&mof.writeHeader("a", someVersion(), true), &mof);
    }
}

TEST(ModelOutFormat, OpensAndClosesABlockInText) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.startBlock("Outer").startBlock("Inner").endBlock().endBlock();
    EXPECT_EQ(sheet.text(), "\nOuter { \nInner { \n}\n}");
}

TEST(ModelOutFormat, OpensAndClosesABlockInBothXmlForms) {
    for (const int format : {1, 2}) {
        Sheet sheet(format);
        sheet.mof.startBlock("Outer").startBlock("Inner").endBlock().endBlock();
        EXPECT_EQ(sheet.text(), "<Outer>\n<Inner>\n</Inner>\n</Outer>\n");
    }
}

TEST(ModelOutFormat, LeavesTheStreamUntouchedForABlockWithAttributesInText) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.startBlock("Field", "type=\"int\"");
    EXPECT_EQ(sheet.text(), "");

    sheet.mof.endBlock();
    EXPECT_EQ(sheet.text(), "\n}");  // a brace that nothing opened
}

TEST(ModelOutFormat, KeepsTheLineOpenAfterABlockWithAttributesInTheFirstXmlForm) {
    Sheet sheet(ModelFormat::XmlV1);
    sheet.mof.startBlock("Field", "type=\"int\"").output() << 5;
    sheet.mof.endBlock();
    EXPECT_EQ(sheet.text(), "<Field type=\"int\">5</Field>\n");
}

TEST(ModelOutFormat, EndsTheLineAfterABlockWithAttributesInTheSecondXmlForm) {
    Sheet sheet(ModelFormat::XmlV2);
    sheet.mof.startBlock("Field", "type=\"int\"").endBlock();
    EXPECT_EQ(sheet.text(), "<Field type=\"int\">\n</Field>\n");
}

TEST(ModelOutFormat, WritesTheWholeClassNameOfAnAttributeInText) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.startAttributeBlock("Attr<int>").endBlock();
    EXPECT_EQ(sheet.text(), "\nAttr<int> { \n}");
}

TEST(ModelOutFormat, KeepsTheClosingBracketInTheTypeOfAnAttributeInBothXmlForms) {
    for (const int format : {1, 2}) {
        Sheet sheet(format);
        sheet.mof.startAttributeBlock("Attr<String>").endBlock();
        EXPECT_EQ(sheet.text(), "<Attr type=\"String>\">\n</Attr>\n");
    }
}

TEST(ModelOutFormat, TakesTheTypeOfAnAttributeFromTheLastBrackets) {
    const std::pair<const char*, const char*> rows[] = {
        {"Attr<int>", "int>"},
        {"Attr<vector<int>>", "int>>"},  // the last '<' at 11, the last '>' at 16: five characters
        {"Attr<>", ">"},
        {"Attr", ""},          // neither bracket: no character
        {"Attr>", "Attr>"},    // no '<': from the start, one more than the index of '>'
        {"Attr<int", "int"},   // no '>': a negative count reaches to the end
        {">Attr<int", "int"},  // '>' before '<': likewise
    };
    for (const auto& [className, type] : rows) {
        Sheet sheet(ModelFormat::XmlV2);
        sheet.mof.startAttributeBlock(className);
        EXPECT_EQ(sheet.text(), std::string("<Attr type=\"") + type + "\">\n") << className;
    }
}

TEST(ModelOutFormat, StatesASizeBeforeOrBehindTheBraceInText) {
    Sheet before(ModelFormat::Text);
    before.mof.startBlockWithSize("Points", 3, true).endBlock();
    EXPECT_EQ(before.text(), "\nPoints 3 { \n}");

    Sheet behind(ModelFormat::Text);
    behind.mof.startBlockWithSize("Points", 3, false).endBlock();
    EXPECT_EQ(behind.text(), "\nPoints {  3\n}");  // two blanks
}

TEST(ModelOutFormat, StatesASizeAsAnAttributeInBothXmlFormsWhateverTheFlag) {
    for (const int format : {1, 2}) {
        for (const bool sizeInName : {true, false}) {
            Sheet sheet(format);
            sheet.mof.startBlockWithSize("Points", 3, sizeInName).endBlock();
            EXPECT_EQ(sheet.text(), "<Points value=\"3\">\n</Points>\n");
        }
    }
}

TEST(ModelOutFormat, WritesTheLargestSizeInFull) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.startBlockWithSize("Points", ~std::uint64_t{0}, true);
    EXPECT_EQ(sheet.text(), "\nPoints 18446744073709551615 { ");
}

TEST(ModelOutFormat, FramesAValue) {
    Sheet text(ModelFormat::Text);
    text.mof.startValue("Count").output() << 5;
    text.mof.endValue();
    EXPECT_EQ(text.text(), "\nCount 5");

    for (const int format : {1, 2}) {
        Sheet xml(format);
        xml.mof.startValue("Count").output() << 5;
        xml.mof.endValue();
        EXPECT_EQ(xml.text(), "<Count value=\"5\" />\n");
    }
}

TEST(ModelOutFormat, LeavesTheStreamUntouchedForAValueWithAttributesInText) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.startValue("Count", "unit=\"m\"").endValue();
    EXPECT_EQ(sheet.text(), "");
}

TEST(ModelOutFormat, FramesAValueWithAttributesInBothXmlForms) {
    for (const int format : {1, 2}) {
        Sheet sheet(format);
        sheet.mof.startValue("Count", "unit=\"m\"").output() << 5;
        sheet.mof.endValue();
        EXPECT_EQ(sheet.text(), "<Count unit=\"m\" value=\"5\" />\n");
    }
}

TEST(ModelOutFormat, QuotesTheNameOfAValueInText) {
    Sheet sheet(ModelFormat::Text);
    sheet.out.precision(3);
    sheet.mof.startValueAsString("My \"Class\"");
    EXPECT_EQ(sheet.text(), "\n\"My \\\"Class\\\"\" ");
    EXPECT_EQ(sheet.out.precision(), 8);
}

TEST(ModelOutFormat, WritesTheNameOfAValueBareInBothXmlForms) {
    for (const int format : {1, 2}) {
        Sheet sheet(format);
        sheet.mof.startValueAsString("Object");
        EXPECT_EQ(sheet.text(), "<Object value=\"");
    }
}

TEST(ModelOutFormat, WritesAFooterWithoutALineFeedInBothXmlFormsOnly) {
    const std::pair<int, const char*> rows[] = {{0, ""}, {1, "</ZELK>"}, {2, "</ZELK>"}};
    for (const auto& [format, text] : rows) {
        Sheet sheet(format);
        sheet.mof.writeFooter();
        EXPECT_EQ(sheet.text(), text);
    }
}

TEST(ModelOutFormat, WritesAHeaderWithoutAVersionInText) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.writeHeader("Scans of \"A\"");
    EXPECT_EQ(sheet.text(), "\"Scans of \\\"A\\\"\"\n");
}

TEST(ModelOutFormat, WritesAHeaderWithoutAVersionInTheFirstXmlForm) {
    Sheet sheet(ModelFormat::XmlV1);
    sheet.mof.writeHeader("A & B");
    EXPECT_EQ(sheet.text(), R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- XML v. 2 -->
<!-- "A &amp; B" -->
<!-- NEXT: XML Root Element -->
<ZELK>
)");
}

TEST(ModelOutFormat, WritesAHeaderWithoutAVersionInTheSecondXmlForm) {
    Sheet sheet(ModelFormat::XmlV2);
    sheet.mof.writeHeader("A & B");
    EXPECT_EQ(sheet.text(), R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- XML v. 2 -->
<!-- 'A &amp; B' -->
<!-- NEXT: XML Root Element -->
<ZELK>
)");
}

TEST(ModelOutFormat, WritesAnEmptyHeaderAsAPairOfQuotes) {
    Sheet sheet(ModelFormat::XmlV2);
    sheet.mof.writeHeader("");
    EXPECT_NE(sheet.text().find("\n<!-- '' -->\n"), std::string::npos) << sheet.text();
}

TEST(ModelOutFormat, WritesAHeaderWithAVersionInText) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.writeHeader("Scans", someVersion(), false).startBlock("Object");
    EXPECT_EQ(sheet.text(), "\"Scans\"\n\"fmt\" 9.1.0.0.3\nObject { ");
}

TEST(ModelOutFormat, WritesTheRootModelVersionOnRequestInText) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.writeHeader("Scans", someVersion(), true).startBlock("Object");
    EXPECT_EQ(sheet.text(), "\"Scans\"\n\"fmt\" 9.1.0.0.3\n\"RootModel\" 4.5.6.7\nObject { ");
}

TEST(ModelOutFormat, WritesTheVersionsOfTheLibrary) {
    Sheet sheet(ModelFormat::Text);
    sheet.mof.writeHeader("", version, true);
    EXPECT_EQ(sheet.text(), "\"\"\n\"kVLib\" 9.1.0.0\n\"RootModel\" 0.0.0.0");
}

TEST(ModelOutFormat, WritesAHeaderWithAVersionInTheFirstXmlForm) {
    Sheet sheet(ModelFormat::XmlV1);
    sheet.mof.writeHeader("Scans", someVersion(), true);
    EXPECT_EQ(sheet.text(), R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- XML v. 2 -->
<!-- "Scans" -->
<!-- NEXT: Version Information -->
<!-- "fmt" 9.1.0.0.3 -->
<ZELK>
)");
}

TEST(ModelOutFormat, WritesAWholeModelInTheSecondXmlFormWithoutTheRootModelVersion) {
    Sheet sheet(ModelFormat::XmlV2);
    auto& mof = sheet.mof;
    mof.writeHeader("Scans", someVersion(), true);
    mof.startBlock("Object").startValue("Count").output() << 5;
    mof.endValue().endBlock().writeFooter();
    EXPECT_EQ(sheet.text(), R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- XML v. 2 -->
<!-- 'Scans' -->
<!-- NEXT: Version Information -->
<!-- 'fmt' 9.1.0.0.3 -->
<ZELK>
<Object>
<Count value="5" />
</Object>
</ZELK>)");
}

TEST(ModelOutFormat, SetsTheStandingPrecisionInEveryHeader) {
    for (const int format : {0, 1, 2}) {
        Sheet bare(format);
        bare.out.precision(3);
        bare.mof.writeHeader("");
        EXPECT_EQ(bare.out.precision(), 8);

        Sheet versioned(format);
        versioned.out.precision(3);
        versioned.mof.writeHeader("", version, false);
        EXPECT_EQ(versioned.out.precision(), 8);
    }
}

TEST(ModelOutFormat, FlushesAtEveryLineFeed) {
    CountingBuffer buffer;
    std::ostream out(&buffer);
    ModelOutFormat mof(out);

    mof.startBlock("A");
    EXPECT_EQ(buffer.flushes, 1);
    mof.startValue("B").endValue();
    EXPECT_EQ(buffer.flushes, 2);
    mof.endBlock();
    EXPECT_EQ(buffer.flushes, 3);
    mof.setFormat(ModelFormat::XmlV2);
    mof.startBlock("A").endBlock();
    EXPECT_EQ(buffer.flushes, 5);
}

TEST(ModelOutFormat, TakesAnotherFormFromOneOperationToTheNext) {
    Sheet sheet(ModelFormat::XmlV2);
    sheet.mof.startBlock("A");
    sheet.mof.setFormat(ModelFormat::Text);
    sheet.mof.startBlock("B").endBlock();
    sheet.mof.setFormat(ModelFormat::XmlV2);
    sheet.mof.endBlock();
    EXPECT_EQ(sheet.text(), "<A>\n\nB { \n}</A>\n");
}

TEST(ModelOutFormat, WritesNothingForAnXmlBlockThatItDidNotOpen) {
    Sheet sheet(ModelFormat::XmlV2);
    sheet.mof.endBlock();
    EXPECT_EQ(sheet.text(), "");
}

TEST(ModelOutFormat, LeavesAFailedStreamFailed) {
    Sheet sheet(ModelFormat::Text);
    sheet.out.setstate(std::ios::badbit);
    sheet.mof.startBlock("A").endBlock();
    EXPECT_TRUE(sheet.out.bad());
    EXPECT_EQ(sheet.text(), "");
}

TEST(ModelOutFormat, EncodesTheFiveCharactersOfXml) {
    const std::pair<std::string, std::string> rows[] = {
        {"\"", "&quot;"},
        {"&", "&amp;"},
        {"'", "&apos;"},
        {"<", "&lt;"},
        {">", "&gt;"},
        {"a<b&\"c'", "a&lt;b&amp;&quot;c&apos;"},
        {"&lt;", "&amp;lt;"},  // one walk: what was put in is not looked at again
        {"", ""},
        {"plain", "plain"},
        {std::string("\xC3\xA4\xFF\0\n", 5), std::string("\xC3\xA4\xFF\0\n", 5)},
    };
    for (const auto& [text, encoded] : rows) {
        std::ostringstream out;
        ModelOutFormat::encodeXMLEntities(out, text);
        EXPECT_EQ(out.str(), encoded);
    }
}
