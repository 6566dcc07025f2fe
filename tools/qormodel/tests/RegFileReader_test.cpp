#include "store/RegFile.h"

#include "store/StoreText.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;
using namespace qormodel::testing;

namespace {

using Kind = RegStep::Kind;
using Bytes = std::vector<unsigned char>;

const std::string head = "Windows Registry Editor Version 5.00\r\n\r\n";

std::vector<RegStep> read(const std::string& content) {
    const TemporaryFile file(content);
    return readRegFile(SourceFile(file.getName()));
}

// The one value of a file with one key.
RegStep readValue(const std::string& line) {
    const auto steps = read(head + "[K]\r\n" + line + "\r\n");
    EXPECT_EQ(steps.size(), 2u);
    return steps.back();
}

// The message behind the name of the file.
std::string failureOf(const std::string& content) {
    const TemporaryFile file(content);
    try {
        readRegFile(SourceFile(file.getName()));
    } catch (const Failure& failure) {
        return std::string(failure.what()).substr(file.getName().size() + 1);
    }
    return "none";
}

std::string wideText(const std::string& ascii) {
    std::string bytes = "\xFF\xFE";
    for (const char each : ascii) bytes += each + std::string(1, '\0');
    return bytes;
}

}  // namespace

TEST(RegFileReader, TakesKeysValuesAndRemovalsInTheirOrder) {
    const auto steps = read(head +
                            "; a comment\r\n[A\\B]\r\n@=\"one\"\r\n\"x\"=\"two\" ; more\r\n"
                            "\"y\"=-\r\n\r\n[-A\\C]\r\n");

    ASSERT_EQ(steps.size(), 5u);
    EXPECT_EQ(steps[0].kind, Kind::MakeKey);
    EXPECT_EQ(steps[0].key, L"A\\B");
    EXPECT_EQ(steps[0].line, 4u);
    EXPECT_EQ(steps[1].kind, Kind::SetValue);
    EXPECT_EQ(steps[1].name, L"");
    EXPECT_EQ(inqText(steps[1].value), L"one");
    EXPECT_EQ(steps[2].name, L"x");
    EXPECT_EQ(inqText(steps[2].value), L"two");
    EXPECT_EQ(steps[3].kind, Kind::RemoveValue);
    EXPECT_EQ(steps[3].name, L"y");
    EXPECT_EQ(steps[4].kind, Kind::RemoveKey);
    EXPECT_EQ(steps[4].key, L"A\\C");
    EXPECT_EQ(steps[4].line, 9u);
}

TEST(RegFileReader, StoresATextWithItsTerminator) {
    const auto step = readValue("\"x\"=\"ab\"");

    EXPECT_EQ(step.value.type, keystore::TypeText);
    EXPECT_EQ(step.value.data, (Bytes{'a', 0, 'b', 0, 0, 0}));
}

TEST(RegFileReader, TakesTheFormsOfValues) {
    const struct {
        std::string line;
        unsigned long type;
        Bytes data;
    } rows[]{{"\"x\"=dword:1f", 4, {0x1f, 0, 0, 0}},
             {"\"x\"=dword:FFEEDDCC", 4, {0xcc, 0xdd, 0xee, 0xff}},
             {"\"x\"=hex:", 3, {}},
             {"\"x\"=hex:00,a,Ff", 3, {0, 0x0a, 0xff}},
             {"\"x\"=hex(2):41,00,00,00", 2, {0x41, 0, 0, 0}},
             {"\"x\"=hex(7):41,00,00,00,00,00", 7, {0x41, 0, 0, 0, 0, 0}},
             {"\"x\"=hex(b):01,00,00,00,00,00,00,80", 11, {1, 0, 0, 0, 0, 0, 0, 0x80}},
             {"\"x\"=hex(0):01", 0, {1}},
             {"\"x\"=hex(ffff0001):01", 0xffff0001, {1}},
             {"\"x\"=hex:01,\\\r\n  02,\\\r\n  03", 3, {1, 2, 3}},
             {"\"x\"=hex:\\\r\n  02", 3, {2}},
             {" \"x\" = hex:01, 02 \t", 3, {1, 2}}};
    for (const auto& row : rows) {
        const auto step = readValue(row.line);
        EXPECT_EQ(step.value.type, row.type) << row.line;
        EXPECT_EQ(step.value.data, row.data) << row.line;
    }
}

TEST(RegFileReader, TakesEscapesInNamesAndTexts) {
    const auto step = readValue(R"("a\"b\\c"="C:\\x \"y\"\r\nz")");

    EXPECT_EQ(step.name, L"a\"b\\c");
    EXPECT_EQ(inqText(step.value), L"C:\\x \"y\"\r\nz");
}

TEST(RegFileReader, TakesATextOfSeveralLines) {
    const auto steps = read(head + "[K]\r\n\"x\"=\"one\r\ntwo\"\r\n\"y\"=\"z\"\r\n");

    ASSERT_EQ(steps.size(), 3u);
    EXPECT_EQ(inqText(steps[1].value), L"one\r\ntwo");
    EXPECT_EQ(steps[2].line, 6u);
}

TEST(RegFileReader, EndsAKeyAtTheLastBracketOfItsLine) {
    EXPECT_EQ(read(head + "[A\\[odd] key]\r\n").front().key, L"A\\[odd] key");
}

TEST(RegFileReader, TakesUtf16WithItsMark) {
    std::string content = wideText(head + "[K]\r\n\"x\"=\"");
    content += std::string("\xAC\x20\x3D\xD8\x00\xDE", 6);  // a euro sign and a pair of surrogates
    content += wideText("\"\r\n").substr(2);

    const auto steps = read(content);

    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(steps[1].value.data, (Bytes{0xAC, 0x20, 0x3D, 0xD8, 0x00, 0xDE, 0, 0}));
}

TEST(RegFileReader, TakesUtf8WhereThereIsNoMark) {
    for (const std::string mark : {"", "\xEF\xBB\xBF"}) {
        const auto steps = read(mark + head + "[K]\n\"x\"=\"Zo\xC3\xAB\"\n");
        ASSERT_EQ(steps.size(), 2u);
        EXPECT_EQ(inqText(steps[1].value), L"Zo\u00EB");
    }
}

TEST(RegFileReader, TakesTheOlderFormInItsCodePage) {
    const auto steps = read(
        "REGEDIT4\r\n\r\n[K]\r\n\"x\"=\"\x80 \xEB\"\r\n"
        "\"y\"=hex(2):80,00\r\n\"z\"=hex:80,00\r\n");

    ASSERT_EQ(steps.size(), 4u);
    EXPECT_EQ(inqText(steps[1].value), L"\u20AC \u00EB");
    EXPECT_EQ(steps[2].value.data, (Bytes{0xAC, 0x20, 0, 0}));
    EXPECT_EQ(steps[3].value.data, (Bytes{0x80, 0}));
}

TEST(RegFileReader, NeedsNoLineEndAtItsEnd) {
    EXPECT_EQ(inqText(read(head + "[K]\r\n@=\"x\"").back().value), L"x");
    EXPECT_EQ(read(head).size(), 0u);
}

TEST(RegFileReader, TellsLineAndWhatWasExpected) {
    const struct {
        std::string content;
        std::string message;
    } rows[]{
        {"", "1: is no registry file: expected Windows Registry Editor Version 5.00 or REGEDIT4"},
        {"Windows Registry Editor Version 5.001\r\n",
         "1: something follows that does not belong there: expected the end of the line"},
        {head + "@=\"x\"\r\n", "3: a value stands ahead of any key: expected a key in brackets"},
        {head + "[-K]\r\n@=\"x\"\r\n",
         "4: a value stands behind a removed key: expected a key in brackets"},
        {head + "[K\r\n", "3: the key has no end: expected ]"},
        {head + "[]\r\n", "3: expected the path of a key, with \\ between its names"},
        {head + "[\\K]\r\n", "3: expected the path of a key, with \\ between its names"},
        {head + "[A\\" + std::string(256, 'x') + "]\r\n",
         "3: the name of a key is too long: expected 255 characters at most"},
        {head + "[K] x\r\n",
         "3: something follows that does not belong there: expected the end of the line"},
        {head + "[K]\r\nx=1\r\n",
         "4: expected a key in brackets, a value name in quotes, @ or a comment behind ;"},
        {head + "[K]\r\n\"x\r\n\"y\"=-\r\n", "4: the text in quotes has no end: expected \""},
        {head + "[K]\r\n\"x\"=\"y\r\n\r\n", "4: the text in quotes has no end: expected \""},
        {head + "[K]\r\n\"x\"=\"y\r\n\"z\"=\"a\"\r\n",
         "4: something follows that does not belong there: expected the end of the line"},
        {head + "[K]\r\n\"x\"\r\n", "4: expected = behind the name of the value"},
        {head + "[K]\r\n\"x\"=\r\n", "4: expected a text in quotes, dword:, hex:, hex(TYPE): or -"},
        {head + "[K]\r\n\"x\"=\"\\t\"\r\n",
         "4: a backslash begins nothing known: expected \\\\, \\\", \\n or \\r"},
        {head + "[K]\r\n\"x\"=dword:\r\n",
         "4: expected one to eight hexadecimal digits behind dword:"},
        {head + "[K]\r\n\"x\"=dword:123456789\r\n",
         "4: expected one to eight hexadecimal digits behind dword:"},
        {head + "[K]\r\n\"x\"=dword:12g\r\n",
         "4: something follows that does not belong there: expected the end of the line"},
        {head + "[K]\r\n\"x\"=hex(:00\r\n",
         "4: expected the type in hexadecimal digits and ): behind hex("},
        {head + "[K]\r\n\"x\"=hex:zz\r\n",
         "4: expected two hexadecimal digits for each byte, with commas between them"},
        {head + "[K]\r\n\"x\"=hex(2):00 01\r\n",
         "4: expected two hexadecimal digits for each byte, with commas between them"},
        {head + "[K]\r\n\"x\"=hex:00,\r\n", "4: expected two hexadecimal digits behind the comma"},
        {head + "[K]\r\n\"x\"=hex:00,\\\r\n01,zz\r\n",
         "5: expected two hexadecimal digits behind the comma"},
        {head + "[K]\r\n\"x\"=hex:00,\\",
         "4: expected the end of the line behind the backslash, and more bytes below"},
        {head + "[K]\r\n\"x\"=\"\xFF\"\r\n",
         "4: there is a byte that is no UTF-8: expected UTF-8 or UTF-16 with a byte order mark"},
        {wideText(head) + "x", "3: the file ends within a character: expected two bytes for each"}};
    for (const auto& row : rows) EXPECT_EQ(failureOf(row.content), row.message) << row.content;
}

TEST(RegFileReader, KnowsItsFilesByTheirFirstLine) {
    const auto isReg = [](const std::string& content) {
        const TemporaryFile file(content);
        return isRegFile(SourceFile(file.getName()));
    };

    EXPECT_TRUE(isReg(head));
    EXPECT_TRUE(isReg(wideText(head)));
    EXPECT_TRUE(isReg("\xEF\xBB\xBF" + head));
    EXPECT_TRUE(isReg("REGEDIT4\n"));
    EXPECT_FALSE(isReg("\"Test\"\n\"kVLib\" 9.1.0.0\n"));
    EXPECT_FALSE(isReg(""));
}
