#include "SqliteStore.h"

#include "NameText.h"

#include <algorithm>
#include <utility>

namespace QOR::keystore {

namespace {

constexpr unsigned sessionShift = 32;

std::int64_t numberOf(KeyTreeStore::Node key) { return static_cast<std::int64_t>(key); }

bool isMissingKey(int result) { return result == SQLITE_CONSTRAINT_FOREIGNKEY; }

}  // namespace

SqliteStore::SqliteStore(Database opened, std::int64_t session)
    : database(std::move(opened)), nextNode(static_cast<Node>(session) << sessionShift) {
    keyOf = database.prepare("SELECT 1 FROM key WHERE id = ?");
    subkeyOf = database.prepare("SELECT id FROM key WHERE parent = ? AND folded = ?");
    insertKey = database.prepare(
        "INSERT INTO key (id, parent, name, folded) VALUES (?, ?, ?, ?)"
        " ON CONFLICT (parent, folded) DO NOTHING");
    deleteKey = database.prepare("DELETE FROM key WHERE id = ?");
    insertValue = database.prepare(
        "INSERT INTO value (key, folded, name, type, data) VALUES (?, ?, ?, ?, ?)"
        " ON CONFLICT (key, folded) DO UPDATE SET type = excluded.type, data = excluded.data");
    valueOf = database.prepare("SELECT type, data FROM value WHERE key = ? AND folded = ?");
    deleteValue = database.prepare("DELETE FROM value WHERE key = ? AND folded = ?");
    dataVersion = database.prepare("PRAGMA data_version");

    const auto prepareList = [this](const char* table, const char* owner, const char* size) {
        const std::string head = std::string("SELECT name, folded") + size + " FROM " + table +
                                 " WHERE " + owner + " = ?";
        const auto with = [&](const char* rest) { return database.prepare((head + rest).c_str()); };
        return ListStatements{with(" ORDER BY folded LIMIT 1 OFFSET ?"), with(" AND folded = ?"),
                              with(" AND folded > ? ORDER BY folded LIMIT 1"),
                              with(" AND folded < ? ORDER BY folded DESC LIMIT 1"), with("")};
    };
    lists[Subkeys] = prepareList("key", "parent", "");
    lists[Values] = prepareList("value", "key", ", length(data)");
}

Status SqliteStore::checkKey(Node key) {
    if (const Status status = ready(); status != Success) return status;
    Run run(keyOf);
    const int result = run.bind(numberOf(key)).step();
    return result == SQLITE_DONE ? KeyDeleted : statusOf(result);
}

Status SqliteStore::findSubkey(Node key, std::string folded, bool isThere, Node& subkey) {
    if (const Node remembered = known.inq(key, folded)) {
        subkey = remembered;
        return Success;
    }
    int result;
    {
        Run run(subkeyOf);
        result = run.bind(numberOf(key)).bind(folded).step();
        if (result == SQLITE_ROW) subkey = static_cast<Node>(run.number(0));
    }
    if (result == SQLITE_ROW) known.add(key, std::move(folded), subkey);
    if (result != SQLITE_DONE) return statusOf(result);
    const Status status = isThere ? Success : checkKey(key);
    return status == Success ? FileNotFound : status;
}

Status SqliteStore::inqSubkey(Node key, std::wstring_view name, Node& subkey) {
    return inqPath(key, std::span(&name, 1), subkey);
}

Status SqliteStore::inqPath(Node key, std::span<const std::wstring_view> names, Node& found) {
    if (const Status status = ready(); status != Success) return status;
    checkKnown();
    Node node = key;
    for (const std::wstring_view name : names) {
        const bool isThere = node != key || node == rootNode;
        const Status status = findSubkey(node, foldedTextOfName(name), isThere, node);
        if (status != Success) return status;
    }
    found = node;
    return Success;
}

Status SqliteStore::makeSubkey(Node key, std::wstring_view name, Node& subkey) {
    if (const Status status = ready(); status != Success) return status;
    const std::string text = textOfName(name);
    std::string folded = foldedTextOfName(name);
    int result;
    {
        Run run(insertKey);
        result = run.bind(numberOf(nextNode)).bind(numberOf(key)).bind(text).bind(folded).step();
    }
    if (isMissingKey(result)) return KeyDeleted;
    if (result != SQLITE_DONE) return statusOf(result);
    if (database.numChanged() == 0) return inqSubkey(key, name, subkey);  // another was faster
    cursors[Subkeys].key = 0;
    passOwnChange();
    subkey = nextNode++;
    known.add(key, std::move(folded), subkey);
    return Success;
}

Status SqliteStore::rmKey(Node key) {
    if (const Status status = ready(); status != Success) return status;
    int result;
    {
        Run run(deleteKey);
        result = run.bind(numberOf(key)).step();
    }
    if (isMissingKey(result)) return AccessDenied;  // for its subkeys it would be missing
    if (result != SQLITE_DONE) return statusOf(result);
    cursors = {};
    known.clear();
    return database.numChanged() == 0 ? KeyDeleted : Success;
}

Status SqliteStore::setValue(Node key, std::wstring_view name, unsigned long type,
                             const unsigned char* data, std::size_t size) {
    if (const Status status = ready(); status != Success) return status;
    const std::string text = textOfName(name);
    const std::string folded = foldedTextOfName(name);
    Run run(insertValue);
    run.bind(numberOf(key)).bind(folded).bind(text).bind(static_cast<std::int64_t>(type));
    const int result = run.bind(data, size).step();
    cursors[Values].key = 0;
    if (result == SQLITE_DONE) passOwnChange();
    return isMissingKey(result) ? KeyDeleted : statusOf(result);
}

Status SqliteStore::inqValue(Node key, std::wstring_view name, StoredValue& value) {
    if (const Status status = ready(); status != Success) return status;
    const std::string folded = foldedTextOfName(name);
    int result;
    {
        Run run(valueOf);
        result = run.bind(numberOf(key)).bind(folded).step();
        if (result == SQLITE_ROW) {
            value.type = static_cast<unsigned long>(run.number(0));
            const unsigned char* const data = run.data(1);
            value.data.assign(data, data + run.size(1));
        }
    }
    if (result != SQLITE_DONE) return statusOf(result);
    const Status status = checkKey(key);
    return status == Success ? FileNotFound : status;
}

Status SqliteStore::rmValue(Node key, std::wstring_view name) {
    if (const Status status = ready(); status != Success) return status;
    const std::string folded = foldedTextOfName(name);
    int result;
    {
        Run run(deleteValue);
        result = run.bind(numberOf(key)).bind(folded).step();
    }
    if (result != SQLITE_DONE) return statusOf(result);
    cursors[Values].key = 0;
    if (database.numChanged() > 0) return Success;
    const Status status = checkKey(key);
    return status == Success ? FileNotFound : status;
}

}  // namespace QOR::keystore
