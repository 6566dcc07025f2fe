#include "persistence/Reading.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Strings = std::vector<std::string>;
using Map = std::map<std::string, std::string>;
using Points = std::vector<Vec3d<double>>;

template <class T> void expectBack(const T& value) {
    std::ostringstream out;
    DataOutFormat<T>(out, ModelFormat::Text).put(value);
    EXPECT_EQ(read<T>(out.str()), value) << out.str();
}

}  // namespace

TEST(DataInFormatLists, ReadsWhatIsWritten) {
    expectBack(std::vector<signed char>{65, -1});
    expectBack(std::vector<unsigned char>{65, 255});
    expectBack(std::vector<short>{-5, 32767});
    expectBack(std::vector<unsigned short>{5, 65535});
    expectBack(std::vector<int>{});
    expectBack(std::vector<int>{1, -2});
    expectBack(std::vector<unsigned int>{1, 4294967295u});
    expectBack(std::vector<std::int64_t>{-1, 9223372036854775807});
    expectBack(std::vector<std::uint64_t>{18446744073709551615u});
    expectBack(std::vector<float>{0.5f, 2});
    expectBack(std::vector<double>{0.5, -2, 0});
    expectBack(std::vector<bool>{true, false, true});
    expectBack(std::vector<SVec2d<int>>{{1, 2}, {-3, 4}});
    expectBack(std::vector<SVec2d<unsigned short>>{{1, 2}});
    expectBack(std::vector<SVec3d<unsigned int>>{{1, 2, 3}, {4, 5, 6}});
    expectBack(std::vector<SVec2d<float>>{{1, 2}});
    expectBack(Points{{1, 2, 3}, {-4, 5.5, 0}});
    expectBack(std::vector<Vec4d<double>>{{1, 2, 3, 4}});
    expectBack(std::vector<Mat4d<double>>{Mat4d<double>::identity(), Mat4d<double>()});
    expectBack(std::vector<ScanPtColor<Vec3d<float>>>{{{1, -2, 3}, {4, 5, 6, 7}}});
    expectBack(std::vector<uuids::uuid>{uuids::uuid::generate(), uuids::uuid()});
    expectBack(std::vector<Points>{{{1, 2, 3}, {4, 5, 6}}, {}, {{7, 8, 9}}});
    expectBack(std::set<std::uint32_t>{1, 2});
    expectBack(std::set<std::uint64_t>{});
    expectBack(std::set<uuids::uuid>{uuids::uuid::generate()});
    expectBack(Strings{"a b", "", "\"}\n"});
    expectBack(std::set<std::string>{"b", "a"});
    expectBack(Map{{"k", "v w"}, {"", "=>"}});
}

TEST(DataInFormatLists, StandsBehindTheClosingBrace) {
    EXPECT_EQ(reading<std::vector<int>>("{ 1 2 } x").rest, " x");
    EXPECT_EQ(reading<std::vector<int>>("{ 1 2 } x").state, good);
    EXPECT_EQ(reading<std::vector<int>>("{ }").state, good);
    const std::string behind(10'000, '7');
    EXPECT_EQ(reading<std::vector<double>>("{ 1 } " + behind).rest, ' ' + behind);
}

TEST(DataInFormatLists, NeedsNoBlanksAroundNumbers) {
    EXPECT_EQ(read<std::vector<int>>("{1 2}"), (std::vector<int>{1, 2}));
    EXPECT_EQ(read<std::vector<int>>("\n {\n1\t2\n}"), (std::vector<int>{1, 2}));
    EXPECT_EQ(read<Points>("{1 2 3}"), (Points{{1, 2, 3}}));
}

TEST(DataInFormatLists, TakesAnyCharacterForTheOpeningBrace) {
    EXPECT_EQ(read<std::vector<int>>("[ 1 2 }"), (std::vector<int>{1, 2}));
    EXPECT_EQ(read<std::vector<int>>("12 3 }"), (std::vector<int>{2, 3}));
}

TEST(DataInFormatLists, ReadsTheElementsOfByteAndBoolListsAsWords) {
    EXPECT_EQ(read<std::vector<unsigned char>>("{ 5} 6 } "), (std::vector<unsigned char>{5, 6}));
    EXPECT_EQ(read<std::vector<bool>>("{ True 1 } "), (std::vector<bool>{true, false}));
    EXPECT_EQ(read<std::vector<bool>>("{ true false } ", ModelFormat::XmlV2),
              (std::vector<bool>{true, false}));
}

TEST(DataInFormatLists, KeepsWhatItHasWhereTheStreamEnds) {
    EXPECT_EQ(reading<std::vector<int>>("").state, failedAtEnd);
    EXPECT_EQ(reading<std::vector<int>>("{").state, failedAtEnd);
    EXPECT_EQ(reading<std::vector<int>>("{ 1 2").value, (std::vector<int>{1, 2}));
    EXPECT_EQ(reading<std::vector<int>>("{ 1 2").state, atEnd);
    EXPECT_EQ(reading<std::vector<int>>("{ 1 2 ").value, (std::vector<int>{1, 2}));
    EXPECT_EQ(reading<std::vector<int>>("{ 1 2 ").state, failedAtEnd);
    EXPECT_EQ(reading<Points>("{ 1 2 3 4 5").value, (Points{{1, 2, 3}, {4, 5, 0}}));
}

TEST(DataInFormatLists, EndsAndFailsAtAnElementThatTakesNoCharacter) {
    EXPECT_EQ(reading<std::vector<int>>("{ 1 x 2 }").value, (std::vector<int>{1}));
    EXPECT_EQ(reading<std::vector<int>>("{ 1 x 2 }").state, failed);
    EXPECT_EQ(reading<std::vector<int>>("{ 1 x 2 }").rest, "x 2 }");
    EXPECT_EQ(reading<std::vector<double>>("{ 1 x }").value, (std::vector<double>{1}));
    EXPECT_EQ(reading<std::vector<double>>("{ 1.#IND 2 }").value, (std::vector<double>{1}));
    EXPECT_EQ(reading<std::vector<double>>("{ 1.#IND 2 }").state, failed);
    EXPECT_EQ(reading<std::vector<double>>("{ 1.#IND 2 }").rest, "#IND 2 }");
    EXPECT_EQ(reading<Points>("{ 1 2 x }").value, (Points{{1, 2, 0}}));
    EXPECT_EQ(reading<Points>("{ 1 2 x }").state, failed);
    EXPECT_EQ(reading<std::vector<SVec2d<int>>>("{ 1 2 x }").value,
              (std::vector<SVec2d<int>>{{1, 2}}));
    EXPECT_TRUE(reading<std::vector<SVec2d<int>>>("{ 1 2 x }").state & failed);
    EXPECT_EQ(reading<std::vector<bool>>("{ true \"", ModelFormat::XmlV2).value.size(), 1u);
    EXPECT_EQ(reading<std::vector<bool>>("{ true \"", ModelFormat::XmlV2).state, failed);
    EXPECT_EQ(reading<std::set<std::uint32_t>>("{ 1 x }").state, failed);
}

TEST(DataInFormatLists, ReadsTheOldInfinityAmongOthers) {
    EXPECT_EQ(read<std::vector<double>>("{ 1 1.#INF 2 -1.#inf 3 } "),
              (std::vector<double>{1, HUGE_VAL, 2, -HUGE_VAL, 3}));
}

TEST(DataInFormatLists, FoldsWhatASetHasTwice) {
    EXPECT_EQ(read<std::set<std::uint32_t>>("{ 3 1 3 }"), (std::set<std::uint32_t>{1, 3}));
    EXPECT_EQ(read<std::set<std::string>>(R"(3 "b" "a" "b")"), (std::set<std::string>{"a", "b"}));
}

TEST(DataInFormatLists, ForgetsFormerElements) {
    std::istringstream stream("{ 1 2 } { 3 }");
    DataInFormat<std::vector<int>> codec(stream, ModelFormat::Text);
    codec.get();
    EXPECT_EQ(codec.get(), (std::vector<int>{3}));
}

// ---- counted lists ----------------------------------------------------------------------------

TEST(DataInFormatLists, ReadsAsManyStringsAsCounted) {
    EXPECT_EQ(read<Strings>(R"( 2 "a" "b c" "d")"), (Strings{"a", "b c"}));
    EXPECT_EQ(reading<Strings>(R"(2 "a" "b c" "d")").rest, " \"d\"");
    EXPECT_EQ(read<Strings>("0 \"a\""), Strings{});
    EXPECT_EQ(read<Strings>("-1 \"a\""), Strings{});
    EXPECT_EQ(read<Strings>("x"), Strings{});
}

TEST(DataInFormatLists, ReadsNoMoreStringsThanThereAre) {
    EXPECT_EQ(reading<Strings>(R"(9000000000000000000 "a" "b")").value, (Strings{"a", "b"}));
    EXPECT_EQ(reading<Strings>(R"(9000000000000000000 "a" "b")").state, failedAtEnd);
    EXPECT_EQ(reading<Strings>("9000000000000000000").state, failedAtEnd);
    EXPECT_EQ(reading<Strings>(R"(9000000000000000000 "a" b)").value, Strings{"a"});
    EXPECT_EQ(reading<Strings>(R"(9000000000000000000 "a" b)").state, failed);
    EXPECT_EQ(reading<std::set<std::string>>("4000000000 \"a\" }").value,
              std::set<std::string>{"a"});
    EXPECT_EQ(reading<Map>("4000000000 \"a\"=>\"b\" }").value, (Map{{"a", "b"}}));
    EXPECT_EQ(reading<Map>("4000000000 \"a\"=>\"b\" }").state, failed);
}

TEST(DataInFormatLists, ReadsStringsOfXmlAsEmpty) {
    EXPECT_EQ(reading<Strings>("2 'a' 'b'\" />", ModelFormat::XmlV2).value, (Strings{"", ""}));
    EXPECT_EQ(reading<Strings>("2 'a' 'b'\" />", ModelFormat::XmlV2).rest, "\" />");
    EXPECT_EQ(reading<Strings>("4000000000\" />", ModelFormat::XmlV2).value, Strings{});
}

TEST(DataInFormatLists, ReadsBracedWordsWhereABraceStandsAtOnce) {
    EXPECT_EQ(read<Strings>(R"({ a "b" c\n } x)"), (Strings{"a", "\"b\"", "c\\n"}));
    EXPECT_EQ(reading<Strings>("{a b} } x").value, (Strings{"a", "b}"}));
    EXPECT_EQ(reading<Strings>("{a b} } x").rest, " x");
    EXPECT_EQ(reading<Strings>("{ a").value, Strings{"a"});
    EXPECT_EQ(read<Strings>("{}"), Strings{});
    EXPECT_EQ(read<std::set<std::string>>("{ b a b }"), (std::set<std::string>{"a", "b"}));
    // Behind white space a number must stand.
    EXPECT_EQ(reading<Strings>(" { a }").value, Strings{});
    EXPECT_EQ(reading<Strings>(" { a }").rest, "{ a }");
}

TEST(DataInFormatLists, NeedsAnArrowBetweenKeyAndValue) {
    EXPECT_EQ(read<Map>(R"(2 "a"=>"b" "c"=> "d")"), (Map{{"a", "b"}, {"c", "d"}}));
    const auto broken = reading<Map>(R"(2 "a"= >"b" "c"=>"d")");
    EXPECT_EQ(broken.value, (Map{{"a", ""}}));
    EXPECT_EQ(broken.state, failed);
    EXPECT_EQ(broken.rest, R"(>"b" "c"=>"d")");
    EXPECT_EQ(reading<Map>(R"(1 "a" =>"b")").state, failed);
    EXPECT_EQ(reading<Map>(R"(1 "a")").state, failedAtEnd);
}

TEST(DataInFormatLists, TakesTheLastValueOfAKey) {
    EXPECT_EQ(read<Map>(R"(2 "a"=>"b" "a"=>"c")"), (Map{{"a", "c"}}));
}
