// Where a store in a file may lie.
#include "StoreFile.h"

namespace QOR::keystore::Testing {

namespace {

TEST(SqlitePath, TakesAPathInUtf8) {
    const Folder folder;

    EXPECT_EQ(whyNot(folder.file("\xc3\xa9t\xc3\xa9.db")), "");
    EXPECT_TRUE(std::filesystem::exists(folder.path / "\xc3\xa9t\xc3\xa9.db"));
}

TEST(SqlitePath, RefusesPathsThatCannotBeOpened) {
    const Folder folder;

    EXPECT_EQ(whyNot(folder.file("missing/store.db")), "unable to open database file");
    EXPECT_EQ(whyNot(folder.path.string()), "unable to open database file");
    EXPECT_EQ(openSqliteStore(folder.path.string()), nullptr) << "with nowhere to put the reason";
}

TEST(SqlitePath, IsNotEmpty) { EXPECT_EQ(whyNot(""), "the path is empty"); }

// Makes a folder the current one.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& path) {
        std::filesystem::current_path(path);
    }
    ~CurrentFolder() { std::filesystem::current_path(former); }

private:
    std::filesystem::path former = std::filesystem::current_path();
};

TEST(SqlitePath, MeansAFileWhateverSqliteTakesItFor) {
    const Folder folder;
    const CurrentFolder current(folder.path);
    for (const char* const name :
         {":memory:", ":other", "file:store.db", "file:store.db?mode=memory"}) {
        EXPECT_EQ(whyNot(name), "");
        EXPECT_TRUE(std::filesystem::exists(folder.path / name)) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path / "store.db"));
}

// Files on which several programs cannot work together, as on some network shares.
class LonelyFiles {
public:
    LonelyFiles() { sqlite3_vfs_register(sqlite3_vfs_find("unix-none"), 1); }
    ~LonelyFiles() { sqlite3_vfs_register(sqlite3_vfs_find("unix"), 1); }
};

TEST(SqlitePath, HasRoomForAWriteAheadLogBesideIt) {
    const Folder folder;
    const LonelyFiles files;

    EXPECT_EQ(whyNot(folder.file()), "no write-ahead log can be kept beside the file");
}

}  // namespace

}  // namespace QOR::keystore::Testing
