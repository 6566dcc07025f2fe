// W4: SQLite, one row per value (group, name, value), prepared statements.
#include <sqlite3.h>

#include "settings/Settings.h"
using namespace bench;
namespace {
enum Mode { Full, WalNormal, OneTransaction };
template <Mode M> struct Sql {
    std::string path;
    sqlite3* db = nullptr;
    sqlite3_stmt *put = nullptr, *sel = nullptr;
    bool in = false;
    void exec(const char* q) {
        if (sqlite3_exec(db, q, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db));
    }
    void openDb() {
        if (sqlite3_open(path.c_str(), &db) != SQLITE_OK) throw std::runtime_error("sqlite");
        if (M == WalNormal) exec("pragma journal_mode=wal; pragma synchronous=normal");
        else exec("pragma journal_mode=delete; pragma synchronous=full");
        exec(
            "create table if not exists v(g text, n text, v text, primary key(g, n)) without "
            "rowid");
        sqlite3_prepare_v2(db, "insert or replace into v values(?,?,?)", -1, &put, nullptr);
        sqlite3_prepare_v2(db, "select v from v where g=? and n=?", -1, &sel, nullptr);
    }
    void closeDb() {
        sqlite3_finalize(put);
        sqlite3_finalize(sel);
        sqlite3_close(db);
    }
    explicit Sql(const std::string& dir) : path(dir + "/s.db") { openDb(); }
    ~Sql() { closeDb(); }
    void set(const std::string& g, const char* n, const std::string& v) {
        if (M == OneTransaction && !in) {
            exec("begin");
            in = true;
        }
        sqlite3_bind_text(put, 1, g.data(), int(g.size()), SQLITE_STATIC);
        sqlite3_bind_text(put, 2, n, -1, SQLITE_STATIC);
        sqlite3_bind_text(put, 3, v.data(), int(v.size()), SQLITE_STATIC);
        if (sqlite3_step(put) != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(db));
        sqlite3_reset(put);
    }
    void commit() {
        if (in) {
            exec("commit");
            in = false;
        }
    }
    void reopen() {
        closeDb();
        openDb();
    }
    std::string get(const std::string& g, const char* n) {
        sqlite3_bind_text(sel, 1, g.data(), int(g.size()), SQLITE_STATIC);
        sqlite3_bind_text(sel, 2, n, -1, SQLITE_STATIC);
        std::string r;
        if (sqlite3_step(sel) == SQLITE_ROW)
            r.assign(reinterpret_cast<const char*>(sqlite3_column_text(sel, 0)),
                     std::size_t(sqlite3_column_bytes(sel, 0)));
        sqlite3_reset(sel);
        return r;
    }
};
BENCH_PEER("W4", "sqlite_autocommit_full", Peer,
           [](Run& run) { settings::runAll<Sql<Full>>(run, 200); });
BENCH_PEER("W4", "sqlite_autocommit_wal_normal", Peer,
           [](Run& run) { settings::runAll<Sql<WalNormal>>(run); });
BENCH_PEER("W4", "sqlite_one_transaction", Peer,
           [](Run& run) { settings::runAll<Sql<OneTransaction>>(run); });
}  // namespace
