// W4: SQLite by hand, one row a value and prepared statements, in three ways to make it last.
#include "settings/Settings.h"

#include <sqlite3.h>

#include <memory>
#include <string>

#include "support/SettingsPeer.h"

namespace {

using bench::SettingsPeer;

enum class Way { Full, WriteAheadLog, OneTransaction };

template <Way Chosen> class Table {
public:
    explicit Table(const std::string& directory) : file(directory + "/settings.db") { reopen(); }
    void set(const std::string& group, const char* name, const std::string& value) {
        if (Chosen == Way::OneTransaction && !isInTransaction) peer->run("BEGIN");
        isInTransaction = true;
        peer->set(group, name, value);
    }
    void commit() {
        if (Chosen == Way::OneTransaction && isInTransaction) peer->run("COMMIT");
        isInTransaction = false;
    }
    void reopen() {
        peer.reset();
        peer = std::make_unique<SettingsPeer>(file, Chosen == Way::WriteAheadLog
                                                        ? SettingsPeer::ValueByValue
                                                        : SettingsPeer::Grouped);
    }
    std::string get(const std::string& group, const char* name) { return peer->get(group, name); }

private:
    std::string file;
    std::unique_ptr<SettingsPeer> peer;
    bool isInTransaction = false;
};

BENCH_PEER("W4", "sqlite_autocommit_full", Peer,
           [](bench::Run& run) { bench::settings::runAll<Table<Way::Full>>(run, 200); });
BENCH_PEER("W4", "sqlite_autocommit_wal_normal", Peer,
           [](bench::Run& run) { bench::settings::runAll<Table<Way::WriteAheadLog>>(run); });
BENCH_PEER("W4", "sqlite_one_transaction", Peer,
           [](bench::Run& run) { bench::settings::runAll<Table<Way::OneTransaction>>(run); });

}  // namespace
