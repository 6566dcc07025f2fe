#include <QOR/KeyStoreSqlite.h>

#include "Database.h"
#include "Schema.h"
#include "SqliteStore.h"

#include <utility>

namespace QOR::keystore {

std::shared_ptr<Store> openSqliteStore(const std::string& path, std::string* error) {
    const auto fail = [&](const std::string& why) -> std::shared_ptr<Store> {
        if (error) *error = path + ": " + why;
        return nullptr;
    };
    Database database;
    if (database.open(path) != SQLITE_OK) return fail(database.lastError());
    std::int64_t session = 0;
    if (const auto why = prepareStore(database, session); !why.empty()) return fail(why);
    return std::make_shared<SqliteStore>(std::move(database), session);
}

}  // namespace QOR::keystore
