#include "store/RegFile.h"

#include "store/StoreText.h"
#include "support/RunProgram.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <string>

using namespace qormodel;
using namespace qormodel::testing;

namespace {

// A store in a file that goes with the test.
struct Store {
    Store() : file(""), store(file.getFolder().string() + "/s.db", WhenMissing::Make) {}

    void set(const std::wstring& key, const std::wstring& name, const StoredValue& value) const {
        StoreKey::make(store, key).setValue(name, value);
    }
    // The file without its mark, in one byte a character.
    std::string written(const std::wstring& key = L"K", RegForm form = RegForm::Version5) const {
        const std::string bytes = writeRegFile(store, key, key, form);
        if (form == RegForm::Version4) return bytes;
        EXPECT_TRUE(bytes.starts_with("\xFF\xFE"));
        return nameText(keystore::dataToText(
            reinterpret_cast<const unsigned char*>(bytes.data()) + 2, bytes.size() - 2));
    }
    void load(const std::string& content) const {
        const TemporaryFile reg(content);
        for (const auto& step : readRegFile(SourceFile(reg.getName()))) {
            const auto key = StoreKey::make(store, step.key);
            if (step.kind == RegStep::Kind::SetValue) key.setValue(step.name, step.value);
        }
    }

    TemporaryFile file;
    StoreFile store;
};

const std::string head = "Windows Registry Editor Version 5.00\r\n";

}  // namespace

TEST(RegFileWriter, WritesKeysAheadOfThoseBelowThem) {
    const Store store;
    StoreKey::make(store.store, L"K\\B\\C");
    store.set(L"K\\A", L"x", textValue(L"1"));
    store.set(L"K", L"", textValue(L"2"));

    EXPECT_EQ(store.written(), head + "\r\n[K]\r\n@=\"2\"\r\n\r\n[K\\A]\r\n\"x\"=\"1\"\r\n"
                                      "\r\n[K\\B]\r\n\r\n[K\\B\\C]\r\n\r\n");
}

TEST(RegFileWriter, WritesTheFormsOfValues) {
    const struct {
        StoredValue value;
        std::string text;
    } rows[]{{textValue(L"a\\b \"c\""), R"("a\\b \"c\"")"},
             {{1, {0x41, 0}}, "hex(1):41,00"},  // no terminator
             {{1, {}}, "hex(1):"},
             {textValue(L"a\nb"), "hex(1):61,00,0a,00,62,00,00,00"},
             {textValue(L"a", 2), "hex(2):61,00,00,00"},
             {textsValue({L"a", L"b"}), "hex(7):61,00,00,00,62,00,00,00,00,00"},
             {numberValue(0xABC, 4, 4), "dword:00000abc"},
             {{4, {1, 2}}, "hex(4):01,02"},
             {numberValue(1, 11, 8), "hex(b):01,00,00,00,00,00,00,00"},
             {{3, {1, 0xff}}, "hex:01,ff"},
             {{0, {}}, "hex(0):"}};
    for (const auto& row : rows) {
        const Store store;
        store.set(L"K", L"x", row.value);
        EXPECT_EQ(store.written(), head + "\r\n[K]\r\n\"x\"=" + row.text + "\r\n\r\n");
    }
}

TEST(RegFileWriter, WritesTheOlderFormInItsCodePage) {
    const Store store;
    store.set(L"K", L"\u00EB", textValue(L"\u20AC"));
    store.set(L"K", L"z", textValue(L"\u20AC", 2));

    EXPECT_EQ(store.written(L"K", RegForm::Version4),
              "REGEDIT4\r\n\r\n[K]\r\n\"z\"=hex(2):80,00\r\n\"\xEB\"=\"\x80\"\r\n\r\n");
}

TEST(RegFileWriter, RefusesWhatTheCodePageDoesNotHave) {
    const Store store;
    store.set(L"K", L"x", textValue(L"\u5B57"));
    EXPECT_THROW(store.written(L"K", RegForm::Version4), Failure);

    const Store expandable;
    expandable.set(L"K", L"x", textValue(L"\u5B57", 2));
    EXPECT_THROW(expandable.written(L"K", RegForm::Version4), Failure);
}

TEST(RegFileWriter, RefusesALineBreakInAKey) {
    const Store store;
    StoreKey::make(store.store, L"K\\a\nb");

    EXPECT_THROW(store.written(), Failure);
}

TEST(RegFileWriter, WritesAnotherPathInThePlaceOfTheKeys) {
    const Store store;
    StoreKey::make(store.store, L"K\\A");

    const std::string bytes = writeRegFile(store.store, L"K", L"HKEY_CURRENT_USER\\X",
                                           RegForm::Version4);

    EXPECT_EQ(bytes,
              "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\X]\r\n\r\n[HKEY_CURRENT_USER\\X\\A]\r\n\r\n");
}

// The only value that is not written as it was is one whose text has line breaks: not all editors
// take these in quotes.
TEST(RegFileWriter, WritesTheFileOfTheRegistryEditorAgain) {
    const std::string sample = contentOf(std::string(QORMODEL_TEST_DATA) + "/wine_regedit.reg");
    const Store store;
    store.load(sample);
    const std::wstring path = L"HKEY_CURRENT_USER\\Software\\QorSample";
    std::string expected = nameText(keystore::dataToText(
        reinterpret_cast<const unsigned char*>(sample.data()) + 2, sample.size() - 2));
    const std::string lines = "\"Lines\"=\"one\\r\\ntwottabbed\"\r\n";
    ASSERT_NE(expected.find(lines), std::string::npos);
    expected.erase(expected.find(lines), lines.size());
    EXPECT_EQ(inqText(*StoreKey::inq(store.store, path)->inqValue(L"Lines")),
              L"one\r\ntwottabbed");
    EXPECT_TRUE(StoreKey::inq(store.store, path)->rmValue(L"Lines"));

    EXPECT_EQ(store.written(path), expected);
}
