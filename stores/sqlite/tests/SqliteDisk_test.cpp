// Disks that are full or broken, and whatever else SQLite may refuse.
#include "StoreFile.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <functional>

namespace QOR::keystore::Testing {

namespace {

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

// Puts a function in the place of the one by which SQLite writes.
class DiskCall {
public:
    using Write = ssize_t (*)(int, const void*, std::size_t, off_t);
    explicit DiskCall(Write write) { set(reinterpret_cast<sqlite3_syscall_ptr>(write)); }
    DiskCall(const DiskCall&) = delete;
    DiskCall& operator=(const DiskCall&) = delete;
    ~DiskCall() { set(nullptr); }

private:
    static void set(sqlite3_syscall_ptr call) {
        sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
        for (const char* const name : {"pwrite", "pwrite64"})
            system->xSetSystemCall(system, name, call);
    }
};

class SmallDisk {
public:
    explicit SmallDisk(long bytes) { room = bytes; }

private:
    DiskCall call{writeWhereThereIsRoom};
};

TEST(SqliteDisk, AnswersWhenTheDiskIsFullAndKeepsWhatItHad) {
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

TEST(SqliteDisk, UndoesATransactionForWhichTheDiskHasNoRoom) {
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

TEST(SqliteDisk, RefusesANewStoreOnAFullDisk) {
    const Folder folder;
    const SmallDisk disk(100);

    EXPECT_EQ(whyNot(folder.file()), "there is no room for the store");
}

// Does work on a prepared store on disks of every size, from those on which it fails to those with
// room for it; what it leaves is checked each time.
void onDisksOfAllSizes(const std::function<void(HKEY)>& prepare,
                       const std::function<Status(HKEY)>& work,
                       const std::function<void(HKEY, bool)>& check) {
    int numDone = 0, numRefused = 0;
    for (long bytes = 0; bytes <= 80'000; bytes += 4'000) {
        SCOPED_TRACE(bytes);
        const Folder folder;
        const auto store = openSqliteStore(folder.file());
        prepare(store->root());
        Status status;
        {
            const SmallDisk disk(bytes);
            status = work(store->root());
        }
        ++(status == Success ? numDone : numRefused);
        EXPECT_TRUE(status == Success || status == DiskFull) << status;
        check(store->root(), status == Success);
    }
    EXPECT_GT(numDone, 0);
    EXPECT_GT(numRefused, 0);
}

void storeTree(HKEY root) {
    setNumber(root, L"S\\A", L"Gain", 1);
    setNumber(root, L"S\\B", L"Gain", 2);
    createStatus(root, L"T");
}

TEST(SqliteDisk, HasRoomForAllLevelsOfAPathOrGetsNone) {
    onDisksOfAllSizes(
        storeTree, [](HKEY root) { return createStatus(root, L"A\\B\\C"); },
        [](HKEY root, bool isDone) {
            EXPECT_EQ(openStatus(root, L"A\\B\\C"), isDone ? Success : FileNotFound);
            EXPECT_EQ(openStatus(root, L"A"), isDone ? Success : FileNotFound);
        });
}

TEST(SqliteDisk, HasRoomForAWholeCopyOrGetsNone) {
    onDisksOfAllSizes(
        storeTree, [](HKEY root) { return RegCopyTreeW(root, L"S", opened(root, L"T")); },
        [](HKEY root, bool isDone) {
            EXPECT_EQ(subkeysOf(opened(root, L"T")), isDone ? (Names{L"A", L"B"}) : Names{});
        });
}

TEST(SqliteDisk, HasRoomToDeleteAWholeTreeOrKeepsIt) {
    onDisksOfAllSizes(
        storeTree, [](HKEY root) { return RegDeleteTreeW(root, L"S"); },
        [](HKEY root, bool isDone) {
            EXPECT_EQ(numberAt(root, L"S\\A", L"Gain"), isDone ? -1 : 1);
            EXPECT_EQ(numberAt(root, L"S\\B", L"Gain"), isDone ? -1 : 2);
        });
}

ssize_t breakWhileWriting(int, const void*, std::size_t, off_t) {
    errno = EIO;
    return -1;
}

TEST(SqliteDisk, AnswersWhenItBreaks) {
    const Folder folder;
    const auto store = openSqliteStore(folder.file());
    const Handle key = created(store->root(), L"A");
    {
        const DiskCall broken(breakWhileWriting);
        EXPECT_EQ(setBytes(key, L"Gain", "1"), StoreIoFailed);
    }
    EXPECT_EQ(setBytes(key, L"Gain", "1"), Success);
}

// The connection that SQLite opens while this lives.
class Connection {
public:
    Connection() { sqlite3_auto_extension(entry()); }
    ~Connection() { sqlite3_cancel_auto_extension(entry()); }

    sqlite3* get() const { return latest; }

private:
    using Entry = void (*)();
    static int remember(sqlite3* opened, char**, const void*) {
        latest = opened;
        return SQLITE_OK;
    }
    static Entry entry() { return reinterpret_cast<Entry>(remember); }
    static inline sqlite3* latest = nullptr;
};

TEST(SqliteDisk, AnswersWhenWritingIsNotAllowedAnyMore) {
    const Folder folder;
    const Connection connection;
    const auto store = openSqliteStore(folder.file());
    const Handle key = created(store->root(), L"A");
    setBytes(key, L"Gain", "1");
    sqlite3_exec(connection.get(), "PRAGMA query_only = ON", nullptr, nullptr, nullptr);

    EXPECT_EQ(setBytes(key, L"Gain", "2"), WriteProtected);
    EXPECT_EQ(createStatus(key, L"B"), WriteProtected);
    EXPECT_EQ(RegDeleteValueW(key, L"Gain"), WriteProtected);
    EXPECT_EQ(RegDeleteKeyW(key, L""), WriteProtected);
    EXPECT_EQ(query(key, L"Gain").bytes, "1");
}

TEST(SqliteDisk, AnswersOnDataThatIsLargerThanAnyValueMayBe) {
    const Folder folder;
    const Connection connection;
    const auto store = openSqliteStore(folder.file());
    const Handle key = created(store->root(), L"A");
    sqlite3_limit(connection.get(), SQLITE_LIMIT_LENGTH, 1000);

    EXPECT_EQ(setBytes(key, L"Gain", std::string(2000, 'x')), NotEnoughMemory);
    EXPECT_EQ(query(key, L"Gain").status, FileNotFound);
    EXPECT_EQ(setBytes(key, L"Gain", "1"), Success);
}

}  // namespace

}  // namespace QOR::keystore::Testing
