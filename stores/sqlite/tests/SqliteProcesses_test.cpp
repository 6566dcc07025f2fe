// Several programs on one file, and programs that end at any moment.
#include "StoreFile.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <random>

namespace QOR::keystore::Testing {

namespace {

// A number that parent and children share.
class SharedNumber {
public:
    SharedNumber()
        : memory(mmap(nullptr, sizeof(Number), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                      -1, 0)),
          number(*new (memory) Number(0)) {}
    ~SharedNumber() { munmap(memory, sizeof(Number)); }

    using Number = std::atomic<long>;
    void* memory;
    Number& number;
};

pid_t runChild(const std::function<bool()>& job) {
    const pid_t child = fork();
    if (child == 0) _exit(job() ? 0 : 1);  // no test goes on twice
    return child;
}

bool endedWell(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Stores numbers that rise: one by itself, and pairs in one transaction with a tree that comes and
// goes. Each is said to be stored only when it is.
bool writeForEver(const std::string& file, std::atomic<long>& stored) {
    const auto store = openSqliteStore(file);
    if (!store) return false;
    const HKEY root = store->root();
    for (long number = stored + 1;; ++number) {
        if (setNumber(root, L"Single", L"Number", number) != Success) return false;
        stored = number;
        Transaction transaction(*store);
        setNumber(root, L"Pair\\Left", L"Number", number);
        if (number % 2 == 0) RegDeleteTreeW(root, L"Tree");
        if (number % 2 == 1)
            for (const wchar_t* const path : {L"Tree\\A\\B", L"Tree\\A\\C", L"Tree\\D"})
                setNumber(root, path, L"Number", number);
        setNumber(root, L"Pair\\Right", L"Number", number);
        if (transaction.commit() != Success) return false;
    }
}

TEST(SqliteProcesses, LeaveAWholeStoreWhenTheyAreKilledAHundredTimes) {
    const Folder folder;
    SharedNumber stored;
    std::mt19937 random(20'240'607);
    std::uniform_int_distribution<int> microseconds(0, 25'000);
    for (int round = 0; round < 100; ++round) {
        const pid_t child = runChild([&] { return writeForEver(folder.file(), stored.number); });
        usleep(static_cast<useconds_t>(microseconds(random)));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "it gave up in round " << round;

        std::string error;
        const auto store = openSqliteStore(folder.file(), &error);
        ASSERT_TRUE(store) << error;
        const long single = numberAt(store->root(), L"Single", L"Number");
        const long left = numberAt(store->root(), L"Pair\\Left", L"Number");
        ASSERT_EQ(left, numberAt(store->root(), L"Pair\\Right", L"Number"));
        ASSERT_GE(single, stored.number == 0 ? -1 : stored.number.load())
            << "what was stored stays";
        ASSERT_LE(single, stored.number + 1);
        ASSERT_EQ(numberAt(store->root(), L"Tree\\A\\C", L"Number"), left % 2 == 1 ? left : -1);
        ASSERT_EQ(numberAt(store->root(), L"Tree\\D", L"Number"), left % 2 == 1 ? left : -1);
        ASSERT_EQ(runSql(folder.file(), "PRAGMA integrity_check"), "ok");
        ASSERT_EQ(runSql(folder.file(), "PRAGMA foreign_key_check"), "");
        stored.number = std::max(single, stored.number.load());
    }
    EXPECT_GT(stored.number, 100) << "the programs had time to write";
}

TEST(SqliteProcesses, WriteToOneStoreTogetherWithNothingLost) {
    constexpr int numProcesses = 4;
    constexpr int numValues = 100;
    const Folder folder;
    std::vector<pid_t> children;
    for (int number = 0; number < numProcesses; ++number)
        children.push_back(runChild([&, number] {
            // The file is made by whoever comes first.
            const auto store = openSqliteStore(folder.file());
            if (!store) return false;
            const auto path = L"Own\\" + std::to_wstring(number);
            for (int i = 0; i < numValues; ++i) {
                const auto name = L"Value" + std::to_wstring(i);
                if (setNumber(store->root(), path.c_str(), name.c_str(), i) != Success)
                    return false;
                const auto shared = std::to_wstring(number) + L"_" + std::to_wstring(i);
                if (createStatus(store->root(), (L"Shared\\" + shared).c_str()) != Success)
                    return false;
                Transaction transaction(*store);
                const long count = numberAt(store->root(), L"Count", L"Number");
                setNumber(store->root(), L"Count", L"Number", count < 0 ? 1 : count + 1);
                if (transaction.commit() != Success) return false;
            }
            return true;
        }));
    for (const pid_t child : children) EXPECT_TRUE(endedWell(child));

    const auto store = openSqliteStore(folder.file());
    EXPECT_EQ(numberAt(store->root(), L"Count", L"Number"), numProcesses * numValues);
    EXPECT_EQ(subkeysOf(opened(store->root(), L"Shared")).size(),
              std::size_t{numProcesses * numValues});
    for (int number = 0; number < numProcesses; ++number) {
        const Handle own = opened(store->root(), (L"Own\\" + std::to_wstring(number)).c_str());
        EXPECT_EQ(valuesOf(own).size(), std::size_t{numValues});
        EXPECT_EQ(query(own, L"Value99").bytes, "99");
    }
    EXPECT_EQ(runSql(folder.file(), "PRAGMA integrity_check"), "ok");
}

// Of a program that goes on until it is killed: it must not outlive a parent that was killed
// itself.
bool isParentThere() { return getppid() != 1; }

// A program that is killed at the end of a test.
class Companion {
public:
    explicit Companion(const std::function<bool()>& job) : child(runChild(job)) {}
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;
    ~Companion() {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }

private:
    pid_t child;
};

// Ends a contest of two programs on a machine that gives them little time.
class Deadline {
public:
    bool isOver() const { return Clock::now() > end; }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point end = Clock::now() + std::chrono::seconds(20);
};

TEST(SqliteProcesses, MakeKeysWhileAnotherDeletesTheLevelsAboveThem) {
    const Folder folder;
    SharedNumber deleted;
    const Companion deletes([&] {
        const auto store = openSqliteStore(folder.file());
        while (isParentThere())
            if (RegDeleteTreeW(store->root(), L"A") == Success) ++deleted.number;
        return false;
    });
    const auto store = openSqliteStore(folder.file());
    const Deadline deadline;
    for (int i = 0; deleted.number < 200 && !deadline.isOver(); ++i) {
        const auto path = L"A\\B\\C\\" + std::to_wstring(i % 10);
        ASSERT_EQ(createStatus(store->root(), path.c_str()), Success);
    }

    EXPECT_GT(deleted.number, 0);
}

TEST(SqliteProcesses, CopyATreeAsItWasAtOneMoment) {
    const Folder folder;
    SharedNumber written;
    const auto writePair = [](Store& store, long number) {
        Transaction transaction(store);
        setNumber(store.root(), L"S\\Left", L"Number", number);
        setNumber(store.root(), L"S\\Right", L"Number", number);
        return transaction.commit() == Success;
    };
    writePair(*openSqliteStore(folder.file()), 0);
    const Companion writes([&] {
        const auto store = openSqliteStore(folder.file());
        while (isParentThere() && writePair(*store, written.number + 1)) ++written.number;
        return false;
    });
    const auto store = openSqliteStore(folder.file());
    const auto elsewhere = makeMemoryStore();
    const Handle target = created(store->root(), L"T");
    const Deadline deadline;
    while (written.number < 500 && !deadline.isOver()) {
        for (const HKEY to : {HKEY(target), elsewhere->root()}) {
            ASSERT_EQ(RegCopyTreeW(store->root(), L"S", to), Success);
            ASSERT_EQ(numberAt(to, L"Left", L"Number"), numberAt(to, L"Right", L"Number"));
        }
    }

    EXPECT_GT(written.number, 0);
}

}  // namespace

}  // namespace QOR::keystore::Testing
