// Files for stores, and a way to write and read them in few words.
#pragma once

#include <QOR/KeyStoreSqlite.h>

#include "StoreConformance.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace QOR::keystore::Testing {

/// A folder of its own for each test, which goes with it.
class Folder {
public:
    Folder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "qor_store_XXXXXX").string();
        path = mkdtemp(pattern.data());
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::string file(const std::string& name = "store.db") const { return (path / name).string(); }

    std::filesystem::path path;
};

inline std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void writeFile(const std::string& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

/// Why a file cannot be opened as a store, without its path; "" if it can.
inline std::string whyNot(const std::string& file) {
    std::string error;
    const auto store = openSqliteStore(file, &error);
    EXPECT_EQ(store == nullptr, !error.empty());
    if (error.starts_with(file + ": ")) error.erase(0, file.size() + 2);
    return error;
}

/// Runs SQL on a file by another way than the store's.
inline std::string runSql(const std::string& file, const std::string& sql) {
    sqlite3* database = nullptr;
    sqlite3_open(file.c_str(), &database);
    std::string answer;
    const auto append = [](void* text, int, char** values, char**) {
        *static_cast<std::string*>(text) += values[0] ? values[0] : "NULL";
        return 0;
    };
    char* error = nullptr;
    if (sqlite3_exec(database, sql.c_str(), append, &answer, &error) != SQLITE_OK)
        answer = std::string("error: ") + error;
    sqlite3_free(error);
    sqlite3_close(database);
    return answer;
}

inline Status setNumber(HKEY root, const wchar_t* path, const wchar_t* name, long number) {
    const Handle key = created(root, path);
    return key ? setBytes(key, name, std::to_string(number)) : StoreIoFailed;
}

/// A stored number; -1 for none.
inline long numberAt(HKEY root, const wchar_t* path, const wchar_t* name) {
    const Handle key = opened(root, path);
    const Answer answer = key ? query(key, name) : Answer{FileNotFound, "", 0, 0};
    return answer.status == Success ? std::stol(answer.bytes) : -1;
}

}  // namespace QOR::keystore::Testing
