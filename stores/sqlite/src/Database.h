// A connection to SQLite and its statements.
#pragma once

#include <QOR/KeyStore.h>

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace QOR::keystore {

/// The status that stands for a result of SQLite.
Status statusOf(int result);

/// A prepared statement, which is used over and over.
class Statement {
public:
    Statement() = default;
    /// Stays empty where SQLite refuses the text.
    Statement(sqlite3* database, const char* sql);

    explicit operator bool() const { return handle != nullptr; }
    sqlite3_stmt* get() const { return handle.get(); }

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> handle;
};

/// One run of a statement, which ends with the scope. Texts and data that are bound must live as
/// long.
class Run {
public:
    explicit Run(const Statement& statement) : statement(statement.get()) {}
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() {
        if (statement) sqlite3_reset(statement);
    }

    Run& bind(std::int64_t number);
    Run& bind(std::string_view text);
    Run& bind(const unsigned char* data, std::size_t size);

    /// \return SQLITE_ROW, SQLITE_DONE, or the extended code of an error.
    int step();

    std::int64_t number(int column) const { return sqlite3_column_int64(statement, column); }
    std::string_view text(int column) const;
    const unsigned char* data(int column) const;
    std::size_t size(int column) const;

private:
    Run& note(int result);

    sqlite3_stmt* statement;
    int numBound = 0;
    int bound = SQLITE_OK;  // the first failure of a bind
};

/// An open file.
class Database {
public:
    /// \return SQLITE_OK or the extended code of an error.
    int open(const std::string& path);
    /// Runs statements that give nothing back.
    int execute(const char* sql) const;
    /// The first number that a statement gives.
    int ask(const char* sql, std::int64_t& answer) const;
    bool isReadOnly() const { return sqlite3_db_readonly(handle.get(), "main") == 1; }
    /// Whether no transaction is under way.
    bool isIdle() const { return sqlite3_get_autocommit(handle.get()) != 0; }
    /// SQLite's own handle on the file; null where it has none.
    sqlite3_file* file() const;
    int numChanged() const { return sqlite3_changes(handle.get()); }
    std::string lastError() const { return sqlite3_errmsg(handle.get()); }
    Statement prepare(const char* sql) const { return Statement(handle.get(), sql); }

private:
    struct Closer {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };
    std::unique_ptr<sqlite3, Closer> handle;
};

}  // namespace QOR::keystore
