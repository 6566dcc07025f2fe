#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>
#include <QOR/Text.h>

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <stdexcept>
#include <vector>

using namespace QOR::AttributeContainer;

namespace {

using Keywords = std::vector<std::string>;

// All keywords of the text, up to the first that is not there.
Keywords keywordsOf(const std::string& text, int format) {
    std::istringstream in(text);
    ModelInFormat imf(in);
    imf.setFormat(format);
    Keywords keywords;
    while (const auto* keyword = imf.peekKeyword()) {
        keywords.push_back(*keyword);
        imf.nextKeyword();
    }
    return keywords;
}

Keywords textKeywords(const std::string& text) { return keywordsOf(text, ModelFormat::Text); }

Keywords xmlKeywords(const std::string& text) { return keywordsOf(text, ModelFormat::XmlV2); }

// A source that breaks after its first characters.
class BreakingBuffer : public std::streambuf {
public:
    explicit BreakingBuffer(std::string content) : text(std::move(content)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("broken"); }

private:
    std::string text;
};

// One keyword by the stream's own operations, step by step.
std::optional<std::string> keywordByStreamOperations(std::istream& in) {
    std::optional<std::string> keyword;
    QOR::eatWS(in);
    const int next = in.peek();
    if (next == '{' || next == '}') {
        keyword = std::string(1, static_cast<char>(in.get()));
    } else {
        QOR::operator>>(in, keyword);
    }
    if (!in.good()) keyword.reset();
    return keyword;
}

}  // namespace

TEST(TextKeywords, AreWordsAndBracesWhereAWordWouldBegin) {
    EXPECT_EQ(textKeywords("Attr<int> { \nName \"Count\"\n}\n"),
              (Keywords{"Attr<int>", "{", "Name", "\"Count\"", "}"}));
    EXPECT_EQ(textKeywords("a{b} {c }d {{}} "),
              (Keywords{"a{b}", "{", "c", "}", "d", "{", "{", "}", "}"}));
}

TEST(TextKeywords, AreSeparatedByAnyWhiteSpace) {
    EXPECT_EQ(textKeywords(" a\tb\nc\vd\fe\r\nf "), (Keywords{"a", "b", "c", "d", "e", "f"}));
}

TEST(TextKeywords, IncludeABraceAfterAWordOnTheLineBefore) {
    EXPECT_EQ(textKeywords("Value\n}\n"), (Keywords{"Value", "}"}));
}

TEST(TextKeywords, LoseAWordThatEndsAtTheEndOfTheInput) {
    EXPECT_EQ(textKeywords("Value"), Keywords{});
    EXPECT_EQ(textKeywords("one Value"), Keywords{"one"});
    EXPECT_EQ(textKeywords("Value "), Keywords{"Value"});
}

TEST(TextKeywords, KeepABraceAtTheEndOfTheInput) {
    EXPECT_EQ(textKeywords("Value\n}"), (Keywords{"Value", "}"}));
    EXPECT_EQ(textKeywords("{"), Keywords{"{"});
}

TEST(TextKeywords, LeaveTheStreamAsItsOwnOperationsDo) {
    const struct {
        const char* text;
        std::ios::iostate state;
    } rows[] = {
        {"", std::ios::eofbit | std::ios::failbit},
        {" \n", std::ios::eofbit | std::ios::failbit},
        {"word", std::ios::eofbit},
        {"word ", std::ios::goodbit},
        {"}", std::ios::goodbit},
    };
    for (const auto& row : rows) {
        std::istringstream in(row.text);
        ModelInFormat imf(in);
        imf.nextKeyword();
        EXPECT_EQ(in.rdstate(), row.state) << '"' << row.text << '"';
    }
}

TEST(TextKeywords, AreThoseOfTheStreamsOwnOperationsOnAnyBytes) {
    std::mt19937 random(7);
    const std::string alphabet("ab{} \n\t\0\xA0\x85\xFF", 11);
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 24, ' ');
        for (auto& character : text) character = alphabet[random() % alphabet.size()];
        std::istringstream expectedStream(text);
        std::istringstream in(text);
        ModelInFormat imf(in);
        for (;;) {
            const auto expected = keywordByStreamOperations(expectedStream);
            imf.nextKeyword();
            ASSERT_EQ(in.rdstate(), expectedStream.rdstate()) << text;
            if (!expected) break;
            ASSERT_EQ(imf.getKeyword(), expected) << text;
            ASSERT_EQ(in.tellg(), expectedStream.tellg()) << text;
        }
        ASSERT_EQ(imf.peekKeyword(), nullptr) << text;
    }
}

TEST(TextKeywords, MayBeAMegabyteLong) {
    const std::string word(1 << 20, 'x');
    EXPECT_EQ(textKeywords(word + " y "), (Keywords{word, "y"}));
}

TEST(TextKeywords, AreReadInTheFirstXmlFormToo) {
    EXPECT_EQ(keywordsOf("<Name> { } ", ModelFormat::XmlV1), (Keywords{"<Name>", "{", "}"}));
}

TEST(TextKeywords, EndWhereTheSourceBreaks) {
    BreakingBuffer buffer("one two");
    std::istream in(&buffer);
    ModelInFormat imf(in);
    EXPECT_EQ(imf.getKeyword(), "one");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), std::nullopt);
    EXPECT_TRUE(in.bad());
}

TEST(TextKeywords, PassTheExceptionOfTheSourceOnIfTheStreamAsksForIt) {
    BreakingBuffer buffer("one two");
    std::istream in(&buffer);
    in.exceptions(std::ios::badbit);
    ModelInFormat imf(in);
    EXPECT_EQ(imf.getKeyword(), "one");
    try {
        imf.nextKeyword();
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "broken");
    }
    EXPECT_TRUE(in.bad());
    in.exceptions(std::ios::goodbit);
    EXPECT_EQ(imf.getKeyword(), std::nullopt);
}

TEST(TextKeywords, ThrowAtTheEndIfTheStreamAsksForIt) {
    std::istringstream in("one ");
    in.exceptions(std::ios::failbit);
    ModelInFormat imf(in);
    EXPECT_EQ(imf.getKeyword(), "one");
    EXPECT_THROW(imf.nextKeyword(), std::ios_base::failure);
}

TEST(XmlKeywords, OfAnElementAreItsNameAndABrace) {
    EXPECT_EQ(xmlKeywords("<Outer>\n<Inner>\n</Inner>\n</Outer>\n"),
              (Keywords{"Outer", "{", "Inner", "{", "}", "}"}));
}

TEST(XmlKeywords, LeaveTheClosingBracketOfATagForTheBrace) {
    std::istringstream in("<Name>");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(imf.getKeyword(), "Name");
    EXPECT_EQ(in.peek(), '>');
}

TEST(XmlKeywords, OfAClosingTagAreABraceWhateverItsName) {
    EXPECT_EQ(xmlKeywords("</Anything>\n</zelk>\n</ ZELK>\n</ZELKE>\n</>\n"),
              (Keywords{"}", "}", "}", "}", "}"}));
}

TEST(XmlKeywords, EndAtTheClosingRootTag) {
    std::istringstream in("</Block>\n</ZELK>");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(imf.getKeyword(), "}");

    imf.nextKeyword();

    EXPECT_EQ(imf.getKeyword(), std::nullopt);
    EXPECT_EQ(imf.getKeyword(), std::nullopt);
}

TEST(XmlKeywords, GoOnBehindTheClosingRootTagOnlyWhenAskedAgain) {
    std::istringstream in("</ZELK>\n<Next>\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(imf.getKeyword(), std::nullopt);
    EXPECT_TRUE(in.good());
    EXPECT_EQ(imf.getKeyword(), "Next");
}

TEST(XmlKeywords, OfAnAttributeBlockJoinNameAndType) {
    // The writer leaves the bracket of the class name in the type.
    EXPECT_EQ(xmlKeywords("<Attr type=\"int>\">\n</Attr>\n"), (Keywords{"Attr<int>>", "{", "}"}));
    EXPECT_EQ(xmlKeywords("<Attr   type = \"int\">\n</Attr>\n"), (Keywords{"Attr<int>", "{", "}"}));
}

TEST(XmlKeywords, OfAValueElementAreItsNameWithTheStreamAtTheValue) {
    std::istringstream in("<Count value=\"5\" />\n</Block>\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(imf.getKeyword(), "Count");
    int value = 0;
    in >> value;
    EXPECT_EQ(value, 5);
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "}");
}

TEST(XmlKeywords, OfABlockWithASizeAreItsNameAndABrace) {
    std::istringstream in("<Points value=\"3\">\n</Points>\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(imf.getKeyword(), "Points");
    int size = 0;
    in >> size;
    EXPECT_EQ(size, 3);
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "{");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "}");
}

TEST(XmlKeywords, AreEmptyForAnElementWithAnyOtherFirstAttribute) {
    EXPECT_EQ(xmlKeywords("<Count unit=\"m\">"), (Keywords{"", "", "{"}));  // the tag, 'm', '">'
}

TEST(XmlKeywords, UnderstandOnlyTheFirstAttributeOfATag) {
    std::istringstream in("<Count type=\"int\" value=\"5\" />\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(imf.getKeyword(), "Count<int>");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "");  // the 'v' of the attribute behind it
    EXPECT_EQ(in.peek(), 'a');
}

TEST(XmlKeywords, AreEmptyOverAValueThatNobodyRead) {
    std::istringstream in("<Count value=\"57\" />\n</Block>\n");
    ModelInFormat imf(in);
    imf.setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(imf.getKeyword(), "Count");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "");
    imf.nextKeyword();
    EXPECT_EQ(imf.getKeyword(), "}");
}

TEST(XmlKeywords, AreEmptyBehindAQuoteThatEndsNoElement) {
    EXPECT_EQ(xmlKeywords("\" x>"), (Keywords{"", "{"}));
}

TEST(XmlKeywords, StartANameWithWhateverStandsBehindTheBracket) {
    EXPECT_EQ(xmlKeywords("<>>"), (Keywords{">", "{"}));
    EXPECT_EQ(xmlKeywords("<a\nb>"), (Keywords{"a\nb", "{"}));
    EXPECT_EQ(xmlKeywords("<?xml version=\"1\">"), (Keywords{"", "", "{"}));
}

TEST(XmlKeywords, EndQuietlyWhereverATagIsCut) {
    for (const char* text : {"", " ", "<", "</", "</An", "<Na", "<Na ", "<Na typ", "<Na type=\"in",
                             "<Na value=", "\"", "\" ", "\" /", "\"/>", "\" />\n"}) {
        EXPECT_EQ(xmlKeywords(text), Keywords{}) << text;
    }
    EXPECT_EQ(xmlKeywords("<Na value=\""), Keywords{"Na"});
}

TEST(XmlKeywords, PassAMillionEndsOfValuesInOneGo) {
    std::string text;
    for (int i = 0; i < 1000000; ++i) text += "\"/>";
    EXPECT_EQ(xmlKeywords(text), Keywords{});
    EXPECT_EQ(xmlKeywords(text + "<Name>"), (Keywords{"Name", "{"}));
}

TEST(XmlKeywords, MayBeAMegabyteLong) {
    const std::string name(1 << 20, 'x');
    EXPECT_EQ(xmlKeywords("<" + name + ">"), (Keywords{name, "{"}));
    EXPECT_EQ(xmlKeywords("<A type=\"" + name + "\">"), (Keywords{"A<" + name + ">", "{"}));
}
