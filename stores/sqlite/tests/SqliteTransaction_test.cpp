#include "StoreFile.h"

#include <atomic>
#include <optional>
#include <thread>

namespace QOR::keystore::Testing {

namespace {

class SqliteTransaction : public testing::Test {
protected:
    Folder folder;
    std::shared_ptr<Store> store = openSqliteStore(folder.file());
    HKEY root = store->root();
};

TEST_F(SqliteTransaction, MakesItsOperationsLast) {
    Transaction transaction(*store);
    EXPECT_EQ(transaction.status(), Success);
    setNumber(root, L"A", L"Gain", 25);
    EXPECT_EQ(transaction.commit(), Success);

    EXPECT_EQ(numberAt(openSqliteStore(folder.file())->root(), L"A", L"Gain"), 25);
}

TEST_F(SqliteTransaction, IsUndoneWhenItGoesWithoutACommit) {
    setNumber(root, L"A", L"Gain", 25);
    {
        const Transaction transaction(*store);
        setNumber(root, L"A", L"Gain", 26);
        setNumber(root, L"A\\B", L"Gain", 27);
        RegDeleteValueW(opened(root, L"A"), L"Gain");
        EXPECT_EQ(numberAt(root, L"A\\B", L"Gain"), 27);
    }
    EXPECT_EQ(numberAt(root, L"A", L"Gain"), 25);
    EXPECT_EQ(openStatus(root, L"A\\B"), FileNotFound);
}

TEST_F(SqliteTransaction, ShowsNothingToOthersBeforeItsEnd) {
    const auto other = openSqliteStore(folder.file());
    Transaction transaction(*store);
    setNumber(root, L"A", L"Gain", 25);

    EXPECT_EQ(openStatus(other->root(), L"A"), FileNotFound);
    transaction.commit();
    EXPECT_EQ(openStatus(other->root(), L"A"), Success);
}

TEST_F(SqliteTransaction, Nests) {
    Transaction outer(*store);
    setNumber(root, L"A", L"Gain", 1);
    {
        const Transaction undone(*store);
        setNumber(root, L"A", L"Gain", 2);
    }
    {
        Transaction kept(*store);
        setNumber(root, L"B", L"Gain", 3);
        EXPECT_EQ(kept.commit(), Success);
    }
    EXPECT_EQ(outer.commit(), Success);

    EXPECT_EQ(numberAt(root, L"A", L"Gain"), 1);
    EXPECT_EQ(numberAt(root, L"B", L"Gain"), 3);
}

TEST_F(SqliteTransaction, UndoesInnerOnesThatWereCommitted) {
    {
        const Transaction outer(*store);
        Transaction inner(*store);
        setNumber(root, L"A", L"Gain", 1);
        inner.commit();
    }
    EXPECT_EQ(openStatus(root, L"A"), FileNotFound);
}

TEST_F(SqliteTransaction, LeavesHandlesOnUndoneKeysThatLeadNowhere) {
    Handle key;
    {
        const Transaction transaction(*store);
        key = created(root, L"A");
    }
    setNumber(root, L"Other", L"Gain", 25);

    EXPECT_EQ(query(key, L"Gain").status, KeyDeleted);
    EXPECT_EQ(setBytes(key, L"Gain", "1"), KeyDeleted);
}

TEST_F(SqliteTransaction, MakesOtherThreadsOfItsStoreWait) {
    std::atomic<bool> isOver = false;
    bool wasOver = false;
    std::thread other;
    {
        Transaction transaction(*store);
        other = std::thread([&] {
            createStatus(root, L"B");
            wasOver = isOver;
        });
        createStatus(root, L"A");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        isOver = true;
    }
    other.join();

    EXPECT_TRUE(wasOver);
    EXPECT_EQ(subkeysOf(root), Names{L"B"}) << "outside of what was undone";
}

TEST_F(SqliteTransaction, CommitsOnce) {
    Transaction transaction(*store);
    EXPECT_EQ(transaction.commit(), Success);
    EXPECT_EQ(transaction.commit(), Success);
    setNumber(root, L"A", L"Gain", 1);

    EXPECT_EQ(numberAt(root, L"A", L"Gain"), 1);
}

TEST_F(SqliteTransaction, CopiesATreeWhollyOrNotAtAll) {
    const Handle source = created(root, L"S\\1");
    setBytes(source, L"Gain", "1");
    setBytes(opened(root, L"S"), L"Gain", "1");
    createStatus(root, L"T");
    const Handle reading = opened(root, L"T", KeyRead);

    EXPECT_EQ(RegCopyTreeW(root, L"S", reading), AccessDenied);
    EXPECT_EQ(subkeysOf(reading), Names{});
}

TEST(MemoryTransaction, DoesNotBegin) {
    const auto store = makeMemoryStore();
    Transaction transaction(*store);

    EXPECT_EQ(transaction.status(), NotSupported);
    EXPECT_EQ(transaction.commit(), NotSupported);
}

}  // namespace

}  // namespace QOR::keystore::Testing
