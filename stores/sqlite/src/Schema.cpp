#include "Schema.h"

#include <chrono>
#include <thread>

namespace QOR::keystore {

namespace {

constexpr std::int64_t storeMark = 0x514F524B;  // "QORK", by which such a file is known
constexpr std::int64_t version = 1;

// Names stand beside their folded form: that is what makes them unique, so that any tool can look
// into the file. Keys keep their number for ever; the session makes sure that none comes twice.
constexpr const char* schema =
    "CREATE TABLE session (number INTEGER NOT NULL);"
    "CREATE TABLE key ("
    " id INTEGER PRIMARY KEY,"
    " parent INTEGER REFERENCES key (id),"
    " name TEXT NOT NULL,"
    " folded TEXT NOT NULL,"
    " UNIQUE (parent, folded));"
    "CREATE TABLE value ("
    " key INTEGER NOT NULL REFERENCES key (id) ON DELETE CASCADE,"
    " folded TEXT NOT NULL,"
    " name TEXT NOT NULL,"
    " type INTEGER NOT NULL,"
    " data BLOB NOT NULL,"
    " PRIMARY KEY (key, folded)) WITHOUT ROWID;"
    "INSERT INTO key VALUES (1, NULL, '', '');"
    "INSERT INTO session VALUES (0);"
    "PRAGMA application_id = 0x514F524B;"
    "PRAGMA user_version = 1;";

std::string reason(const Database& database, int result) {
    switch (statusOf(result)) {
        case WriteProtected: return "the file cannot be written";
        case DiskFull: return "there is no room for the store";
        case BadStore: return "the file is no key store, or a damaged one";
        case Busy: return "another program keeps the store for itself";
        default: return database.lastError();
    }
}

// What a file is by its marks.
struct Marks {
    std::int64_t mark = 0;
    std::int64_t version = 0;
    std::int64_t numTables = 0;

    bool isNew() const { return mark == 0 && version == 0 && numTables == 0; }
};

int readMarks(const Database& database, Marks& marks) {
    int result = database.ask("PRAGMA application_id", marks.mark);
    if (result == SQLITE_OK) result = database.ask("PRAGMA user_version", marks.version);
    if (result == SQLITE_OK)
        result = database.ask("SELECT count(*) FROM sqlite_schema", marks.numTables);
    return result;
}

// All marks of one moment: another program may be making the store.
int readMarksAtOnce(const Database& database, Marks& marks) {
    int result = database.execute("BEGIN");
    if (result == SQLITE_OK) result = readMarks(database, marks);
    if (!database.isIdle()) database.execute("ROLLBACK");
    return result;
}

std::string checkMarks(const Marks& marks) {
    if (marks.isNew()) return {};
    if (marks.mark != storeMark) return "the file is no key store";
    if (marks.version > version)
        return "the key store has a newer form, " + std::to_string(marks.version) +
               "; this program knows form " + std::to_string(version);
    return {};
}

// Several programs may come to a new file at once, and this one step does not wait by itself.
// `isLogged` tells whether the place of the file allows what the store needs.
int setJournal(const Database& database, bool& isLogged) {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    for (;;) {
        const Statement statement = database.prepare("PRAGMA journal_mode = WAL");
        Run run(statement);
        const int result = run.step();
        if (result == SQLITE_ROW) {
            isLogged = run.text(0) == "wal";
            return SQLITE_OK;
        }
        if (statusOf(result) != Busy) return result;
        if (std::chrono::steady_clock::now() > deadline) return SQLITE_BUSY;
        std::this_thread::sleep_for(2ms);
    }
}

int makeTables(const Database& database) {
    Marks marks;
    const int result = readMarks(database, marks);
    // Another program may have been faster.
    return result == SQLITE_OK && marks.isNew() ? database.execute(schema) : result;
}

}  // namespace

std::string prepareStore(const Database& database, std::int64_t& session) {
    Marks marks;
    if (const int result = readMarksAtOnce(database, marks); result != SQLITE_OK)
        return reason(database, result);
    if (auto wrong = checkMarks(marks); !wrong.empty()) return wrong;
    if (database.isReadOnly()) return "the file cannot be written";

    bool isLogged = false;
    int result = setJournal(database, isLogged);
    if (result == SQLITE_OK && !isLogged) return "no write-ahead log can be kept beside the file";
    if (result == SQLITE_OK)
        result = database.execute(
            "PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON;"
            // In kB: a transaction of some 50,000 values stays in memory.
            "PRAGMA cache_size = -16000");
    if (result == SQLITE_OK) result = database.execute("BEGIN IMMEDIATE");
    if (result == SQLITE_OK) result = makeTables(database);
    if (result == SQLITE_OK)
        result = database.ask("UPDATE session SET number = number + 1 RETURNING number", session);
    if (result == SQLITE_OK) result = database.execute("COMMIT");
    if (result == SQLITE_OK) return {};
    auto why = reason(database, result);
    if (!database.isIdle()) database.execute("ROLLBACK");
    return why;
}

}  // namespace QOR::keystore
