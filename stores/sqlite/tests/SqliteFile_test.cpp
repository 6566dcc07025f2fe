#include "StoreFile.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <thread>

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

TEST(SqliteFile, TakesAPathInUtf8) {
    const Folder folder;

    EXPECT_EQ(whyNot(folder.file("\xc3\xa9t\xc3\xa9.db")), "");
    EXPECT_TRUE(std::filesystem::exists(folder.path / "\xc3\xa9t\xc3\xa9.db"));
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

TEST(SqliteFile, RefusesPathsThatCannotBeOpened) {
    const Folder folder;

    EXPECT_EQ(whyNot(folder.file("missing/store.db")), "unable to open database file");
    EXPECT_EQ(whyNot(folder.path.string()), "unable to open database file");
    EXPECT_EQ(openSqliteStore(folder.path.string()), nullptr) << "with nowhere to put the reason";
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

// A disk with room for a number of bytes more, as SQLite meets it.
std::atomic<long> room;

ssize_t writeWhereThereIsRoom(int file, const void* data, std::size_t size, off_t at) {
    if (room < static_cast<long>(size)) {
        errno = ENOSPC;
        return -1;
    }
    room -= static_cast<long>(size);
    return pwrite(file, data, size, at);
}

class SmallDisk {
public:
    explicit SmallDisk(long bytes) {
        room = bytes;
        for (const char* const call : {"pwrite", "pwrite64"})
            system->xSetSystemCall(system, call,
                                   reinterpret_cast<sqlite3_syscall_ptr>(writeWhereThereIsRoom));
    }
    ~SmallDisk() {
        for (const char* const call : {"pwrite", "pwrite64"})
            system->xSetSystemCall(system, call, nullptr);
    }

private:
    sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
};

TEST(SqliteFile, AnswersWhenTheDiskIsFullAndKeepsWhatItHad) {
    const Folder folder;
    const auto store = openSqliteStore(folder.file());
    setNumber(store->root(), L"A", L"Gain", 25);
    const Handle key = opened(store->root(), L"A");
    {
        const SmallDisk disk(200'000);
        Status status = Success;
        int numStored = 0;
        for (; status == Success && numStored < 1000; ++numStored)
            status = setBytes(key, std::to_wstring(numStored).c_str(), std::string(10'000, 'x'));
        EXPECT_EQ(status, DiskFull);
        EXPECT_GT(numStored, 5);
        EXPECT_EQ(valuesOf(key).size(), static_cast<std::size_t>(numStored))
            << "Gain and all but the last";
        EXPECT_EQ(numberAt(store->root(), L"A", L"Gain"), 25);
    }
    EXPECT_EQ(setBytes(key, L"Again", "1"), Success);
    EXPECT_EQ(runSql(folder.file(), "PRAGMA integrity_check"), "ok");
}

TEST(SqliteFile, UndoesATransactionForWhichTheDiskHasNoRoom) {
    const Folder folder;
    const auto store = openSqliteStore(folder.file());
    setNumber(store->root(), L"A", L"Gain", 25);
    {
        const SmallDisk disk(100'000);
        Transaction transaction(*store);
        setNumber(store->root(), L"A", L"Gain", 26);
        Status worst = Success;
        for (int i = 0; i < 2000; ++i) {
            const Handle key = created(store->root(), L"A\\B");
            const auto name = std::to_wstring(i);
            const Status status = setBytes(key, name.c_str(), std::string(10'000, 'x'));
            if (worst == Success) worst = status;
        }
        EXPECT_EQ(worst, DiskFull);
        EXPECT_NE(transaction.commit(), Success);
    }
    EXPECT_EQ(numberAt(store->root(), L"A", L"Gain"), 25);
    EXPECT_EQ(subkeysOf(opened(store->root(), L"A")), Names{});
    EXPECT_EQ(setNumber(store->root(), L"A", L"Gain", 27), Success);
}

TEST(SqliteFile, RefusesANewStoreOnAFullDisk) {
    const Folder folder;
    const SmallDisk disk(100);

    EXPECT_EQ(whyNot(folder.file()), "there is no room for the store");
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
