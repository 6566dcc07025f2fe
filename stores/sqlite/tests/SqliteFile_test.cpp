#include "StoreFile.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

namespace QOR::keystore::Testing {

namespace {

constexpr int storeMark = 0x514F524B;

TEST(SqliteFile, KeepsWhatWasStored) {
    const Folder folder;
    {
        const auto store = openSqliteStore(folder.file());
        ASSERT_TRUE(store);
        setNumber(store->root(), L"Settings\\Gain", L"Value", 25);
    }
    const auto store = openSqliteStore(folder.file());

    EXPECT_EQ(numberAt(store->root(), L"settings\\gain", L"VALUE"), 25);
    EXPECT_EQ(subkeysOf(store->root()), Names{L"Settings"});
}

TEST(SqliteFile, IsADatabaseWithMarksAndAVersion) {
    const Folder folder;
    setNumber(openSqliteStore(folder.file())->root(), L"A", L"Gain", 25);

    EXPECT_EQ(runSql(folder.file(), "PRAGMA application_id"), std::to_string(storeMark));
    EXPECT_EQ(runSql(folder.file(), "PRAGMA user_version"), "1");
    EXPECT_EQ(runSql(folder.file(), "PRAGMA journal_mode"), "wal");
    EXPECT_EQ(runSql(folder.file(), "SELECT name || type || data FROM value"), "Gain325");
}

TEST(SqliteFile, LetsNobodyStoreTwoNamesThatDifferInCase) {
    const Folder folder;
    setNumber(openSqliteStore(folder.file())->root(), L"A", L"Gain", 25);

    EXPECT_TRUE(
        runSql(folder.file(), "INSERT INTO key VALUES (7, 1, 'a', 'A')").starts_with("error"));
    EXPECT_TRUE(
        runSql(folder.file(), "INSERT INTO value SELECT key, 'GAIN', 'gain', 3, '' FROM value")
            .starts_with("error"));
}

TEST(SqliteFile, TakesAnEmptyFileForANewStore) {
    const Folder folder;
    writeFile(folder.file(), "");

    EXPECT_EQ(whyNot(folder.file()), "");
    EXPECT_EQ(runSql(folder.file(), "PRAGMA user_version"), "1");
}

TEST(SqliteFile, RefusesAFileThatIsNoStore) {
    const Folder folder;
    const std::string text =
        "Once upon a time there was a file that was no store, and long enough.";
    writeFile(folder.file(), text);

    EXPECT_EQ(whyNot(folder.file()), "the file is no key store, or a damaged one");
    EXPECT_EQ(contentOf(folder.file()), text);
}

TEST(SqliteFile, RefusesADatabaseOfAnotherProgramAndLeavesItAsItIs) {
    const Folder folder;
    runSql(folder.file(), "CREATE TABLE t (a); INSERT INTO t VALUES (1)");
    const std::string before = contentOf(folder.file());

    EXPECT_EQ(whyNot(folder.file()), "the file is no key store");
    EXPECT_TRUE(contentOf(folder.file()) == before);
    runSql(folder.file(), "DROP TABLE t; PRAGMA application_id = 77");
    EXPECT_EQ(whyNot(folder.file()), "the file is no key store");
}

TEST(SqliteFile, RefusesAStoreOfANewerForm) {
    const Folder folder;
    setNumber(openSqliteStore(folder.file())->root(), L"A", L"Gain", 25);
    runSql(folder.file(), "PRAGMA user_version = 2");

    EXPECT_EQ(whyNot(folder.file()),
              "the key store has a newer form, 2; this program knows form 1");
    EXPECT_EQ(runSql(folder.file(), "SELECT count(*) FROM value"), "1");
}

TEST(SqliteFile, RefusesAFileThatCannotBeWritten) {
    const Folder folder;
    setNumber(openSqliteStore(folder.file())->root(), L"A", L"Gain", 25);
    std::filesystem::permissions(folder.file(), std::filesystem::perms(0444));
    std::filesystem::permissions(folder.path, std::filesystem::perms(0555));

    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(65534) != 0) _exit(2);  // root may write everything
        _exit(whyNot(folder.file()) == "the file cannot be written" ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::filesystem::permissions(folder.path, std::filesystem::perms(0755));

    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(SqliteFile, AnswersOnADamagedFile) {
    const Folder folder;
    {
        const auto store = openSqliteStore(folder.file());
        Transaction transaction(*store);
        for (int i = 0; i < 2000; ++i)
            setNumber(store->root(), (L"A\\" + std::to_wstring(i)).c_str(), L"Gain", i);
        transaction.commit();
    }
    std::string content = contentOf(folder.file());
    ASSERT_GT(content.size(), 60000u);
    std::fill(content.begin() + 8192, content.end() - 4096, '\x5a');
    writeFile(folder.file(), content);

    std::string error;
    const auto store = openSqliteStore(folder.file(), &error);

    if (!store) {
        EXPECT_NE(error.find("damaged"), std::string::npos) << error;
        return;
    }
    Status worst = Success;
    for (int i = 0; i < 2000; ++i) {
        const auto path = L"A\\" + std::to_wstring(i);
        if (const Status status = createStatus(store->root(), path.c_str())) worst = status;
    }
    EXPECT_EQ(worst, BadStore);
}

TEST(SqliteFile, ShowsTheChangesOfOthers) {
    const Folder folder;
    const auto one = openSqliteStore(folder.file());
    const auto other = openSqliteStore(folder.file());
    setNumber(one->root(), L"A\\B", L"Gain", 25);
    EXPECT_EQ(numberAt(other->root(), L"A\\B", L"Gain"), 25);

    // A path that one of the two remembers leads to the key of today.
    ASSERT_EQ(RegDeleteTreeW(one->root(), L"A"), Success);
    EXPECT_EQ(openStatus(other->root(), L"A\\B"), FileNotFound);
    setNumber(one->root(), L"A\\B", L"Gain", 26);
    EXPECT_EQ(numberAt(other->root(), L"A\\B", L"Gain"), 26);
}

TEST(SqliteFile, AnswersOnAKeyThatAnotherDeleted) {
    const Folder folder;
    const auto one = openSqliteStore(folder.file());
    const auto other = openSqliteStore(folder.file());
    const Handle key = created(one->root(), L"A");
    ASSERT_EQ(RegDeleteKeyW(other->root(), L"A"), Success);
    setNumber(other->root(), L"A", L"Gain", 25);

    EXPECT_EQ(query(key, L"Gain").status, KeyDeleted);
    EXPECT_EQ(setBytes(key, L"Gain", "26"), KeyDeleted);
    EXPECT_EQ(numberAt(one->root(), L"A", L"Gain"), 25);
}

TEST(SqliteFile, ListsOnWhenAnotherRemovesWhatItStandsOn) {
    const Folder folder;
    const auto one = openSqliteStore(folder.file());
    const auto other = openSqliteStore(folder.file());
    for (const wchar_t* const name : {L"a", L"b", L"c"}) createStatus(one->root(), name);
    const auto nameAt = [&](unsigned long index) {
        wchar_t name[5] = L"-";
        unsigned long size = 5;
        RegEnumKeyExW(one->root(), index, name, &size, nullptr, nullptr, nullptr, nullptr);
        return std::wstring(name);
    };
    ASSERT_EQ(nameAt(1), L"b");
    RegDeleteKeyW(other->root(), L"b");

    EXPECT_EQ(nameAt(1), L"c");
    EXPECT_EQ(nameAt(0), L"a");
    EXPECT_EQ(nameAt(2), L"-");
}

TEST(SqliteFile, GivesUpWhenAnotherKeepsItLocked) {
    const Folder folder;
    const auto store = openSqliteStore(folder.file());
    createStatus(store->root(), L"A");
    sqlite3* other = nullptr;
    sqlite3_open(folder.file().c_str(), &other);
    sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);

    EXPECT_EQ(openStatus(store->root(), L"A"), Success) << "reading goes on";
    EXPECT_EQ(createStatus(store->root(), L"B"), Busy);

    sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_EQ(createStatus(store->root(), L"B"), Success);
}

TEST(SqliteFile, AnswersHandlesWhoseStoreIsGone) {
    const Folder folder;
    auto store = openSqliteStore(folder.file());
    const Handle key = created(store->root(), L"A");
    store.reset();

    EXPECT_EQ(setBytes(key, L"Gain", "1"), InvalidHandle);
}

}  // namespace

}  // namespace QOR::keystore::Testing
