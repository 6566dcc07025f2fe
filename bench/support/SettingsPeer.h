// Settings in SQLite without a key store between: one row a value, statements kept prepared.
#pragma once

#include <sqlite3.h>

#include <stdexcept>
#include <string>

namespace bench {

/// What a program would write by hand for the one purpose.
class SettingsPeer {
public:
    enum Mode { ValueByValue, Grouped };

    SettingsPeer(const std::string& file, Mode mode) {
        if (sqlite3_open(file.c_str(), &database) != SQLITE_OK) throw std::runtime_error("sqlite");
        run(mode == ValueByValue ? "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL"
                                 : "PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL");
        run("CREATE TABLE IF NOT EXISTS v (g TEXT, n TEXT, v TEXT, PRIMARY KEY (g, n)) WITHOUT "
            "ROWID");
        insert = prepare("INSERT OR REPLACE INTO v VALUES (?, ?, ?)");
        select = prepare("SELECT v FROM v WHERE g = ? AND n = ?");
    }
    SettingsPeer(const SettingsPeer&) = delete;
    SettingsPeer& operator=(const SettingsPeer&) = delete;
    ~SettingsPeer() {
        sqlite3_finalize(insert);
        sqlite3_finalize(select);
        sqlite3_close(database);
    }

    void run(const char* sql) {
        if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(database));
    }
    void set(const std::string& group, const std::string& name, const std::string& value) {
        bind(insert, 1, group);
        bind(insert, 2, name);
        bind(insert, 3, value);
        if (sqlite3_step(insert) != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database));
        sqlite3_reset(insert);
    }
    std::string get(const std::string& group, const std::string& name) {
        bind(select, 1, group);
        bind(select, 2, name);
        std::string value;
        if (sqlite3_step(select) == SQLITE_ROW)
            value = reinterpret_cast<const char*>(sqlite3_column_text(select, 0));
        sqlite3_reset(select);
        return value;
    }

private:
    sqlite3_stmt* prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
        return statement;
    }
    static void bind(sqlite3_stmt* statement, int place, const std::string& text) {
        sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()),
                          SQLITE_STATIC);
    }

    sqlite3* database = nullptr;
    sqlite3_stmt* insert = nullptr;
    sqlite3_stmt* select = nullptr;
};

}  // namespace bench
