#include <QOR/KeyStoreSqlite.h>

#include "Database.h"
#include "Schema.h"
#include "SqliteStore.h"

#include <utility>

namespace QOR::keystore {

namespace {

// SQLite takes some texts for more than a path; a store always lies in the file of that name.
std::string plainPath(const std::string& path) {
    const bool isSpecial = path.starts_with(':') || path.starts_with("file:");
    return isSpecial ? "./" + path : path;
}

}  // namespace

std::shared_ptr<Store> openSqliteStore(const std::string& path, std::string* error) {
    const auto fail = [&](const std::string& why) -> std::shared_ptr<Store> {
        if (error) *error = path.empty() ? why : path + ": " + why;
        return nullptr;
    };
    if (path.empty()) return fail("the path is empty");
    Database database;
    if (database.open(plainPath(path)) != SQLITE_OK) return fail(database.lastError());
    std::int64_t session = 0;
    if (const auto why = prepareStore(database, session); !why.empty()) return fail(why);
    return std::make_shared<SqliteStore>(std::move(database), session);
}

}  // namespace QOR::keystore
