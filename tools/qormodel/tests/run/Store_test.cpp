// The commands of the key store, as users run them.
#include "support/OnStore.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel::testing;

TEST_F(OnStore, SetsAndGetsValuesOfEachType) {
    const RunResult set = run({"set", "A\\B", "x=one two", "@=default", "=again"});
    EXPECT_EQ(set.status, 0) << set.err;
    EXPECT_EQ(set.out, "+ A\\B\\x = one two\n+ A\\B\\@ = default\n~ A\\B\\@: default -> again\n");
    EXPECT_EQ(run({"set", "A\\B", "d=0xff", "--type", "dword"}).status, 0);
    EXPECT_EQ(run({"set", "A\\B", "q=5", "--type", "qword"}).status, 0);
    EXPECT_EQ(run({"set", "A\\B", "b=01 ff", "--type", "binary"}).status, 0);
    EXPECT_EQ(run({"set", "A\\B", "m=a\nb", "--type", "multi"}).status, 0);

    EXPECT_EQ(run({"get", "A\\B", "x"}).out, "one two\n");
    EXPECT_EQ(run({"get", "A\\B", "@"}).out, "again\n");
    EXPECT_EQ(run({"get", "A\\B", ""}).out, "again\n");
    EXPECT_EQ(run({"get", "A\\B", "D"}).out, "255\n");
    EXPECT_EQ(run({"get", "A\\B", "m"}).out, "a\nb\n");
    EXPECT_EQ(run({"get", "a\\b"}).out,
              "@ = again\nb = 01 ff\nd = 255\nm = a\nb\nq = 5\nx = one two\n");
}

TEST_F(OnStore, KeepsTheTypeOfAValueThatIsThere) {
    run({"set", "K", "d=1", "--type", "dword"});

    EXPECT_EQ(run({"set", "K", "d=2"}).out, "~ K\\d: 1 -> 2\n");
    EXPECT_EQ(ask("SELECT type, hex(data) FROM value WHERE name = 'd'"), "4|02000000\n");
    const RunResult bad = run({"set", "K", "d=three", "e=1"});
    EXPECT_EQ(bad.status, 2);
    EXPECT_EQ(bad.out, "");
    EXPECT_EQ(run({"get", "K"}).out, "d = 2\n");
}

TEST_F(OnStore, ListsKeysAndValues) {
    run({"set", "A\\B", "x=1"});
    run({"set", "A", "y=2", "--type", "dword"});

    EXPECT_EQ(run({"ls"}).out, "A\\\n");
    EXPECT_EQ(run({"ls", "A"}).out, "y = 2 dword\nB\\\n");
    EXPECT_EQ(run({"ls", "-r"}).out, "A\\\nA\\y = 2 dword\nA\\B\\\nA\\B\\x = 1 text\n");
    EXPECT_EQ(run({"ls", "-r", "A"}).out, "y = 2 dword\nB\\\nB\\x = 1 text\n");
    EXPECT_EQ(run({"ls", "A", "--json"}).out, R"({
  "version": 1,
  "command": "store ls",
  "keys": [
    "A\\B"
  ],
  "values": [
    {
      "key": "A",
      "name": "y",
      "type": "dword",
      "value": 2
    }
  ]
}
)");
}

TEST_F(OnStore, TellsWhatIsNotThere) {
    run({"set", "A", "x=1"});

    EXPECT_EQ(run({"get", "A", "y"}).status, 0);
    const RunResult missing = run({"get", "-e", "A", "y"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(missing.err, "qormodel: s.db: A\\y: is not there\n");
    EXPECT_EQ(run({"get", "-e", "None"}).status, 1);
    EXPECT_EQ(run({"ls", "None"}).status, 2);
    EXPECT_EQ(run({"rm", "None"}).status, 2);
    EXPECT_EQ(run({"rm", "A", "y"}).status, 2);
    EXPECT_EQ(run({"export", "--key", "None", "-o", "x.reg"}).status, 2);
    EXPECT_EQ(run({"export", "--key", "None", "-o", "x.model"}).status, 2);
}

TEST_F(OnStore, RemovesValuesAndKeys) {
    run({"set", "A\\B", "x=1", "y=2"});

    EXPECT_EQ(run({"rm", "A\\B", "x"}).out, "- A\\B\\x\n");
    const RunResult refused = run({"rm", "A"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "qormodel: s.db: A: has keys below it; -r removes them too\n");
    EXPECT_EQ(run({"ls", "-r"}).out, "A\\\nA\\B\\\nA\\B\\y = 2 text\n");
    EXPECT_EQ(run({"rm", "-r", "A"}).out, "- A\n");
    EXPECT_EQ(run({"ls"}).out, "");
    EXPECT_EQ(run({"rm", "-r", ""}).status, 2);
}

TEST_F(OnStore, MakesNoFileWhereItOnlyReadsOrFails) {
    const std::vector<std::vector<std::string>> usages{{"ls"},
                                                       {"get", "A"},
                                                       {"rm", "A"},
                                                       {"export", "-o", "x.reg"},
                                                       {"set", "A", "x"},
                                                       {"set", "A", "x=y", "--type", "dword"},
                                                       {"set", "\\A", "x=y"},
                                                       {"import", "project.model"},
                                                       {"import", "none.model", "--key", "A"}};
    for (const auto& usage : usages) {
        const RunResult result = run(usage);
        EXPECT_EQ(result.status, 2) << usage[0];
        EXPECT_EQ(result.out, "") << usage[0];
        EXPECT_TRUE(result.err.starts_with("qormodel: ")) << result.err;
        EXPECT_FALSE(isThere("s.db")) << usage[0];
    }
}

TEST_F(OnStore, LeavesAloneWhatIsNoStore) {
    put("s.db", "some text of somebody's");

    const RunResult result = run({"set", "A", "x=1"});

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "qormodel: s.db: the file is no key store, or a damaged one\n");
    EXPECT_EQ(content("s.db"), "some text of somebody's");
}

TEST_F(OnStore, TakesItsFileAheadOfTheCommandAndBehindIt) {
    run({"set", "A", "x=1"});

    EXPECT_EQ(runQormodel({"store", "get", "A", "x", "--store=s.db"}, options).out, "1\n");
    const RunResult missing = runQormodel({"store", "ls"}, options);
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.err,
              "qormodel: --store is required\nqormodel: try 'qormodel store --help'\n");
}

TEST_F(OnStore, StoresWhatSqliteFindsInTheFile) {
    run({"set", "Viewer\\Window", "Position=4"});

    EXPECT_EQ(ask("SELECT child.name, value.name, value.type, hex(value.data) FROM value "
                  "JOIN key child ON child.id = value.key JOIN key parent ON "
                  "parent.id = child.parent WHERE parent.name = 'Viewer'"),
              "Window|Position|1|34000000\n");
    EXPECT_EQ(ask("PRAGMA integrity_check"), "ok\n");
}

TEST_F(OnStore, GetsWhatSqlitePutIntoTheFile) {
    run({"set", "Viewer", "x=1"});
    ask("INSERT INTO value SELECT id, 'NUMBER', 'Number', 4, x'0A000000' FROM key "
        "WHERE name = 'Viewer'");

    EXPECT_EQ(run({"get", "Viewer", "number"}).out, "10\n");
}

TEST_F(OnStore, BringsAModelInAndOutAsItWas) {
    const RunResult in = run({"import", "project.model", "--key", "P"});
    EXPECT_EQ(in.status, 0) << in.err;
    EXPECT_EQ(in.out, "4 keys, 24 values\n");
    EXPECT_EQ(in.err, "");
    EXPECT_EQ(ask("SELECT count(*) FROM key"), "5\n");
    EXPECT_EQ(ask("SELECT hex(data) FROM value WHERE name = 'Count' AND type = 2"), "32000000\n");

    const RunResult out = run({"export", "--key", "P", "-o", "out.model"});

    EXPECT_EQ(out.status, 0) << out.err;
    EXPECT_EQ(content("out.model"), content("project.model"));
    EXPECT_EQ(run({"export", "--key", "P", "-o", "-"}).out, content("project.model"));
}

TEST_F(OnStore, TellsOfRelationsThatAStoreDoesNotHold) {
    put("project.model", projectText);

    EXPECT_EQ(run({"import", "project.model", "--key", "P"}).err,
              "qormodel: project.model: /: 1 relation not taken over: a store holds values only\n");
}

TEST_F(OnStore, SetsTheValuesInAModelThatIsThere) {
    put("project.model", projectText);
    run({"import", "project.model", "--key", "P"});
    run({"set", "P\\Scans", "Count=7"});

    const RunResult result = run({"export", "--key", "P", "--into", "project.model"});

    EXPECT_EQ(result.status, 0) << result.err;
    std::string expected = projectText;
    expected.replace(expected.find("Value 2\n"), 8, "Value 7\n");
    EXPECT_EQ(content("project.model"), expected);
    EXPECT_EQ(content("project.model~"), projectText);
}

TEST_F(OnStore, BringsOneElementInAndOut) {
    EXPECT_EQ(run({"import", "project.model", "--key", "Box", "--path", "/Scans/Box"}).status, 0);
    EXPECT_EQ(run({"get", "Box", "Size"}).out, "2.5\n");
    run({"set", "Box", "Size=3.5"});

    const RunResult result =
        run({"export", "--key", "Box", "--into", "project.model", "--path", "/Scans/Box"});

    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(runQormodel({"get", "project.model", "/Scans/Box/Size"}, options).out, "3.5\n");
}

TEST_F(OnStore, RefusesToWriteAValueThatTheModelWouldRound) {
    run({"import", "project.model", "--key", "P"});
    run({"set", "P\\Scans\\Box", "Size=0.12345678901"});

    const RunResult refused = run({"export", "--key", "P", "-o", "out.model"});

    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("/Scans/Box/Size: \"0.12345678901\" would come back as"),
              std::string::npos)
        << refused.err;
    EXPECT_FALSE(isThere("out.model"));
    EXPECT_EQ(run({"export", "--key", "P", "-o", "out.model", "--force"}).status, 0);
}

TEST_F(OnStore, ImportsNothingWhereAValueWouldNotComeBack) {
    put("odd.model", valueModel("Attr<String>", "\"\xFF\""));

    const RunResult refused = run({"import", "odd.model", "--key", "P"});

    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_TRUE(refused.err.starts_with("qormodel: odd.model: /Tested: would not come back"))
        << refused.err;
    EXPECT_FALSE(isThere("s.db"));
    EXPECT_EQ(run({"import", "odd.model", "--key", "P", "--force"}).status, 0);
}

TEST_F(OnStore, LeavesWhatElseIsInTheKeyUnlessItIsReplaced) {
    run({"set", "P\\Other", "x=1"});

    run({"import", "project.model", "--key", "P"});
    EXPECT_EQ(run({"get", "P\\Other", "x"}).out, "1\n");
    run({"import", "project.model", "--key", "P", "--replace"});
    EXPECT_EQ(run({"ls", "P\\Other"}).status, 2);
    EXPECT_EQ(run({"get", "P\\Scans", "Count"}).out, "2\n");
}

TEST_F(OnStore, RefusesOptionsThatDoNotGoTogether) {
    run({"set", "A", "x=1"});
    const std::vector<std::vector<std::string>> usages{
        {"export", "--key", "A"},
        {"export", "--key", "A", "--into", "project.model", "--as", "reg"},
        {"export", "--key", "A", "-o", "x.model", "--path", "/Scans"},
        {"export", "--key", "A", "-o", "x.model", "--base", "B"},
        {"export", "--key", "A", "-o", "x.model", "--as", "prose"},
        {"import", "project.model", "--key", "A", "--base", "B"},
        {"import", "settings.reg", "--path", "/Scans"},
        {"dance"},
        {}};
    for (const auto& usage : usages) {
        const RunResult result = run(usage);
        EXPECT_EQ(result.status, 2) << (usage.empty() ? "nothing" : usage.back());
        EXPECT_EQ(result.out, "");
        EXPECT_FALSE(isThere("x.model"));
    }
}

TEST_F(OnStore, KeepsTheOldFileOfAnExport) {
    run({"import", "settings.reg"});
    put("out.reg", "old");

    run({"export", "-o", "out.reg", "--dry-run"});
    EXPECT_EQ(content("out.reg"), "old");
    run({"export", "-o", "out.reg"});
    EXPECT_EQ(content("out.reg~"), "old");
    EXPECT_NE(content("out.reg"), "old");
}

TEST_F(OnStore, PassesOverSeparatorsThatPartNothing) {
    EXPECT_EQ(run({"set", "A\\\\B\\", "x=1"}).out, "+ A\\B\\x = 1\n");
    EXPECT_EQ(run({"rm", "A\\B\\", "x"}).out, "- A\\B\\x\n");
    EXPECT_EQ(run({"set", "\\A", "x=1"}).status, 2);
}

TEST_F(OnStore, SetsAValueOfAnyName) {
    EXPECT_EQ(run({"set", "A", "--name", "a=b", "c=d"}).out, "+ A\\a=b = c=d\n");
    EXPECT_EQ(run({"set", "A", "--name", "C:\\x/y", "5", "--type", "dword"}).status, 0);
    EXPECT_EQ(run({"set", "A", "--name", "", "default"}).status, 0);

    EXPECT_EQ(run({"get", "A", "a=b"}).out, "c=d\n");
    EXPECT_EQ(run({"get", "A", "C:\\x/y"}).out, "5\n");
    EXPECT_EQ(run({"get", "A", "@"}).out, "default\n");
    EXPECT_EQ(ask("SELECT name FROM value WHERE type = 4"), "C:\\x/y\n");
    EXPECT_EQ(run({"set", "A", "--name", "a", "b", "c"}).status, 2);
    EXPECT_EQ(run({"set", "A", "--name", "a", "b", "--type", "qword"}).status, 2);
}
