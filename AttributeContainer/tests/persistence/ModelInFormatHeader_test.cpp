#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ModelOutFormat.h>
#include <AttributeContainer/Version.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;

namespace {

const std::string xmlStart = ModelFormat::XML_HEADER + "\n" + ModelFormat::XML_V2_COMMENT + "\n";

int formatOf(const std::string& text) {
    std::istringstream in(text);
    return ModelInFormat(in).determineFormat();
}

// The next line of what a reader left.
std::string lineOf(std::istream& in) {
    std::string line;
    std::getline(in, line);
    return line;
}

VersionNum marked() { return VersionNum("as it came", 1, 2, 3, 4, 5, "rev"); }

Version someVersion() {
    return Version(VersionNum("app", 1, 1, 1, 1, 0, ""), VersionNum("fmt", 9, 1, 0, 0, 3, "rev"),
                   VersionNum("socket", 2, 2, 2, 2, 0, ""), VersionNum("api", 3, 3, 3, 3, 0, ""),
                   VersionNum("RootModel", 4, 5, 6, 7, 0, ""), "");
}

// A stream with a versioned header in the form, one block and the footer.
std::string written(int format, bool writeRootModelVersion = false) {
    std::ostringstream out;
    ModelOutFormat mof(out);
    mof.setFormat(format);
    mof.writeHeader("A header", someVersion(), writeRootModelVersion);
    mof.startBlock("Object").endBlock().writeFooter();
    return out.str();
}

}  // namespace

TEST(DetermineFormat, GivesTextForAnEmptyStream) {
    std::istringstream in("");
    ModelInFormat imf(in);
    EXPECT_EQ(imf.determineFormat(), 0);
    EXPECT_EQ(imf.getFormat(), 0);
    EXPECT_EQ(imf.getKeyword(), std::nullopt);
}

TEST(DetermineFormat, ConsumesOnlyWhiteSpaceBeforeAnyOtherCharacter) {
    std::istringstream in(" \n\t\"Header\"\n");
    EXPECT_EQ(ModelInFormat(in).determineFormat(), 0);
    EXPECT_EQ(lineOf(in), "\"Header\"");
}

TEST(DetermineFormat, LosesALineThatOnlyBeginsLikeXml) {
    std::istringstream in("<!-- x\nsecond\n");
    EXPECT_EQ(ModelInFormat(in).determineFormat(), 0);
    EXPECT_EQ(lineOf(in), "second");
}

TEST(DetermineFormat, LosesBothLinesWhereTheSecondIsAnother) {
    std::istringstream in(ModelFormat::XML_HEADER + "\n<Root>\nthird\n");
    EXPECT_EQ(ModelInFormat(in).determineFormat(), 0);
    EXPECT_EQ(lineOf(in), "third");
}

TEST(DetermineFormat, GivesTheSecondXmlFormForItsTwoLines) {
    std::istringstream in(" \n" + xmlStart + "third\n");
    ModelInFormat imf(in);
    EXPECT_EQ(imf.determineFormat(), 2);
    EXPECT_EQ(imf.getFormat(), 2);
    EXPECT_EQ(lineOf(in), "third");
}

TEST(DetermineFormat, ComparesTheLinesByteForByte) {
    EXPECT_EQ(formatOf(ModelFormat::XML_HEADER + " \n" + ModelFormat::XML_V2_COMMENT + "\n"), 0);
    EXPECT_EQ(formatOf(ModelFormat::XML_HEADER + "\n" + ModelFormat::XML_V2_COMMENT + " \n"), 0);
    EXPECT_EQ(formatOf(ModelFormat::XML_HEADER + "\n <!-- XML v. 2 -->\n"), 0);
    EXPECT_EQ(formatOf("<?XML version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- XML v. 2 -->\n"), 0);
}

TEST(DetermineFormat, DoesNotKnowLinesThatEndInACarriageReturn) {
    EXPECT_EQ(formatOf(ModelFormat::XML_HEADER + "\r\n" + ModelFormat::XML_V2_COMMENT + "\r\n"), 0);
}

TEST(DetermineFormat, KnowsAHeaderThatIsCutBehindItsSecondLine) {
    EXPECT_EQ(formatOf(ModelFormat::XML_HEADER + "\n" + ModelFormat::XML_V2_COMMENT), 2);
    EXPECT_EQ(formatOf(ModelFormat::XML_HEADER), 0);
}

TEST(DetermineFormat, ReplacesTheFormThatWasSet) {
    std::istringstream in("text");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(imf.determineFormat(), 0);
    EXPECT_EQ(imf.getFormat(), 0);
}

TEST(DetermineFormat, TakesBothXmlFormsOfTheWriterForTheSecond) {
    EXPECT_EQ(formatOf(written(ModelFormat::Text)), 0);
    EXPECT_EQ(formatOf(written(ModelFormat::XmlV1)), 2);
    EXPECT_EQ(formatOf(written(ModelFormat::XmlV2)), 2);
}

TEST(ReadHeader, ReadsAQuotedTextInText) {
    std::istringstream in("\n\"My \\\"header\\\"\"\nnext\n");
    std::string text = "before";
    ModelInFormat(in).readHeader(text);
    EXPECT_EQ(text, "My \"header\"");
}

TEST(ReadHeader, ConsumesNothingWhereNoQuotedTextStands) {
    std::istringstream in("Header\n");
    std::string text = "before";
    ModelInFormat(in).readHeader(text);
    EXPECT_EQ(text, "");
    EXPECT_EQ(lineOf(in), "Header");
}

TEST(ReadHeader, DeliversNoTextInTheXmlFormAndStopsBeforeTheVersion) {
    std::istringstream in(R"(<!-- 'A header' -->
<!-- NEXT: Version Information -->
<!-- 'kVLib' 9.1.0.0 -->
)");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    std::string text = "before";
    imf.readHeader(text);
    EXPECT_EQ(text, "");
    EXPECT_EQ(lineOf(in), "<!-- 'kVLib' 9.1.0.0 -->");
}

TEST(ReadHeader, PassesTheRootTagWhereNoVersionFollows) {
    std::istringstream in(R"(<!-- 'A header' -->
<!-- NEXT: XML Root Element -->
<ZELK>
<Object>
)");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    std::string text;
    imf.readHeader(text);
    EXPECT_EQ(lineOf(in), "<Object>");
}

TEST(ReadHeader, TakesALineThatOnlyBeginsLikeTheRootCommentForAnother) {
    std::istringstream in("<!-- 'A' -->\n<!-- NEXT: XML Root Element --> \nthird\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    std::string text;
    imf.readHeader(text);
    EXPECT_EQ(lineOf(in), "third");
}

TEST(ReadVersion, ReadsTheVersionInText) {
    std::istringstream in("\"kVLib\" 9.1.0.0.3\n");
    auto v = marked();
    ModelInFormat(in).readVersion(v);
    EXPECT_EQ(v.getName(), "kVLib");
    EXPECT_EQ(v.getReleaseNumbers(), "9.1.0.0.3");
}

TEST(ReadVersion, ReadsTheNumbersOfACommentInTheXmlForm) {
    std::istringstream in("<!-- 'other' 9.2.0.1 -->\n<ZELK>\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    auto v = marked();
    imf.readVersion(v);
    EXPECT_EQ(v.getName(), "");  // strings are not delivered in this form
    EXPECT_EQ(v.getReleaseNumbers(), "9.2.0.1");
    EXPECT_EQ(lineOf(in), "<ZELK>");
}

TEST(ReadRootModelVersion, ReplacesWhatWasStored) {
    std::istringstream in("\"RootModel\" 4.5.6.7\nnext");
    auto v = marked();
    ModelInFormat(in).readRootModelVersion(v);
    EXPECT_EQ(v.getName(), "1.0");
    EXPECT_EQ(v.getReleaseNumbers(), "0.0.0.0");
    EXPECT_EQ(v.getRevision(), "");
    EXPECT_EQ(in.peek(), '\n');  // read all the same
}

TEST(ReadRootModelVersion, KeepsAVersionThatIsNamedOneZero) {
    std::istringstream in("\"1.0\" 4.5.6.7\n");
    auto v = marked();
    ModelInFormat(in).readRootModelVersion(v);
    EXPECT_EQ(v.getName(), "1.0");
    EXPECT_EQ(v.getReleaseNumbers(), "4.5.6.7");
}

TEST(ReadRootModelVersion, ReadsNothingInTheXmlForms) {
    for (const int format : {1, 2}) {
        std::istringstream in("\"1.0\" 4.5.6.7\n");
        ModelInFormat imf(in);
        imf.setFormat(format);

        auto replaced = marked();
        imf.readRootModelVersion(replaced);
        EXPECT_EQ(replaced.getName(), "1.0");
        EXPECT_EQ(replaced.getReleaseNumbers(), "0.0.0.0");

        VersionNum kept("1.0", 1, 2, 3, 4, 5, "rev");
        imf.readRootModelVersion(kept);
        EXPECT_EQ(kept.getReleaseNumbers(), "1.2.3.4.5");
        EXPECT_EQ(kept.getRevision(), "rev");

        EXPECT_EQ(in.tellg(), std::streampos(0));
    }
}

TEST(ReadZelkStart, IsTrueAtOnceInTheOtherForms) {
    for (const int format : {0, 1}) {
        std::istringstream in(" anything\n");
        ModelInFormat imf(in);
        imf.setFormat(format);
        EXPECT_TRUE(imf.readZelkStart());
        EXPECT_TRUE(imf.readZelkEnd());
        EXPECT_EQ(in.tellg(), std::streampos(0));
    }
}

TEST(ReadZelkStart, KnowsTheRootTagInAnyCase) {
    const std::pair<const char*, bool> rows[] = {
        {"\n <ZELK>\n  next", true}, {"<zelk>\nnext", true},   {"<Zelk>\nnext", true},
        {"<ZELK> \nnext", false},    {"<OTHER>\nnext", false}, {"<ZELK>\r\nnext", false},
    };
    for (const auto& [text, known] : rows) {
        std::istringstream in(text);
        ModelInFormat imf(in);
        imf.setFormat(ModelFormat::XmlV2);
        EXPECT_EQ(imf.readZelkStart(), known) << text;
        EXPECT_EQ(lineOf(in), "next") << text;  // white space behind the line is passed too
    }
}

TEST(ReadZelkStart, IsFalseAtTheEndOfTheStream) {
    std::istringstream in(" ");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_FALSE(imf.readZelkStart());
}

TEST(ReadZelkStart, TakesAtMostAHundredCharactersOfALine) {
    std::istringstream in(std::string(100, 'x') + std::string(1000, 'y') + "\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_FALSE(imf.readZelkStart());
    EXPECT_EQ(in.tellg(), std::streampos(100));
    EXPECT_TRUE(in.good());
}

TEST(ReadZelkEnd, IsTrueWhateverItFinds) {
    for (const char* text : {"", "</ZELK>", "\n</ZELK>\n", "anything\n"}) {
        std::istringstream in(text);
        ModelInFormat imf(in);
        imf.setFormat(ModelFormat::XmlV2);
        EXPECT_TRUE(imf.readZelkEnd()) << text;
    }
}

TEST(ReadZelkEnd, StepsOverTheClosingLine) {
    std::istringstream in("\n</ZELK>\n next\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_TRUE(imf.readZelkEnd());
    EXPECT_EQ(lineOf(in), "next");
}

TEST(WholeStream, IsReadBackInText) {
    std::istringstream in(written(ModelFormat::Text, true));
    ModelInFormat imf(in);
    std::string text;
    VersionNum format = marked();
    VersionNum rootModel = marked();

    EXPECT_EQ(imf.determineFormat(), 0);
    imf.readHeader(text);
    imf.readVersion(format);
    imf.readRootModelVersion(rootModel);
    EXPECT_TRUE(imf.readZelkStart());

    EXPECT_EQ(text, "A header");
    EXPECT_EQ(format.getName(), "fmt");
    EXPECT_EQ(format.getReleaseNumbers(), "9.1.0.0.3");
    EXPECT_EQ(rootModel.getName(), "1.0");
    EXPECT_EQ(rootModel.getReleaseNumbers(), "0.0.0.0");
    EXPECT_EQ(imf.getKeyword(), "Object");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "{");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "}");
    EXPECT_TRUE(imf.readZelkEnd());
}

TEST(WholeStream, OfTheSecondXmlFormIsPassedThroughToItsEnd) {
    std::istringstream in(written(ModelFormat::XmlV2, true));
    ModelInFormat imf(in);
    std::string text;
    VersionNum format = marked();

    EXPECT_EQ(imf.determineFormat(), 2);
    imf.readHeader(text);
    imf.readVersion(format);
    EXPECT_TRUE(imf.readZelkStart());

    EXPECT_EQ(text, "");
    EXPECT_EQ(format.getReleaseNumbers(), "9.1.0.0.3");
    EXPECT_EQ(imf.getKeyword(), "Object");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "{");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "}");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), std::nullopt);  // the footer ends the keywords
    EXPECT_TRUE(imf.readZelkEnd());             // which leaves nothing to step over
}
