// How the text of a model stream falls into words, strings and braces.
#include "outline/Scanner.h"

#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;
using qormodel::testing::TemporaryFile;
using Kind = Token::Kind;

namespace {

struct Seen {
    Kind kind;
    std::string text;
    std::uint64_t line;

    bool operator==(const Seen&) const = default;
};

std::vector<Seen> tokensOf(const std::string& text) {
    const TemporaryFile file(text);
    const SourceFile source(file.getName());
    Scanner scanner(source);
    std::vector<Seen> seen;
    while (true) {
        const Token& token = scanner.next();
        if (token.kind == Kind::End) return seen;
        seen.push_back({token.kind, token.text, token.line});
    }
}

}  // namespace

TEST(Scanner, SplitsAtWhiteSpaceAndCountsLines) {
    const std::vector<Seen> expected{
        {Kind::Word, "Name", 1}, {Kind::String, "a b", 1}, {Kind::Word, "Value", 2},
        {Kind::Word, "-1.5", 3}};

    EXPECT_EQ(tokensOf("Name \"a b\"\nValue\n\t-1.5"), expected);
}

TEST(Scanner, TakesABraceOnlyWhereAWordWouldBegin) {
    const std::vector<Seen> expected{
        {Kind::Open, "", 1}, {Kind::Open, "", 1}, {Kind::Word, "a{b}", 1}, {Kind::Close, "", 1}};

    EXPECT_EQ(tokensOf("{{ a{b} }"), expected);
}

TEST(Scanner, EndsAStringAtTheFirstQuoteThatIsNotEscaped) {
    const std::vector<Seen> expected{{Kind::String, "a\\\"b\\\\", 1}, {Kind::Word, "c", 1}};

    EXPECT_EQ(tokensOf("\"a\\\"b\\\\\" c"), expected);
}

TEST(Scanner, TellsThatAStringIsCut) {
    const TemporaryFile file("Name \"half");
    const SourceFile source(file.getName());
    Scanner scanner(source);
    scanner.next();

    const Token& token = scanner.next();

    EXPECT_EQ(token.kind, Kind::String);
    EXPECT_TRUE(token.isCut);
}

TEST(Scanner, SkipsABlockWithBracesInItsStrings) {
    const TemporaryFile file("{ 1 { 2 } \"}\" 3\n} tail");
    const SourceFile source(file.getName());
    Scanner scanner(source);
    scanner.next();

    const Token close = scanner.skipBlock();

    EXPECT_EQ(close.kind, Kind::Close);
    EXPECT_EQ(close.line, 2u);
    EXPECT_EQ(scanner.next().text, "tail");
}

TEST(Scanner, SkipsALongListAndCountsItsLines) {
    std::string list;
    for (int i = 0; i < 200'000; ++i) list += i % 10 == 0 ? "12}345\n" : "123456 ";
    const TemporaryFile file("{ " + list + "\n{ 1 } \"}\" " + list + "} tail");
    const SourceFile source(file.getName());
    Scanner scanner(source);
    scanner.next();

    const Token close = scanner.skipBlock();

    EXPECT_EQ(close.kind, Kind::Close);
    EXPECT_EQ(close.line, 40'002u);
    EXPECT_EQ(close.end, source.getSize() - 5);
    EXPECT_EQ(scanner.next().text, "tail");
}

TEST(Scanner, SkipsPlainPiecesWithAWordOverTheirBorder) {
    const std::string plain(700'000, '7');  // more than two pieces, one word
    const TemporaryFile file("{ 1\n" + plain + "}\n2 } tail");
    const SourceFile source(file.getName());
    Scanner scanner(source);
    scanner.next();

    EXPECT_EQ(scanner.skipBlock().line, 3u);
    EXPECT_EQ(scanner.next().text, "tail");
}

TEST(Scanner, FindsTheSameInPiecesThatABufferCuts) {
    const std::string word(300000, 'w');
    const std::string text(300000, 's');
    const std::vector<Seen> expected{
        {Kind::Word, word, 1}, {Kind::String, text, 1}, {Kind::Close, "", 2}};

    EXPECT_EQ(tokensOf(word + " \"" + text + "\"\n}"), expected);
}

TEST(Scanner, TakesQuotesAndBracesInAListOfWordsForLetters) {
    const TemporaryFile file("{ a\"b \"c {d } \"} tail\"");
    const SourceFile source(file.getName());
    Scanner skipping(source);
    skipping.next();
    Scanner reading(source);
    reading.next();
    reading.setWordsOnly(true);

    EXPECT_EQ(skipping.skipWordList().kind, Kind::Close);
    EXPECT_EQ(skipping.getOffset(), 13u);  // behind the first brace that begins a word
    for (const char* const word : {"a\"b", "\"c", "{d"}) EXPECT_EQ(reading.next().text, word);
    EXPECT_EQ(reading.next().kind, Kind::Close);
}

TEST(Scanner, TellsThatAListOfWordsHasNoEnd) {
    const TemporaryFile file("{ a b}");
    const SourceFile source(file.getName());
    Scanner scanner(source);
    scanner.next();

    EXPECT_EQ(scanner.skipWordList().kind, Kind::End);
}
