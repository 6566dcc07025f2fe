#include "Database.h"

namespace QOR::keystore {

namespace {

constexpr int patience = 10'000;  // milliseconds, for the locks of others

}  // namespace

Status statusOf(int result) {
    switch (result & 0xff) {
        case SQLITE_OK:
        case SQLITE_DONE:
        case SQLITE_ROW: return Success;
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return Busy;
        case SQLITE_READONLY:
        case SQLITE_PERM: return WriteProtected;
        case SQLITE_FULL: return DiskFull;
        case SQLITE_NOMEM:
        case SQLITE_TOOBIG: return NotEnoughMemory;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB: return BadStore;
        default: return StoreIoFailed;
    }
}

Statement::Statement(sqlite3* database, const char* sql) {
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    handle.reset(prepared);
}

Run& Run::bind(std::int64_t number) {
    return note(sqlite3_bind_int64(statement, ++numBound, number));
}

Run& Run::bind(std::string_view text) {
    // A null pointer would be bound as no text at all.
    const char* const data = text.empty() ? "" : text.data();
    return note(
        sqlite3_bind_text64(statement, ++numBound, data, text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

Run& Run::bind(const unsigned char* data, std::size_t size) {
    if (size == 0) return note(sqlite3_bind_zeroblob(statement, ++numBound, 0));
    return note(sqlite3_bind_blob64(statement, ++numBound, data, size, SQLITE_STATIC));
}

Run& Run::note(int result) {
    if (bound == SQLITE_OK) bound = result;
    return *this;
}

int Run::step() {
    if (!statement) return SQLITE_ERROR;
    // Else the statement would run with what was bound before.
    if (bound != SQLITE_OK) return bound;
    const int result = sqlite3_step(statement);
    if (result == SQLITE_ROW || result == SQLITE_DONE) return result;
    return sqlite3_extended_errcode(sqlite3_db_handle(statement));
}

std::string_view Run::text(int column) const {
    const auto* const text = sqlite3_column_text(statement, column);
    return {reinterpret_cast<const char*>(text), size(column)};
}

const unsigned char* Run::data(int column) const {
    return static_cast<const unsigned char*>(sqlite3_column_blob(statement, column));
}

std::size_t Run::size(int column) const {
    return static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
}

int Database::open(const std::string& path) {
    sqlite3* opened = nullptr;
    // The store has a lock of its own around every operation.
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    handle.reset(opened);
    if (!opened || result != SQLITE_OK) return opened ? sqlite3_extended_errcode(opened) : result;
    return sqlite3_busy_timeout(opened, patience);
}

sqlite3_file* Database::file() const {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return file;
}

int Database::execute(const char* sql) const {
    const int result = sqlite3_exec(handle.get(), sql, nullptr, nullptr, nullptr);
    return result == SQLITE_OK ? result : sqlite3_extended_errcode(handle.get());
}

int Database::ask(const char* sql, std::int64_t& answer) const {
    const Statement statement = prepare(sql);
    if (!statement) return sqlite3_extended_errcode(handle.get());
    Run run(statement);
    const int result = run.step();
    if (result == SQLITE_ROW) answer = run.number(0);
    return result == SQLITE_ROW ? SQLITE_OK : result;
}

}  // namespace QOR::keystore
