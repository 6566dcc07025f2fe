#include <QOR/StringText.h>

#include <gtest/gtest.h>

#include <cstdint>

// A caller of another namespace reaches the form of a uuid through the value itself. It stands
// before the directive below, which would bring the operators in.
namespace Elsewhere {

TEST(StringAppend, OfAUuidIsFoundFromAnyNamespace) {
    std::string text;

    text << QOR::uuids::uuid();

    EXPECT_EQ(text, "00000000-0000-0000-0000-000000000000");
}

}  // namespace Elsewhere

namespace {

using namespace QOR;

// Whether `text << value` compiles for a value of the type.
template <class T> concept Appendable = requires(std::string& text, const T& value) {
    text << value;
};

TEST(StringAppend, AppendsEveryKindInItsOwnForm) {
    std::string text = "[";
    const std::string word = "word";
    const char* const literal = "literal";

    text << 'c' << "," << literal << ',' << word << ',' << true << ',' << false << ']';

    EXPECT_EQ(text, "[c,literal,word,true,false]");
}

TEST(StringAppend, ReturnsTheStringItself) {
    std::string text;

    EXPECT_EQ(&(text << 'a'), &text);
    EXPECT_EQ(&(text << "a"), &text);
    EXPECT_EQ(&(text << text), &text);
    EXPECT_EQ(&(text << true), &text);
    EXPECT_EQ(&(text << uuids::uuid()), &text);
    EXPECT_EQ(&(text << JsonValue{}), &text);
    EXPECT_EQ(&(text << std::map<std::string, std::string>{}), &text);
}

TEST(StringAppend, AppendsATextToItself) {
    std::string text = "ab";

    text << text;

    EXPECT_EQ(text, "abab");
}

TEST(StringAppend, AppendsNothingForANullText) {
    std::string text = "a";
    const char* const none = nullptr;

    text << none;

    EXPECT_EQ(text, "a");
}

TEST(StringAppend, AppendsZeroBytesOfAString) {
    std::string text;

    text << std::string("a\0b", 3) << '\0';

    EXPECT_EQ(text, std::string("a\0b\0", 4));
}

TEST(StringAppend, AppendsTheTextualFormOfAUuid) {
    std::string text = "id ";

    text << uuids::uuid(uuids::uuid::Bytes{0xab, 0xcd});

    EXPECT_EQ(text, "id abcd0000-0000-0000-0000-000000000000");
}

TEST(StringAppend, AppendsTheTextOfAJsonValue) {
    std::string text = "json ";

    text << JsonValue{"{\"a\": [1, 2]}"};

    EXPECT_EQ(text, "json {\"a\": [1, 2]}");
}

TEST(StringAppend, AppendsAMapForPeopleToRead) {
    std::string text;

    text << std::map<std::string, std::string>{{"b", "2"}, {"a", "1"}} << ' '
         << std::map<std::string, std::string>{};

    EXPECT_EQ(text, "{a=1, b=2} {}");
}

TEST(StringAppend, DoesNotTakeNumbersOrPointersForCharactersOrTruthValues) {
    EXPECT_FALSE(Appendable<int>);
    EXPECT_FALSE(Appendable<std::uint64_t>);
    EXPECT_FALSE(Appendable<double>);
    EXPECT_FALSE(Appendable<signed char>);
    EXPECT_FALSE(Appendable<unsigned char>);
    EXPECT_FALSE(Appendable<const int*>);
    EXPECT_FALSE(Appendable<void*>);
    EXPECT_FALSE(Appendable<const wchar_t*>);
}

template <class T> struct Taken {
    T value;
    std::string rest;

    bool operator==(const Taken&) const = default;
};

template <class T> Taken<T> take(std::string text, T value) {
    text >> value;
    return {value, text};
}

TEST(StringTake, ReadsOneCharacter) {
    EXPECT_EQ(take<char>("abc", '?'), (Taken<char>{'a', "bc"}));
    EXPECT_EQ(take<char>("7", '?'), (Taken<char>{'7', ""}));
    EXPECT_EQ(take<char>(" \t.3", '?'), (Taken<char>{'.', "3"}));
}

TEST(StringTake, LeavesBothAloneWhereNoCharacterStands) {
    EXPECT_EQ(take<char>("", '?'), (Taken<char>{'?', ""}));
    EXPECT_EQ(take<char>("  ", '?'), (Taken<char>{'?', "  "}));
}

TEST(StringTake, ReadsAnEightBitIntegerAsANumberNotACharacter) {
    EXPECT_EQ(take<signed char>("65", 0), (Taken<signed char>{65, ""}));
    EXPECT_EQ(take<signed char>("-7 x", 0), (Taken<signed char>{-7, " x"}));
    EXPECT_EQ(take<unsigned char>("200", 0), (Taken<unsigned char>{200, ""}));
    EXPECT_EQ(take<unsigned char>("+5", 0), (Taken<unsigned char>{5, ""}));
}

TEST(StringTake, ClampsAnEightBitIntegerToItsRange) {
    EXPECT_EQ(take<signed char>("127", 0).value, 127);
    EXPECT_EQ(take<signed char>("128", 0).value, 127);
    EXPECT_EQ(take<signed char>("-128", 0).value, -128);
    EXPECT_EQ(take<signed char>("-129", 0).value, -128);
    EXPECT_EQ(take<unsigned char>("255", 0).value, 255);
    EXPECT_EQ(take<unsigned char>("256", 0).value, 255);
    EXPECT_EQ(take<unsigned char>("-1", 7).value, 0);
}

TEST(StringTake, ReadsAnInt) {
    EXPECT_EQ(take<int>("  12.7", 0), (Taken<int>{12, ".7"}));
    EXPECT_EQ(take<int>("-5", 0), (Taken<int>{-5, ""}));
    EXPECT_EQ(take<int>("007", 0), (Taken<int>{7, ""}));
    EXPECT_EQ(take<int>("2147483647", 0), (Taken<int>{2147483647, ""}));
    EXPECT_EQ(take<int>("-2147483648", 0).value, -2147483647 - 1);
}

TEST(StringTake, ClampsAnIntAndRemovesAllItsDigits) {
    EXPECT_EQ(take<int>("2147483648 x", 0), (Taken<int>{2147483647, " x"}));
    EXPECT_EQ(take<int>("-2147483649", 0).value, -2147483647 - 1);
    EXPECT_EQ(take<int>(std::string(100, '9') + "!", 0), (Taken<int>{2147483647, "!"}));
}

TEST(StringTake, LeavesBothAloneWhereNoNumberStands) {
    for (const std::string text : {"", "  ", "abc", "-", "+", "- 5", "--5", ".5", " x1"}) {
        EXPECT_EQ(take<int>(text, 42), (Taken<int>{42, text}));
        EXPECT_EQ(take<signed char>(text, 42), (Taken<signed char>{42, text}));
        EXPECT_EQ(take<unsigned char>(text, 42), (Taken<unsigned char>{42, text}));
    }
}

TEST(StringTake, ReadsOneValueAfterTheOther) {
    std::string text = "5.12 rest";
    int major = 0;
    char point = 0;
    int minor = 0;

    text >> major >> point >> minor;

    EXPECT_EQ(major, 5);
    EXPECT_EQ(point, '.');
    EXPECT_EQ(minor, 12);
    EXPECT_EQ(text, " rest");
}

}  // namespace
