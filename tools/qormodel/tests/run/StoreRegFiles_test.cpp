// Registry files that come into a key store and out of it.
#include "support/OnStore.h"

#include <gtest/gtest.h>

#include <string>

using namespace qormodel::testing;

TEST_F(OnStore, BringsRegistryFilesInAndOut) {
    const RunResult in = run({"import", "settings.reg"});
    EXPECT_EQ(in.status, 0) << in.err;
    EXPECT_EQ(in.out, "1 key, 2 values; 0 keys and 0 values removed\n");
    EXPECT_EQ(ask("SELECT name, type, hex(data) FROM value ORDER BY name"),
              "|1|64000000\nx|4|10000000\n");

    EXPECT_EQ(run({"export", "--key", "A\\B", "-o", "-", "--as", "reg4"}).out,
              "REGEDIT4\r\n\r\n[A\\B]\r\n@=\"d\"\r\n\"x\"=dword:00000010\r\n\r\n");
    EXPECT_EQ(run({"export", "-o", "out.reg"}).status, 0);
    EXPECT_TRUE(content("out.reg").starts_with("\xFF\xFEW"));
    EXPECT_EQ(run({"import", "out.reg", "--key", "Copy"}).status, 0);
    EXPECT_EQ(run({"get", "Copy\\A\\B", "x"}).out, "16\n");
}

TEST_F(OnStore, PutsKeysElsewhereByTheirBase) {
    EXPECT_EQ(run({"import", "settings.reg", "--base", "a", "--key", "Z"}).status, 0);
    EXPECT_EQ(run({"get", "Z\\B", "x"}).out, "16\n");
    EXPECT_EQ(run({"export", "--key", "Z\\B", "--base", "HKEY_CURRENT_USER\\X", "-o", "-", "--as",
                   "reg4"})
                  .out,
              "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\X]\r\n@=\"d\"\r\n\"x\"=dword:00000010\r\n\r\n");
    const RunResult outside = run({"import", "settings.reg", "--base", "B"});
    EXPECT_EQ(outside.status, 2);
    EXPECT_EQ(outside.err, "qormodel: settings.reg:3: the key A\\B is not below B\n");
}

TEST_F(OnStore, TakesTheFileOfTheRegistryEditor) {
    const std::string sample = std::string(QORMODEL_TEST_DATA) + "/wine_regedit.reg";

    EXPECT_EQ(run({"import", sample, "--base", "HKEY_CURRENT_USER\\Software\\QorSample"}).status,
              0);

    EXPECT_EQ(run({"get", "", "@"}).out, "the default\n");
    EXPECT_EQ(run({"get", "", "Text"}).out, "C:\\Data\\\"scan\" one\n");
    EXPECT_EQ(run({"get", "", "Umlaute"}).out, "Zoë, größer € 字\n");
    EXPECT_EQ(run({"get", "", "Empty"}).out, "\n");
    EXPECT_EQ(run({"get", "", "Path"}).out,
              "%HOME%\\models;C:\\more\\models\\that\\make\\the\\line\\a\\long\\one\n");
    EXPECT_EQ(run({"get", "", "List"}).out, "one\ntwo\nthree and more\n");
    EXPECT_EQ(run({"get", "", "Number"}).out, "4022250974\n");
    EXPECT_EQ(run({"get", "", "Large"}).out, "9223372036854775809\n");
    EXPECT_EQ(run({"get", "", "a \"quoted\\name"}).out, "named\n");
    EXPECT_EQ(run({"get", "Window\\[odd] key", "x"}).out, "y\n");
    EXPECT_EQ(run({"get", "Nothing"}).out, "@ = \n");
    EXPECT_EQ(ask("SELECT length(data) FROM value WHERE name = 'Bytes'"), "53\n");
    EXPECT_EQ(ask("SELECT type, hex(data) FROM value WHERE name = 'BigEndian'"), "5|12345678\n");
}

TEST_F(OnStore, ChangesNothingForABrokenRegistryFile) {
    run({"set", "A\\B", "x=1"});
    put("broken.reg", "REGEDIT4\n\n[-A]\n[C]\n\"y\"=\"z\"\n\"x\"=dword:12x\n");

    const RunResult result = run({"import", "broken.reg"});

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "qormodel: broken.reg:6: something follows that does not belong there: expected the "
              "end of the line\n");
    EXPECT_EQ(run({"ls", "-r"}).out, "A\\\nA\\B\\\nA\\B\\x = 1 text\n");
}

TEST_F(OnStore, UndoesAllWhereTheStoreRefusesOneStep) {
    run({"set", "A\\B", "x=1"});
    put("long.reg",
        "REGEDIT4\n\n[-A]\n[C]\n\"y\"=\"z\"\n\"" + std::string(17000, 'n') + "\"=\"\"\n");

    const RunResult result = run({"import", "long.reg"});

    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(result.err.starts_with("qormodel: long.reg:6: s.db: C\\nnn")) << result.err;
    EXPECT_EQ(run({"ls", "-r"}).out, "A\\\nA\\B\\\nA\\B\\x = 1 text\n");
}

TEST_F(OnStore, RemovesWhatARegistryFileSays) {
    run({"import", "settings.reg"});
    put("less.reg", "REGEDIT4\n\n[A\\B]\n@=-\n\"none\"=-\n[-A\\None]\n");

    EXPECT_EQ(run({"import", "less.reg"}).out, "1 key, 0 values; 0 keys and 1 value removed\n");
    EXPECT_EQ(run({"ls", "-r"}).out, "A\\\nA\\B\\\nA\\B\\x = 16 dword\n");
    put("all.reg", "REGEDIT4\n\n[-A]\n");
    EXPECT_EQ(run({"import", "all.reg"}).out, "0 keys, 0 values; 2 keys and 1 value removed\n");
}

TEST_F(OnStore, TakesNoNameFromARegistryFileUpToANul) {
    run({"set", "A\\B", "x=1"});
    const std::string head = "Windows Registry Editor Version 5.00\n";
    put("key.reg", head + "[-A\\B" + std::string(1, '\0') + "z]\n");
    put("value.reg", head + "[A\\B]\n\"x" + std::string(1, '\0') + "y\"=\"2\"\n");

    EXPECT_EQ(run({"import", "key.reg"}).err,
              "qormodel: key.reg:2: there is a NUL within a name: expected characters that names "
              "can have\n");
    EXPECT_EQ(run({"import", "value.reg"}).err,
              "qormodel: value.reg:3: there is a NUL within a name: expected characters that names "
              "can have\n");
    EXPECT_EQ(run({"ls", "-r"}).out, "A\\\nA\\B\\\nA\\B\\x = 1 text\n");
}

TEST_F(OnStore, TellsWhatARegistryFileWithoutItsHeadIs) {
    put("headless.reg", "[A]\n\"x\"=\"1\"\n");
    put("bare.REG", std::string("W\0i\0n\0", 6));
    put("bytes.reg", "\x80\n\xFF");
    put("empty.reg", "");

    for (const std::string name : {"headless.reg", "bare.REG", "bytes.reg", "empty.reg"})
        EXPECT_EQ(run({"import", name}).err,
                  "qormodel: " + name +
                      ":1: is no registry file: expected Windows Registry Editor "
                      "Version 5.00 or REGEDIT4\n");
    for (const std::string content : {"", "Windows Registre Editor\n"}) {
        options.input = content;
        EXPECT_EQ(run({"import", "-"}).err,
                  "qormodel: stdin: is no registry file: expected Windows Registry Editor "
                  "Version 5.00 or REGEDIT4 in its first line; a model file needs --key KEY, where "
                  "its tree comes\n");
    }
    EXPECT_FALSE(isThere("s.db"));
}

TEST_F(OnStore, KeepsAValueBeyondTheLimitOfOtherReadersWhole) {
    std::string text;
    for (int i = 0; i < 700; ++i) text += "\xC3\xA4";  // 700 characters, 1402 bytes in the store

    EXPECT_EQ(run({"set", "A", "long=" + text}).status, 0);

    EXPECT_EQ(ask("SELECT length(data) FROM value WHERE name = 'long'"), "1402\n");
    for (const char* const form : {"reg", "reg4"}) {
        EXPECT_EQ(run({"export", "-o", "long.reg", "--as", form}).status, 0);
        EXPECT_EQ(run({"rm", "-r", "A"}).status, 0);
        EXPECT_EQ(run({"import", "long.reg"}).status, 0);
        EXPECT_EQ(run({"get", "A", "long"}).out, text + '\n');
    }
}
