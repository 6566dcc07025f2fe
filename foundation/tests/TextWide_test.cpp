#include <QOR/Text.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace QOR;

// One text in both forms: characters of one, two, three and four bytes.
const std::wstring wideText = L"a\u00e4\u20ac\U0001f600";
const std::string narrowText = "a\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80";

TEST(Narrow, WritesUtf8) {
    EXPECT_EQ(narrow(wideText, '_'), narrowText);
    EXPECT_EQ(narrow(L"", '_'), "");
    EXPECT_EQ(narrow(std::wstring(L"a\0b", 3), '_'), std::string("a\0b", 3));
}

TEST(Narrow, WritesTheLastCharacterOfEveryLength) {
    EXPECT_EQ(narrow(L"\x7f", '_'), "\x7f");
    EXPECT_EQ(narrow(L"\u07ff", '_'), "\xdf\xbf");
    EXPECT_EQ(narrow(L"\uffff", '_'), "\xef\xbf\xbf");
    EXPECT_EQ(narrow(L"\U0010ffff", '_'), "\xf4\x8f\xbf\xbf");
}

TEST(Narrow, JoinsAPairOfSurrogates) {
    const std::wstring pair{static_cast<wchar_t>(0xd83d), static_cast<wchar_t>(0xde00)};

    EXPECT_EQ(narrow(pair, '_'), "\xf0\x9f\x98\x80");
}

TEST(Narrow, PutsTheReplacementForWhatIsNoWideText) {
    const auto high = static_cast<wchar_t>(0xd83d);
    const auto low = static_cast<wchar_t>(0xde00);

    EXPECT_EQ(narrow({high}, '_'), "_");
    EXPECT_EQ(narrow({low}, '?'), "?");
    EXPECT_EQ(narrow({high, L'a'}, '_'), "_a");
    EXPECT_EQ(narrow({low, high}, '_'), "__");
    EXPECT_EQ(narrow({high, high, low}, '_'), "_\xf0\x9f\x98\x80");
    if constexpr (sizeof(wchar_t) > 2) {
        EXPECT_EQ(narrow({static_cast<wchar_t>(0x110000)}, '_'), "_");
        EXPECT_EQ(narrow({static_cast<wchar_t>(-1)}, '_'), "_");
    }
}

TEST(Wide, ReadsUtf8) {
    EXPECT_EQ(wide(narrowText), wideText);
    EXPECT_EQ(wide(""), L"");
    EXPECT_EQ(wide(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(wide("\xf4\x8f\xbf\xbf"), L"\U0010ffff");
}

TEST(Wide, PutsTheReplacementCharacterForWhatIsNoUtf8) {
    EXPECT_EQ(wide("a\x80z"), L"a\ufffdz");                            // a trailing byte alone
    EXPECT_EQ(wide("\xc3"), L"\ufffd");                                // cut off
    EXPECT_EQ(wide("\xe2\x82"), L"\ufffd\ufffd");                      // cut off later
    EXPECT_EQ(wide("\xc3z"), L"\ufffdz");                              // no trailing byte
    EXPECT_EQ(wide("\xc0\xaf"), L"\ufffd\ufffd");                      // longer than needed
    EXPECT_EQ(wide("\xe0\x80\xaf"), L"\ufffd\ufffd\ufffd");            // longer than needed
    EXPECT_EQ(wide("\xed\xa0\xbd"), L"\ufffd\ufffd\ufffd");            // a surrogate
    EXPECT_EQ(wide("\xf4\x90\x80\x80"), L"\ufffd\ufffd\ufffd\ufffd");  // beyond the last character
    EXPECT_EQ(wide("\xff\xfe"), L"\ufffd\ufffd");                      // no bytes of UTF-8
}

TEST(Wide, ComesBackFromNarrow) {
    for (char32_t i = 1; i < 0x110000; i += i < 0x3000 ? 1 : 257) {
        if (i >= 0xd800 && i <= 0xdfff) continue;
        std::wstring text;
        if (sizeof(wchar_t) > 2 || i < 0x10000) {
            text = {static_cast<wchar_t>(i)};
        } else {
            text = {static_cast<wchar_t>(0xd7c0 + (i >> 10)),
                    static_cast<wchar_t>(0xdc00 + (i & 0x3ff))};
        }
        ASSERT_EQ(wide(narrow(text, '\0')), text) << "character " << static_cast<unsigned>(i);
    }
}

TEST(WideOutput, WritesWideTextAsUtf8) {
    std::ostringstream stream;

    stream << "[" << wideText.c_str() << "]";

    EXPECT_EQ(stream.str(), "[" + narrowText + "]");
}

TEST(WideOutput, WritesAQuestionMarkForWhatIsNoWideText) {
    const std::wstring lone{static_cast<wchar_t>(0xd83d)};
    std::ostringstream stream;

    stream << lone.c_str();

    EXPECT_EQ(stream.str(), "?");
}

TEST(WideOutput, WritesNothingForNull) {
    std::ostringstream stream;
    const wchar_t* const none = nullptr;

    stream << none;

    EXPECT_EQ(stream.str(), "");
    EXPECT_TRUE(stream.good());
}

}  // namespace
